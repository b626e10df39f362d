#include "annotation/frame/FramedImage.h"

#include "annotation/frame/AlignedFill.h"
#include "annotation/frame/BackgroundGradient.h"
#include "annotation/frame/CardShadow.h"
#include "annotation/frame/NewspaperBackground.h"
#include "annotation/frame/RoundedCorners.h"
#include "graphics/CanvasPainting.h"
#include "graphics/Fatal.h"
#include "graphics/Text.h"

#include <QLinearGradient>
#include <QPainter>
#include <QRegion>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace lumacap {
namespace {

// Lengths in points, colours from 0 to 1.
namespace look {
constexpr int margin = 60; // between the card and the edges of the picture
constexpr int titleBarHeight = 36;
constexpr double cornerRadius = 10;
constexpr Rgb titleBar{0.96, 0.96, 0.96};
constexpr Rgb separator{0.82, 0.82, 0.82}; // between the title bar and the content
constexpr double separatorWidth = 0.5;

struct WindowButton {
    double x; // of its left edge, from the picture's
    Rgb color;
};
constexpr std::array windowButtons{WindowButton{72, {1.0, 0.38, 0.35}},
                                   WindowButton{92, {1.0, 0.74, 0.22}},
                                   WindowButton{112, {0.15, 0.8, 0.26}}};
constexpr double buttonDiameter = 12;

constexpr Rgb title{0.4, 0.4, 0.4};
constexpr double titleSize = 13;
} // namespace look

/// Where everything lies. The edges of the card and of what is in it are whole pixels, because the
/// margins are whole points and the base is whole pixels.
struct FrameLayout {
    int scale; ///< pixels a point
    Size canvas;
    QSize picture; ///< pixels
    Rect<Canvas> titleBar;
    QRect card; ///< pixels
    QRect content; ///< pixels
    double cornerRadius; ///< pixels

    /// The part of the card that nothing beneath it shines through, in pixels.
    QRect hidden() const
    {
        const int corner = static_cast<int>(std::ceil(cornerRadius));
        return card.adjusted(0, corner, 0, -corner);
    }
};

Size sizeOfCanvas(QSize base, int scale)
{
    const Size size{base.width() / static_cast<double>(scale) + 2 * look::margin,
                    base.height() / static_cast<double>(scale) + look::titleBarHeight
                        + 2 * look::margin};
    if (!std::isfinite(size.width) || !std::isfinite(size.height))
        fatal("a framed picture has a finite size");
    return size;
}

/// Nothing when there is nothing to frame, or when the picture has no size that a bitmap can have.
std::optional<FrameLayout> layoutAround(QSize base, int scale)
{
    const Size canvas = sizeOfCanvas(base, scale);
    // In whole numbers: a third of a pixel and its like would round to one pixel less.
    const std::int64_t width = base.width() + 2 * std::int64_t{look::margin} * scale;
    const std::int64_t height =
        base.height() + (2 * std::int64_t{look::margin} + look::titleBarHeight) * scale;
    if (scale < 0 || base.isEmpty() || std::max(width, height) > std::numeric_limits<int>::max())
        return std::nullopt;
    const int margin = look::margin * scale;
    const int titleBar = look::titleBarHeight * scale;
    return FrameLayout{
        .scale = scale,
        .canvas = canvas,
        .picture = {static_cast<int>(width), static_cast<int>(height)},
        .titleBar = {{look::margin, canvas.height - look::margin - look::titleBarHeight},
                     {canvas.width - 2 * look::margin, look::titleBarHeight}},
        .card = {margin, margin, base.width(), base.height() + titleBar},
        .content = {{margin, margin + titleBar}, base},
        .cornerRadius = std::min(look::cornerRadius * scale, base.width() / 2.0)};
}

void paintGradient(QImage &picture, const FrameLayout &layout, const GradientColors &colors)
{
    QLinearGradient gradient(QPointF(0, 0), QPointF(picture.width(), picture.height()));
    gradient.setColorAt(0, toQColor(colors.first));
    gradient.setColorAt(1, toQColor(colors.second));
    QPainter painter(&picture);
    for (const QRect &part : QRegion(picture.rect()).subtracted(layout.hidden()))
        painter.fillRect(part, gradient);
}

void paintBackground(QImage &picture, const FrameLayout &layout, FrameBackgroundStyle style,
                     const QImage &base, RandomSource &random)
{
    if (const std::optional<GradientColors> colors = gradientColors(style, base))
        paintGradient(picture, layout, *colors);
    else
        drawNewspaperBackground(picture, layout.canvas, layout.scale, random, layout.hidden());
}

/// Puts the base on the card's white, pixel by pixel. The loop is written for the compiler to turn
/// into vector instructions: no channel of a premultiplied pixel exceeds its alpha, so that no sum
/// carries into the next.
void paintContent(QImage &picture, const FrameLayout &layout, const QImage &base)
{
    const int width = base.width();
    for (int y = 0; y < base.height(); ++y) {
        const auto *from = reinterpret_cast<const QRgb *>(base.constScanLine(y));
        auto *to =
            reinterpret_cast<QRgb *>(picture.scanLine(layout.content.y() + y)) + layout.content.x();
        for (int x = 0; x < width; ++x)
            to[x] = from[x] + (255 - (from[x] >> 24)) * 0x01010101U;
    }
}

void paintTitleBar(QImage &picture, const FrameLayout &layout)
{
    const Rect<Canvas> &bar = layout.titleBar;
    AlignedFill fill(picture, layout.scale, QRect());
    fill.fill(bar, look::titleBar, 1);
    fill.fill(
        {{bar.minX(), bar.minY() - look::separatorWidth / 2}, {bar.width(), look::separatorWidth}},
        look::separator, 1);
}

void paintWindowButtons(QPainter &painter, const FrameLayout &layout)
{
    painter.setPen(Qt::NoPen);
    for (const look::WindowButton &button : look::windowButtons) {
        painter.setBrush(toQColor(button.color));
        painter.drawEllipse(QRectF(button.x, layout.titleBar.midY() - look::buttonDiameter / 2,
                                   look::buttonDiameter, look::buttonDiameter));
    }
}

/// A title wider than its bar ends with it instead of running over the background.
void paintTitle(QPainter &painter, const FrameLayout &layout, const QString &title)
{
    const Rect<Canvas> &bar = layout.titleBar;
    const Text text(title, look::titleSize, FontWeight::Medium);
    painter.setClipRect(toQRectF(bar));
    text.draw(painter, {bar.midX() - text.size().width / 2, bar.midY() - text.size().height / 2},
              toQColor(look::title));
}

/// Everything of the card, back to front, with square corners.
void paintCard(QImage &picture, const FrameLayout &layout, const QImage &base,
               const std::optional<QString> &title)
{
    paintContent(picture, layout, base);
    paintTitleBar(picture, layout);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform(canvasToPixels({0, 0}, layout.scale, picture.height()));
    paintWindowButtons(painter, layout);
    if (title)
        paintTitle(painter, layout, *title);
}

} // namespace

std::optional<QImage> renderFramedImage(const QImage &base,
                                        const std::optional<QString> &sourceAppName,
                                        FrameBackgroundStyle backgroundStyle, int scaleFactor,
                                        RandomSource &random)
{
    const std::optional<FrameLayout> layout = layoutAround(base.size(), scaleFactor);
    if (!layout)
        return std::nullopt;
    const QImage content = base.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QImage picture(layout->picture, QImage::Format_ARGB32_Premultiplied);
    if (picture.isNull() || content.isNull())
        return std::nullopt;
    paintBackground(picture, *layout, backgroundStyle, content, random);
    const CardShadow shadow(layout->card, layout->cornerRadius, layout->scale, picture.size());
    shadow.cast(picture, QRegion(picture.rect()).subtracted(layout->hidden()));
    const RoundedCorners corners(picture, layout->card, layout->cornerRadius);
    paintCard(picture, *layout, content, sourceAppName);
    corners.round(picture);
    return picture;
}

} // namespace lumacap
