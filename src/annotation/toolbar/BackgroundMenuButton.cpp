#include "annotation/toolbar/BackgroundMenuButton.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr double iconSide = toolbarlook::menuIconFont * toolbarlook::symbolSideAFont;
constexpr double chevronSide = toolbarlook::menuChevronFont * toolbarlook::symbolSideAFont;
constexpr double chevronLeft =
    toolbarlook::menuButtonPadding + iconSide + toolbarlook::menuButtonSpacing;

} // namespace

BackgroundMenuButton::BackgroundMenuButton(QWidget *parent)
    : ToolbarButton(QAccessible::ButtonMenu, u"frameBackground"_s, parent)
{
}

void BackgroundMenuButton::showStyle(FrameBackgroundStyle style)
{
    m_style = style;
    setAccessibleDescription(label(style));
    update();
}

void BackgroundMenuButton::setOpenness(MenuOpenness openness)
{
    if (openness == m_openness)
        return;
    m_openness = openness;
    QAccessible::State changed;
    changed.expanded = true;
    QAccessibleStateChangeEvent event(this, changed);
    QAccessible::updateAccessibility(&event);
    update();
}

void BackgroundMenuButton::describe(QAccessible::State &state) const
{
    state.hasPopup = true;
    state.expandable = true;
    state.expanded = m_openness == MenuOpenness::Open;
    state.collapsed = !state.expanded;
}

Size BackgroundMenuButton::frameSize() const
{
    return {chevronLeft + chevronSide + toolbarlook::menuButtonPadding,
            toolbarlook::menuButtonHeight};
}

void BackgroundMenuButton::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    const Size size = frameSize();
    const QPainterPath ground =
        continuousRoundedRect({0, 0, size.width, size.height}, toolbarlook::controlRadius);
    painter.fillPath(ground, translucent(theme.accent, toolbarlook::menuButtonOpacity));
    painter.fillPath(ground,
                     m_openness == MenuOpenness::Open
                         ? translucent(theme.text, feedbacklook::pressedOpacity)
                         : feedback(theme.text));
    drawSymbol(painter, rowOf(frameBackgroundStyles, m_style).icon,
               {toolbarlook::menuButtonPadding, 0, iconSide, size.height}, iconSide, theme.text);
    drawSymbol(painter, u"chevron.down"_s, {chevronLeft, 0, chevronSide, size.height}, chevronSide,
               theme.text);
}

} // namespace lumacap
