#pragma once

#include "platform/WindowList.h"

#include <QRect>

#include <cstdint>
#include <optional>

namespace lumacap::x11 {

struct RootState;
struct WindowAtoms;
struct WindowFacts;

/// Whether a mapped window can be seen: not minimised, not rolled up into its title, not on a
/// hidden desktop.
bool isShown(const WindowFacts &facts, const WindowAtoms &atoms, const RootState &root);

/// As `WindowRecord::layer` counts.
int layerOf(const WindowFacts &facts, const WindowAtoms &atoms);

/// What a person sees of the window, in root pixels: with its decoration, without its shadow.
QRect visibleFrame(const WindowFacts &facts, const RootState &root);

/// A frame of root pixels in the space of window lists, whose unit is `factor` root pixels (the
/// main monitor's) and whose origin is the upper left corner of `main`.
Rect<TopLeftGlobal> topLeftFrame(const QRect &frame, const QRect &main, double factor);

} // namespace lumacap::x11
