#pragma once

class QKeyEvent;

namespace lumacap {

// A key is told by its place on the keyboard, and by its symbol where somebody has moved that.

/// Return, or Enter of the keypad.
bool isConfirmation(const QKeyEvent &event);

bool isEscape(const QKeyEvent &event);

/// The Z key's place with Command (Super), whatever else is held.
bool isCommandUndo(const QKeyEvent &event);

/// The above, or the letter Z with Control, which is the habit here.
bool isUndo(const QKeyEvent &event);

} // namespace lumacap
