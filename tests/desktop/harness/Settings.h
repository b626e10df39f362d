#pragma once

#include "harness/TestDesktop.h"

#include <map>
#include <optional>

namespace lumacap::harness {

/// The program's settings by key, as text: "true", "jpeg", "/home/me".
using Settings = std::map<QString, QString>;

/// Replaces the program's settings file, as a user with a text editor would.
void writeSettings(const TestDesktop &desktop, const Settings &settings);
/// What the settings file has under `key`, as text; nothing where it has nothing.
std::optional<QString> storedSetting(const TestDesktop &desktop, const QString &key);
/// A stored shortcut: the key's code and the modifier mask, both as the program stores them.
QString storedHotkey(int keyCode, int modifiers);

} // namespace lumacap::harness
