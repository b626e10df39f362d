#pragma once

#include "annotation/toolbar/ToolbarButton.h"
#include "annotation/vocabulary/FrameBackgroundStyle.h"

namespace lumacap {

enum class MenuOpenness { Closed, Open };

/// Shows the background behind the frame, and that there are others to choose from.
class BackgroundMenuButton final : public ToolbarButton {
    Q_OBJECT

public:
    explicit BackgroundMenuButton(QWidget *parent);

    /// Which background that is.
    void showStyle(FrameBackgroundStyle style);

    MenuOpenness openness() const { return m_openness; }
    void setOpenness(MenuOpenness openness);

    Size frameSize() const override;
    void describe(QAccessible::State &state) const override;

protected:
    void paintFace(QPainter &painter, const ToolbarTheme &theme) const override;

private:
    FrameBackgroundStyle m_style = FrameBackgroundStyle::DominantColor;
    MenuOpenness m_openness = MenuOpenness::Closed;
};

} // namespace lumacap
