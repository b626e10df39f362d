#pragma once

#include <QColor>

namespace lumacap {

/// The same colour at `opacity`, 0 to 1.
QColor translucent(QColor color, double opacity);

/// `share`, 0 to 1, of `second` and the rest of `first`.
QColor mixed(const QColor &first, const QColor &second, double share);

} // namespace lumacap
