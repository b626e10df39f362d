#include "annotation/toolbar/IconButton.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"
#include "graphics/Text.h"

#include <QPainter>

#include <utility>

namespace lumacap {

IconButton::IconButton(QAccessible::Role role, const QString &name, const SymbolFace &face,
                       QWidget *parent)
    : ToolbarButton(role, name, parent)
    , m_face(face)
{
    setCheckable(true);
}

IconButton::IconButton(QAccessible::Role role, const QString &name, std::unique_ptr<Text> face,
                       QWidget *parent)
    : ToolbarButton(role, name, parent)
    , m_face(std::move(face))
{
    setCheckable(true);
}

IconButton::~IconButton() = default;

Size IconButton::frameSize() const
{
    return {toolbarlook::iconButtonSide, toolbarlook::iconButtonSide};
}

void IconButton::paintFace(QPainter &painter, const ToolbarTheme &theme) const
{
    const QRectF square(0, 0, toolbarlook::iconButtonSide, toolbarlook::iconButtonSide);
    const QPainterPath ground = continuousRoundedRect(square, toolbarlook::controlRadius);
    if (isChecked())
        painter.fillPath(ground, translucent(theme.accent, toolbarlook::currentOpacity));
    painter.fillPath(ground, feedback(theme.text));
    if (const auto *const face = std::get_if<SymbolFace>(&m_face))
        drawSymbol(painter, face->symbol, square, face->font * toolbarlook::symbolSideAFont,
                   theme.text);
    else
        drawTextInMiddle(painter, *std::get<std::unique_ptr<Text>>(m_face), square, theme.text);
}

} // namespace lumacap
