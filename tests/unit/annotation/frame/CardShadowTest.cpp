#include "annotation/frame/CardShadow.h"

#include "Pixels.h"

#include <QList>

#include <gtest/gtest.h>

namespace lumacap {
namespace {

/// One number for each pixel, row by row.
struct Plane {
    int width;
    int height;
    QList<double> values;

    double at(int x, int y) const
    {
        const bool isInside = x >= 0 && x < width && y >= 0 && y < height;
        return isInside ? values.at(qsizetype{y} * width + x) : 0;
    }
};

/// Whether a point of the card lies inside its rounded corners.
bool isInCard(double x, double y, const QRectF &card, double radius)
{
    const double nearestX = std::clamp(x, card.left() + radius, card.right() - radius);
    const double nearestY = std::clamp(y, card.top() + radius, card.bottom() - radius);
    return std::hypot(x - nearestX, y - nearestY) <= radius;
}

/// The antialiased shape: of each pixel the share of 8 × 8 points that lie in the card.
Plane shapeOf(QSize picture, const QRectF &card, double radius)
{
    constexpr int points = 8;
    Plane shape{picture.width(), picture.height(), {}};
    for (int y = 0; y < shape.height; ++y) {
        for (int x = 0; x < shape.width; ++x) {
            int inside = 0;
            for (double down = 0.5; down < points; ++down) {
                for (double right = 0.5; right < points; ++right)
                    inside += isInCard(x + right / points, y + down / points, card, radius);
            }
            shape.values.push_back(inside / static_cast<double>(points * points));
        }
    }
    return shape;
}

Plane blurredAlong(const Plane &plane, double deviation, int stepX, int stepY)
{
    const int reach = static_cast<int>(std::ceil(5 * deviation));
    QList<double> kernel;
    double total = 0;
    for (int offset = -reach; offset <= reach; ++offset) {
        kernel.push_back(std::exp(-offset * offset / (2 * deviation * deviation)));
        total += kernel.back();
    }
    Plane blurred{plane.width, plane.height, {}};
    for (int y = 0; y < plane.height; ++y) {
        for (int x = 0; x < plane.width; ++x) {
            double sum = 0;
            for (int offset = -reach; offset <= reach; ++offset)
                sum += kernel.at(offset + reach) * plane.at(x + offset * stepX, y + offset * stepY);
            blurred.values.push_back(sum / total);
        }
    }
    return blurred;
}

struct ShadowCase {
    const char *name;
    QSizeF card; // points
    int scale;
};

class CardShadowCases : public testing::TestWithParam<ShadowCase> { };

TEST_P(CardShadowCases, isTheGaussianOfTheRoundedCardMovedDown)
{
    const auto &[name, points, scale] = GetParam();
    const QSize card = (points * scale).toSize();
    const QSize size = card + QSize(120, 120) * scale;
    const double radius = std::min(10.0 * scale, card.width() / 2.0);
    const QRect place(QPoint(60, 60) * scale, card);
    QImage picture = filled(size.width(), size.height(), 0xffffffffU);
    CardShadow(place, radius, scale, size).cast(picture, picture.rect());

    const Plane shape = shapeOf(size, QRectF(place).translated(0, 8.0 * scale), radius);
    const Plane blurred = blurredAlong(blurredAlong(shape, 15.0 * scale, 1, 0), 15.0 * scale, 0, 1);
    constexpr double tolerance = 0.6; // of a level; half of one is the rounding to a byte
    double worst = 0;
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            worst = std::max(
                worst, std::abs(qRed(picture.pixel(x, y)) - 255 * (1 - 0.5 * blurred.at(x, y))));
    }
    EXPECT_LT(worst, tolerance);
    EXPECT_LT(qRed(picture.pixel(size.width() / 2, size.height() / 2)), 254); // there is a shadow
}

INSTANTIATE_TEST_SUITE_P(, CardShadowCases,
                         testing::Values(ShadowCase{"atScale1", {100, 76}, 1},
                                         ShadowCase{"atScale2", {60, 56}, 2},
                                         ShadowCase{"atScale3", {40, 46}, 3},
                                         ShadowCase{"smallerThanTheBlur", {12, 37}, 2},
                                         ShadowCase{"widerThanHigh", {200, 37}, 1}),
                         [](const auto &shadow) { return std::string(shadow.param.name); });

TEST(CardShadow, darkensEveryChannelAndKeepsThePictureOpaque)
{
    QImage picture = filled(400, 400, qRgb(200, 100, 50));
    CardShadow({100, 100, 200, 200}, 10, 1, picture.size()).cast(picture, picture.rect());
    EXPECT_EQ(picture.pixel(200, 208), qRgb(100, 50, 25)); // half of it, far from every edge
}

TEST(CardShadow, touchesOnlyTheRegionItIsCastOn)
{
    QImage picture = filled(300, 300, 0xffffffffU);
    CardShadow({60, 60, 180, 180}, 10, 1, picture.size()).cast(picture, QRegion(10, 240, 100, 20));
    EXPECT_LT(qRed(picture.pixel(100, 250)), 230);
    EXPECT_EQ(picture.pixel(110, 250), 0xffffffffU);
    EXPECT_EQ(picture.pixel(100, 239), 0xffffffffU);
    EXPECT_EQ(picture.pixel(100, 260), 0xffffffffU);
}

} // namespace
} // namespace lumacap
