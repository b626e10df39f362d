#pragma once

#include "platform/HotkeyService.h"

#include <QString>

#include <optional>

namespace lumacap::portal {

/// The keys of `hotKey` in the form that portals read: "CTRL+SHIFT+1". A portal names keys by what
/// they type, and is told what the physical key types in the layout it has its place by; the
/// desktop or the person puts that right. Nothing for a key that has no such name.
std::optional<QString> triggerOf(const HotKey &hotKey);

} // namespace lumacap::portal
