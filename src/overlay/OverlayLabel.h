#pragma once

#include "graphics/Geometry.h"

#include <QString>

#include <memory>
#include <optional>

class QPainter;

namespace lumacap {

class Text;

/// A few words under a rectangle, laid out once.
class OverlayLabel {
public:
    OverlayLabel(const QString &text, const Rect<Canvas> &rect);

    /// The same words under another rectangle.
    OverlayLabel movedTo(const Rect<Canvas> &rect) const;

    const QString &text() const { return m_text; }

    /// The background, in points; nothing where none is drawn, because the text is empty or the
    /// rectangle is nowhere.
    std::optional<Rect<Canvas>> background() const;

    /// Draws into a painter in canvas space.
    void draw(QPainter &context) const;

    friend bool operator==(const OverlayLabel &one, const OverlayLabel &other)
    {
        return one.m_text == other.m_text && one.m_rect == other.m_rect;
    }

private:
    QString m_text;
    Rect<Canvas> m_rect;
    /// Shared by the copies in one scene and the next: to lay it out takes longer than to draw it.
    std::shared_ptr<const Text> m_laidOut;
};

/// "640 × 480": the whole points of a size, the rest cut off. A side that is no number ends the
/// program.
QString dimensionText(Size size);

} // namespace lumacap
