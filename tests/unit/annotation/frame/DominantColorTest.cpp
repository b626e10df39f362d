#include "annotation/frame/DominantColor.h"

#include "Pixels.h"

#include <gtest/gtest.h>

namespace lumacap {
namespace {

constexpr QRgb black = 0xff000000U;
constexpr QRgb white = 0xffffffffU;
constexpr double totalWeight = 552; // 76 pixels of the border, three times each, and 324 others

/// The thumbnail's channel of every cell by its definition, pixel by pixel.
double meanByDefinition(const QImage &image)
{
    const auto overlap = [](int pixel, int cell, int length) {
        const double side = length / 20.0;
        return std::max(0.0,
                        std::min<double>(pixel + 1, (cell + 1) * side)
                            - std::max<double>(pixel, cell * side));
    };
    double sum = 0;
    for (int cell = 0; cell < 400; ++cell) {
        const int column = cell % 20;
        const int row = cell / 20;
        double area = 0;
        for (int y = 0; y < image.height(); ++y) {
            const double rowOverlap = overlap(y, row, image.height());
            for (int x = 0; rowOverlap > 0 && x < image.width(); ++x)
                area += qRed(image.pixel(x, y)) * rowOverlap * overlap(x, column, image.width());
        }
        const bool isBorder = column % 19 == 0 || row % 19 == 0;
        const double level = std::floor(area / (image.width() * image.height() / 400.0) + 0.5);
        sum += level * (isBorder ? 3 : 1);
    }
    return sum / 255 / totalWeight;
}

TEST(DominantColor, ofANullImageIsMediumGrey)
{
    EXPECT_EQ(extractDominantColor(QImage()), (Rgb{0.5, 0.5, 0.5}));
}

TEST(DominantColor, ofAPlainImageIsItsColor)
{
    const Rgb color = extractDominantColor(filled(123, 45, qRgb(51, 102, 255)));
    EXPECT_DOUBLE_EQ(color.red, 0.2);
    EXPECT_DOUBLE_EQ(color.green, 0.4);
    EXPECT_DOUBLE_EQ(color.blue, 1);
}

TEST(DominantColor, weighsABorderPixelThreeTimesAnInnerOne)
{
    for (const QPoint border : {QPoint(0, 0), QPoint(19, 7), QPoint(4, 19), QPoint(0, 12)}) {
        QImage image = filled(20, 20, black);
        image.setPixel(border, white);
        EXPECT_DOUBLE_EQ(extractDominantColor(image).green, 3 / totalWeight);
    }
    QImage image = filled(20, 20, black);
    image.setPixel(1, 18, white);
    EXPECT_DOUBLE_EQ(extractDominantColor(image).green, 1 / totalWeight);
}

TEST(DominantColor, roundsTheMeanOfACellToAByte)
{
    QImage image = filled(40, 40, black);
    image.setPixel(20, 20, white); // a quarter of a cell: 63.75
    EXPECT_DOUBLE_EQ(extractDominantColor(image).blue, 64 / 255.0 / totalWeight);
}

TEST(DominantColor, sharesAPixelBetweenTheCellsItLiesIn)
{
    QImage image = filled(30, 20, black);
    image.setPixel(1, 0, white); // half of it in the first cell and half in the second, of 1.5 each
    EXPECT_DOUBLE_EQ(extractDominantColor(image).red, 2 * 3 * 85 / 255.0 / totalWeight);
}

TEST(DominantColor, isTheAreaMeanAtAnySize)
{
    for (const QSize size :
         {QSize(1, 1), QSize(7, 3), QSize(19, 21), QSize(137, 61), QSize(3, 401)}) {
        const QImage image = noise(size.width(), size.height());
        EXPECT_DOUBLE_EQ(extractDominantColor(image).red, meanByDefinition(image))
            << size.width() << " x " << size.height();
    }
}

TEST(DominantColor, doesNotOverflowInWideCells)
{
    EXPECT_EQ(extractDominantColor(filled(12'000, 20, white)), (Rgb{1, 1, 1}));
}

TEST(DominantColor, takesATransparentPixelForBlack)
{
    EXPECT_EQ(extractDominantColor(filled(50, 50, 0)), (Rgb{0, 0, 0}));
}

TEST(DominantColor, readsOtherPixelFormats)
{
    QImage image(30, 30, QImage::Format_RGB888);
    image.fill(QColor(255, 0, 51));
    const Rgb color = extractDominantColor(image);
    EXPECT_DOUBLE_EQ(color.red, 1);
    EXPECT_DOUBLE_EQ(color.green, 0);
    EXPECT_DOUBLE_EQ(color.blue, 0.2);
}

} // namespace
} // namespace lumacap
