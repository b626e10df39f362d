#include "annotation/toolbar/Backdrop.h"

#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/ToolbarTheme.h"
#include "graphics/ColorMixing.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace lumacap {
namespace {

constexpr int passes = 3; // of a box, which together are nearly a Gaussian bell
constexpr int boxReach = 3; // cells on either side

/// Red, green and blue.
using Color = std::array<float, 3>;

struct Cells {
    int width;
    int height;
    std::vector<Color> colors;

    Color &at(int x, int y)
    {
        return colors[static_cast<std::size_t>(y) * static_cast<std::size_t>(width)
                      + static_cast<std::size_t>(x)];
    }
};

/// The mean of each square of `side` pixels; squares at the right and lower edge may be cut off.
Cells averaged(const QImage &picture, int side)
{
    Cells cells{(picture.width() + side - 1) / side, (picture.height() + side - 1) / side, {}};
    cells.colors.resize(static_cast<std::size_t>(cells.width)
                        * static_cast<std::size_t>(cells.height));
    std::vector<std::array<std::uint32_t, 3>> sums(static_cast<std::size_t>(cells.width));
    for (int row = 0; row < cells.height; ++row) {
        std::ranges::fill(sums, std::array<std::uint32_t, 3>{});
        const int bottom = std::min((row + 1) * side, picture.height());
        for (int y = row * side; y < bottom; ++y) {
            const auto *pixel = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
            for (int column = 0; column < cells.width; ++column) {
                auto &sum = sums[static_cast<std::size_t>(column)];
                const int count = std::min(side, picture.width() - column * side);
                for (const QRgb *const end = pixel + count; pixel != end; ++pixel) {
                    sum[0] += *pixel >> 16 & 0xff;
                    sum[1] += *pixel >> 8 & 0xff;
                    sum[2] += *pixel & 0xff;
                }
            }
        }
        for (int column = 0; column < cells.width; ++column) {
            const int count = std::min(side, picture.width() - column * side);
            const auto pixels = static_cast<float>(count * (bottom - row * side));
            const auto &sum = sums[static_cast<std::size_t>(column)];
            for (std::size_t channel = 0; channel < 3; ++channel)
                cells.at(column, row)[channel] = static_cast<float>(sum[channel]) / pixels;
        }
    }
    return cells;
}

/// One pass of a box along the rows of `from`, whose outermost cells go on beyond its edges. Rows
/// come out as columns, so that two passes blur both ways.
Cells blurredAndTurned(Cells &from)
{
    Cells to{from.height, from.width, std::vector<Color>(from.colors.size())};
    for (int y = 0; y < from.height; ++y) {
        for (int x = 0; x < from.width; ++x) {
            Color &mean = to.at(y, x);
            for (int step = -boxReach; step <= boxReach; ++step) {
                const Color &cell = from.at(std::clamp(x + step, 0, from.width - 1), y);
                for (std::size_t channel = 0; channel < 3; ++channel)
                    mean[channel] += cell[channel] / (2 * boxReach + 1);
            }
        }
    }
    return to;
}

/// The colour with its distance to its grey multiplied.
QRgb saturated(const Color &color)
{
    const float grey = 0.299F * color[0] + 0.587F * color[1] + 0.114F * color[2];
    const auto channel = [&](std::size_t index) {
        const double value = grey + (color[index] - grey) * toolbarlook::backdropSaturation;
        return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
    };
    return qRgb(channel(0), channel(1), channel(2));
}

QImage imageOf(Cells &cells)
{
    QImage image(cells.width, cells.height, QImage::Format_RGB32);
    for (int y = 0; y < cells.height; ++y) {
        auto *const line = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < cells.width; ++x)
            line[x] = saturated(cells.at(x, y));
    }
    return image;
}

} // namespace

void Backdrop::setPicture(const QImage &picture, double pixelsAPoint)
{
    m_material = {};
    m_blurred = {};
    if (picture.isNull())
        return;
    const int side =
        std::max(1, static_cast<int>(std::lround(toolbarlook::blurCell * pixelsAPoint)));
    Cells cells = averaged(picture.convertToFormat(QImage::Format_RGB32), side);
    for (int pass = 0; pass < 2 * passes; ++pass)
        cells = blurredAndTurned(cells);
    m_blurred = imageOf(cells);
    m_cells = QSizeF(picture.width(), picture.height()) / side;
}

const QImage &Backdrop::material(QSize pixels, const QColor &tint)
{
    if (m_material.size() == pixels && m_tint == tint)
        return m_material;
    m_tint = tint;
    m_material = QImage(pixels, QImage::Format_RGB32);
    m_material.fill(tint);
    if (m_blurred.isNull())
        return m_material;
    QPainter painter(&m_material);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(0, 0, pixels.width() * m_blurred.width() / m_cells.width(),
                             pixels.height() * m_blurred.height() / m_cells.height()),
                      m_blurred);
    painter.fillRect(m_material.rect(), translucent(tint, toolbarlook::tintOpacity));
    return m_material;
}

} // namespace lumacap
