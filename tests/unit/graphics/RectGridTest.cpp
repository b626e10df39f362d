#include "graphics/RectGrid.h"

#include "graphics/CanvasPainting.h"

#include <QPainter>
#include <QPainterPath>

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <span>
#include <vector>

namespace lumacap::tests {
namespace {

constexpr int side = 40;

/// Grids of intervals one after the other, sometimes touching, sometimes beyond the picture.
class RandomGrids {
public:
    explicit RandomGrids(unsigned seed)
        : m_random{seed}
    {
    }

    RectGrid next() { return {intervals(), intervals()}; }

    QColor color() { return {pick(256), pick(256), pick(256), pick(3) == 0 ? 255 : pick(256)}; }

    QRegion clip()
    {
        QRegion clip;
        for (int left = pick(4); left >= 0; --left)
            clip += QRect(pick(side), pick(side), pick(side), pick(side));
        return clip & QRect(0, 0, side, side);
    }

private:
    std::vector<Interval> intervals()
    {
        std::vector<Interval> intervals;
        double at = length(20) - 10;
        for (int left = pick(4); left >= 0; --left) {
            const double from = at + (pick(4) == 0 ? 0 : length(8));
            at = from + length(12);
            intervals.push_back({from, at});
        }
        return intervals;
    }

    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    double length(int most) { return pick(2) == 0 ? pick(most) : pick(most * 1000) / 1000.0; }

    std::mt19937 m_random;
};

QPainterPath pathOf(std::span<const RectGrid> grids)
{
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (const RectGrid &grid : grids)
        for (const Interval &column : grid.columns)
            for (const Interval &row : grid.rows)
                path.addRect(column.from, row.from, column.to - column.from, row.to - row.from);
    return path;
}

QImage somePicture()
{
    QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            picture.setPixel(x, y, qRgb(x * 6, y * 6, (x * y) % 256));
    return picture;
}

TEST(RectGrid, isFilledAsAPainterFillsTheRectangles)
{
    for (unsigned seed = 0; seed < 3000; ++seed) {
        RandomGrids random(seed);
        const double scale = 1 + seed % 3;
        const std::array grids{random.next(), random.next(), random.next()};
        const QColor color = random.color();
        const QRegion clip = random.clip();

        QImage expected = somePicture();
        QPainter painter(&expected);
        painter.setClipRegion(clip);
        painter.setTransform(canvasToPixels({0, 0}, scale, side));
        painter.setRenderHint(QPainter::Antialiasing);
        painter.fillPath(pathOf(grids), color);
        painter.end();
        QImage filled = somePicture();
        fillGrids(filled, scale, grids, color, clip);

        ASSERT_EQ(filled, expected) << "seed " << seed;
    }
}

TEST(RectGrid, withoutIntervalsInOneDirectionFillsNothing)
{
    const RectGrid grid{{{0, side}}, {}};
    QImage picture = somePicture();
    fillGrids(picture, 1, std::span(&grid, 1), Qt::red, picture.rect());

    EXPECT_EQ(picture, somePicture());
}

} // namespace
} // namespace lumacap::tests
