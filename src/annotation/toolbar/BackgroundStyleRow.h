#pragma once

#include "annotation/toolbar/ToolbarButton.h"
#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "graphics/Text.h"

namespace lumacap {

/// A line of the background menu: a mark where it is the current style, its icon, its label. It is
/// filled while it has the focus, which the pointer gives it by moving onto it.
class BackgroundStyleRow final : public ToolbarButton {
    Q_OBJECT

public:
    BackgroundStyleRow(FrameBackgroundStyle style, QWidget *parent);

    FrameBackgroundStyle backgroundStyle() const { return m_style; }

    /// At least as wide as its label needs.
    Size frameSize() const override;
    void setWidth(double points) { m_width = points; }

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;
    QMarginsF reach() const override { return {}; }
    QPainterPath focusRing() const override;
    void enterEvent(QEnterEvent *event) override;

private:
    FrameBackgroundStyle m_style;
    Text m_label;
    double m_width = 0;
};

} // namespace lumacap
