#pragma once

#include <QByteArray>

namespace lumacap::kwin {

/// Tells KWin's windows, the lowest first, as `windowFacts` reads them: at once, and whenever
/// something of them is another.
QByteArray windowScript();

} // namespace lumacap::kwin
