#pragma once

#include <Qt>

#include <cstdint>

namespace lumacap::kwin {

/// The toolkit's key for a symbol of the keyboard; `Qt::Key_unknown` for one that it has none for.
Qt::Key toolkitKey(std::uint32_t symbol);

/// Whether the toolkit tells the key that made the symbol from others of the same name as one of
/// the numeric pad's.
bool isOfKeypad(std::uint32_t symbol);

} // namespace lumacap::kwin
