#pragma once

#include "annotation/toolbar/ToolbarButton.h"
#include "annotation/vocabulary/AnnotationColor.h"

namespace lumacap {

/// A disc of one colour, with two rings around it while it is current.
class ColorSwatch final : public ToolbarButton {
    Q_OBJECT

public:
    ColorSwatch(AnnotationColor color, QWidget *parent);

    Size frameSize() const override;

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;
    QMarginsF reach() const override;
    QPainterPath focusRing() const override;
    double focusRingWidth() const override;

private:
    AnnotationColor m_color;
};

} // namespace lumacap
