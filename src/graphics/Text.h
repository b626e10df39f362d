#pragma once

#include "graphics/Geometry.h"

#include <QString>

#include <memory>

class QColor;
class QPainter;
class QTextLayout;

namespace lumacap {

enum class FontWeight { Regular = 400, Medium = 500, SemiBold = 600, Bold = 700 };

/// A text in the desktop's general font, laid out once, so that it is drawn with the very metrics
/// it was measured with. Line feeds begin a new line; what the font lacks comes from others.
class Text {
public:
    /// `points` is the font's size in canvas points, greater than 0.
    Text(const QString &text, double points, FontWeight weight);
    Q_DISABLE_COPY_MOVE(Text)
    ~Text();

    /// The bounding box in canvas points: the widest line's advance by the heights of all lines.
    Size size() const { return m_size; }

    /// Draws into a painter in canvas space, with the bounding box's lower left corner at
    /// `lowerLeft`.
    void draw(QPainter &painter, Point<Canvas> lowerLeft, const QColor &color) const;

    /// What `draw` there may change: the bounding box and whatever letters reach out of it.
    Rect<Canvas> drawnArea(Point<Canvas> lowerLeft) const;

private:
    std::unique_ptr<QTextLayout> m_layout;
    double m_pointsAUnit; ///< canvas points for one unit of the layout
    Size m_size;
};

/// The text as a `Text` of that font shows it in lines of `width` canvas points at most: with line
/// feeds between its words, and within words that are wider.
QString brokenIntoLines(const QString &text, double points, FontWeight weight, double width);

/// The text, or as much of its beginning and end as `width` canvas points hold, with a sign for
/// what is left out between them.
QString elidedInMiddle(const QString &text, double points, FontWeight weight, double width);

} // namespace lumacap
