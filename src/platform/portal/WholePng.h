#pragma once

#include <QByteArrayView>

namespace lumacap::portal {

/// Whether `bytes` are a PNG file from its signature to its last chunk, each chunk as it was
/// written. The decoder prints lines of its own about one that is not.
bool isWholePng(QByteArrayView bytes);

} // namespace lumacap::portal
