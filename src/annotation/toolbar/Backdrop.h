#pragma once

#include <QColor>
#include <QImage>

namespace lumacap {

/// What the strip is made of: a translucent tint over what lies behind it, blurred and a little
/// more colourful; the tint alone where nothing is known to lie there.
class Backdrop {
public:
    /// `picture` is what lies behind the whole strip, at `pixelsAPoint` pixels a point; a null
    /// image for nothing.
    void setPicture(const QImage &picture, double pixelsAPoint);

    /// The material over an area of `pixels`, opaque. Kept until one of these changes.
    const QImage &material(QSize pixels, const QColor &tint);

private:
    QImage m_blurred; ///< one pixel for each cell
    QSizeF m_cells; ///< how many of them lie behind the strip; the last ones may do so in part
    QImage m_material;
    QColor m_tint;
};

} // namespace lumacap
