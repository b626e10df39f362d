#pragma once

#include <QLatin1StringView>

namespace lumacap::freedesktop {

/// The name by which desktops know the program: its desktop entry, its icon, its component in a
/// software centre.
inline constexpr QLatin1StringView applicationId{"app.lumacap.Lumacap"};

} // namespace lumacap::freedesktop
