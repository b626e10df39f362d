#include "graphics/RectGrid.h"

#include <QColor>
#include <QImage>
#include <QRegion>

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace lumacap {
namespace {

constexpr int parts = 64; // of a pixel, to which a painter rounds every place

/// How much of each pixel of a row or a column is covered, in parts, between the outermost edges.
class PixelShares {
public:
    int begin() const { return m_begin; }
    int end() const { return m_begin + static_cast<int>(m_shares.size()); }

    /// Of a pixel from `begin` up to, but without, `end`.
    int at(int pixel) const { return m_shares[static_cast<std::size_t>(pixel - m_begin)]; }

    /// `toPixel` takes a place in points to one in pixels, of which there are `count`.
    template <typename ToPixel>
    PixelShares(std::span<const Interval> intervals, int count, ToPixel toPixel)
    {
        const auto toParts = [&](double place) { // the nearest, without a call of the library
            const double halves = std::clamp<double>(toPixel(place), 0, count) * parts * 2;
            return (static_cast<int>(halves) + 1) / 2;
        };
        int first = count * parts;
        int last = 0;
        for (const auto &[from, to] : intervals) {
            const auto [low, high] = std::minmax({toParts(from), toParts(to)});
            first = std::min(first, low);
            last = std::max(last, high);
        }
        m_begin = first / parts;
        m_shares.resize(
            static_cast<std::size_t>(std::max(0, (last + parts - 1) / parts - m_begin)));
        for (const auto &[from, to] : intervals) {
            const auto [low, high] = std::minmax({toParts(from), toParts(to)});
            add(low, high);
        }
    }

private:
    void add(int from, int to)
    {
        while (from < to) {
            const int pixel = from / parts;
            const int edge = std::min(to, (pixel + 1) * parts);
            auto &share = m_shares[static_cast<std::size_t>(pixel - m_begin)];
            share = static_cast<std::uint8_t>(share + edge - from);
            from = edge;
        }
    }

    int m_begin = 0;
    std::vector<std::uint8_t> m_shares;
};

/// A grid in a picture.
struct PixelGrid {
    PixelShares columns;
    PixelShares rows;

    QRect bounds() const
    {
        return {QPoint(columns.begin(), rows.begin()), QPoint(columns.end() - 1, rows.end() - 1)};
    }

    /// Of row `y`.
    int height(int y) const { return y < rows.begin() || y >= rows.end() ? 0 : rows.at(y); }

    /// Adds what is covered of the pixels of row `y` from column `left` on.
    void addRow(std::span<int> areas, int y, int left) const
    {
        const int covered = height(y);
        const int begin = std::max(left, columns.begin());
        const int end = std::min(left + static_cast<int>(areas.size()), columns.end());
        for (int x = begin; x < end; ++x)
            areas[static_cast<std::size_t>(x - left)] += covered * columns.at(x);
    }
};

/// A painter's opacity, up to 255, for a pixel of which that many parts of parts are covered, those
/// of several rectangles added.
std::uint32_t opacityOf(int area)
{
    constexpr int whole = 256;
    return static_cast<std::uint32_t>(std::min(area * whole / (parts * parts), whole - 1));
}

/// Each channel times `share` / 255, rounded, two channels at a time.
QRgb multiplied(QRgb pixel, std::uint32_t share)
{
    constexpr std::uint32_t evenBytes = 0x00ff00ff;
    constexpr std::uint32_t half = 0x00800080;
    std::uint32_t even = (pixel & evenBytes) * share;
    even = (even + (even >> 8 & evenBytes) + half) >> 8 & evenBytes;
    std::uint32_t odd = (pixel >> 8 & evenBytes) * share;
    odd = (odd + (odd >> 8 & evenBytes) + half) & ~evenBytes;
    return even | odd;
}

/// `color`, premultiplied, over the pixels.
void blend(QRgb *pixel, std::span<const int> areas, QRgb color)
{
    int last = 0; // most pixels are covered as much as the one before
    QRgb part = 0;
    for (const int area : areas) {
        if (area != last) {
            last = area;
            part = multiplied(color, opacityOf(area));
        }
        if (area != 0)
            *pixel = part + multiplied(*pixel, 255 - static_cast<std::uint32_t>(qAlpha(part)));
        ++pixel;
    }
}

/// Fills what lies in `rect`.
void fill(QImage &target, std::span<const PixelGrid> grids, QRgb color, const QRect &rect)
{
    QRect all;
    std::vector<const PixelGrid *> reached;
    for (const PixelGrid &grid : grids) {
        const QRect part = grid.bounds() & rect;
        all |= part;
        if (!part.isEmpty())
            reached.push_back(&grid);
    }
    std::vector<int> areas(static_cast<std::size_t>(all.width()));
    for (int y = all.top(); y <= all.bottom(); ++y) {
        if (std::ranges::all_of(reached, [y](const auto *grid) { return grid->height(y) == 0; }))
            continue;
        std::ranges::fill(areas, 0);
        for (const PixelGrid *const grid : reached)
            grid->addRow(areas, y, all.left());
        blend(reinterpret_cast<QRgb *>(target.scanLine(y)) + all.left(), areas, color);
    }
}

} // namespace

void fillGrids(QImage &target, double scale, std::span<const RectGrid> grids, const QColor &color,
               const QRegion &clip)
{
    const int height = target.height();
    std::vector<PixelGrid> pixelGrids;
    for (const RectGrid &grid : grids)
        pixelGrids.push_back({{grid.columns, target.width(), [&](double x) { return x * scale; }},
                              {grid.rows, height, [&](double y) { return height - y * scale; }}});
    const QRgb premultiplied = color.rgba64().premultiplied().toArgb32();
    for (const QRect &rect : clip &target.rect())
        fill(target, pixelGrids, premultiplied, rect);
}

} // namespace lumacap
