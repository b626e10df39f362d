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

struct PlacedText {
    std::unique_ptr<Text> text;
    Point<Canvas> lowerLeft;
};

std::optional<PlacedText> placed(const OverlayLabel &label)
{
    if (label.text.isEmpty() || !isFinite(label.rect))
        return std::nullopt;
    auto text =
        std::make_unique<Text>(u' ' + label.text + u' ', look::fontSize, FontWeight::Medium);
    const Point<Canvas> lowerLeft{label.rect.midX() - text->size().width * 0.5,
                                  label.rect.minY() - text->size().height - look::distance};
    return PlacedText{std::move(text), lowerLeft};
}

Rect<Canvas> backgroundOf(const PlacedText &label)
{
    const Size size = label.text->size();
    return {{label.lowerLeft.x - look::paddingX, label.lowerLeft.y - look::paddingY},
            {size.width + 2 * look::paddingX, size.height + 2 * look::paddingY}};
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

std::optional<Rect<Canvas>> labelBackground(const OverlayLabel &label)
{
    const auto text = placed(label);
    return text ? std::optional(backgroundOf(*text)) : std::nullopt;
}

void drawDimensionLabel(QPainter &context, const OverlayLabel &label)
{
    const auto text = placed(label);
    if (!text)
        return;
    const PainterState state(context);
    context.setRenderHint(QPainter::Antialiasing);
    context.setPen(Qt::NoPen);
    context.setBrush(QColor::fromRgbF(0, 0, 0, look::backgroundAlpha));
    context.drawRoundedRect(toQRectF(backgroundOf(*text)), look::cornerRadius, look::cornerRadius);
    text->text->draw(context, text->lowerLeft, Qt::white);
}

} // namespace lumacap
