#include "annotation/toolbar/UndoButton.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"

#include <QPainter>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr double side = toolbarlook::toolFont * toolbarlook::symbolSideAFont;

} // namespace

UndoButton::UndoButton(QWidget *parent)
    : ToolbarButton(QAccessible::Button, u"undo"_s, parent)
{
}

Size UndoButton::frameSize() const
{
    return {side, side};
}

QPainterPath UndoButton::ground() const
{
    constexpr double outset = 3;
    return continuousRoundedRect({-outset, -outset, side + 2 * outset, side + 2 * outset},
                                 toolbarlook::controlRadius);
}

QPainterPath UndoButton::focusRing() const
{
    return ground();
}

void UndoButton::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    painter.fillPath(ground(), feedback(theme.text));
    const double opacity = isEnabled() ? 1 : toolbarlook::disabledOpacity;
    drawSymbol(painter, u"arrow.uturn.backward"_s, {0, 0, side, side}, side,
               translucent(theme.text, opacity));
}

} // namespace lumacap
