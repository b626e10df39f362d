#pragma once

#include "annotation/toolbar/ToolbarButton.h"
#include "annotation/vocabulary/LineThickness.h"

namespace lumacap {

/// A bar as high as the strokes it stands for.
class ThicknessButton final : public ToolbarButton {
    Q_OBJECT

public:
    ThicknessButton(LineThickness thickness, const QString &name, QWidget *parent);

    Size frameSize() const override;

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;
    QPainterPath focusRing() const override;

private:
    QPainterPath ground() const;

    LineThickness m_thickness;
};

} // namespace lumacap
