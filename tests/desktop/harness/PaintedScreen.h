#pragma once

#include "harness/Pictures.h"
#include "harness/XConnection.h"

#include <QImage>
#include <QPoint>

namespace lumacap::harness {

/// A window over the whole X screen and above all others, showing a known picture under a known
/// pointer: what a capture has to hold is then known by construction.
class PaintedScreen {
public:
    /// Covers the screen of `display` with `picture`, which has the root's size, and gives the
    /// pointer the shape of `cursor`. Throws when the screen's depth is none of 24 and 30.
    PaintedScreen(const QByteArray &display, const QImage &picture, Cursor cursor = opaqueCursor());

    /// Changes the picture, at once for every observer.
    void paint(const QImage &picture);
    /// Puts the window beneath all others, so that panels show.
    void lower();
    /// Moves the pointer to `position` in root pixels.
    void placePointer(const QPoint &position);
    /// The still that a capture of `area` (root pixels) has to give now.
    QImage expected(const QRect &area) const;
    /// The still that a capture of the whole screen has to give now.
    QImage expected() const;

private:
    std::uint32_t pixmapOf(const QImage &picture) const;
    void shapePointer() const;

    XConnection m_connection;
    Cursor m_cursor;
    QImage m_picture;
    QPoint m_pointer;
    std::uint32_t m_window = 0;
};

} // namespace lumacap::harness
