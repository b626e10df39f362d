#include "overlay/OverlayLabel.h"

#include "graphics/CanvasPainting.h"
#include "graphics/Fatal.h"
#include "graphics/PainterState.h"
#include "graphics/Text.h"

#include <QPainter>

#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>

namespace lumacap {
namespace {

namespace look { // canvas points
constexpr double fontSize = 12;
constexpr double distance = 8; // from the rectangle down to the text
constexpr double paddingX = 6;
constexpr double paddingY = 3;
constexpr double cornerRadius = 5;
constexpr float backgroundAlpha = 0.75F;
} // namespace look

Point<Canvas> textPlace(Size text, const Rect<Canvas> &rect)
{
    return {rect.midX() - text.width * 0.5, rect.minY() - text.height - look::distance};
}

std::int64_t wholePoints(double length)
{
    constexpr auto limit = static_cast<double>(std::numeric_limits<std::int64_t>::max());
    if (!(std::abs(length) < limit))
        fatal("a dragged length is no number of points");
    constexpr double rounding = 1e-6; // what a length is off by after its way through global space
    return static_cast<std::int64_t>(length + rounding);
}

} // namespace

QString dimensionText(Size size)
{
    return QStringLiteral("%1 \u00d7 %2")
        .arg(wholePoints(size.width))
        .arg(wholePoints(size.height));
}

OverlayLabel::OverlayLabel(const QString &text, const Rect<Canvas> &rect)
    : m_text(text)
    , m_rect(rect)
{
    if (!text.isEmpty())
        m_laidOut = std::make_shared<Text>(u' ' + text + u' ', look::fontSize, FontWeight::Medium);
}

OverlayLabel OverlayLabel::movedTo(const Rect<Canvas> &rect) const
{
    OverlayLabel moved = *this;
    moved.m_rect = rect;
    return moved;
}

std::optional<Rect<Canvas>> OverlayLabel::background() const
{
    if (!m_laidOut || !isFinite(m_rect))
        return std::nullopt;
    const Size size = m_laidOut->size();
    const Point<Canvas> place = textPlace(size, m_rect);
    return Rect<Canvas>{{place.x - look::paddingX, place.y - look::paddingY},
                        {size.width + 2 * look::paddingX, size.height + 2 * look::paddingY}};
}

void OverlayLabel::draw(QPainter &context) const
{
    const auto area = background();
    if (!area)
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    context.setPen(Qt::NoPen);
    context.setBrush(QColor::fromRgbF(0, 0, 0, look::backgroundAlpha));
    context.drawRoundedRect(toQRectF(*area), look::cornerRadius, look::cornerRadius);
    m_laidOut->draw(context, textPlace(m_laidOut->size(), m_rect), Qt::white);
}

} // namespace lumacap
