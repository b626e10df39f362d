#pragma once

#include <QByteArray>

#include <cstdint>

namespace lumacap::harness {

/// Sets the locks of the keyboard, as a mask of the core protocol's modifiers, and releases all
/// others.
void setLocks(const QByteArray &display, std::uint8_t modifiers);
/// Switches to one of the keyboard's layouts, counted from 0.
void setLayout(const QByteArray &display, int index);

} // namespace lumacap::harness
