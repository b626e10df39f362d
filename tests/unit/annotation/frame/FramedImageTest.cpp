#include "annotation/frame/FramedImage.h"

#include "Pixels.h"
#include "ScriptedRandom.h"

#include "annotation/frame/BackgroundGradient.h"

#include <QRegion>

#include <gtest/gtest.h>

namespace lumacap {
namespace {

using namespace Qt::StringLiterals;

constexpr Rgb titleBar{0.96, 0.96, 0.96};

QImage framed(const QImage &base, int scale,
              FrameBackgroundStyle style = FrameBackgroundStyle::Sunset,
              const std::optional<QString> &title = std::nullopt)
{
    ScriptedRandom random(upperEnd);
    const std::optional<QImage> picture = renderFramedImage(base, title, style, scale, random);
    EXPECT_TRUE(picture);
    return picture.value_or(QImage());
}

/// The pixels of the base in its frame.
QRect contentOf(const QImage &base, int scale)
{
    return {QPoint(60, 96) * scale, base.size()};
}

QRect titleBarOf(const QImage &base, int scale)
{
    return {60 * scale, 60 * scale, base.width(), 36 * scale};
}

/// The box around all pixels in which two pictures of one size differ.
QRect differenceOf(const QImage &one, const QImage &other)
{
    QRect box;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y))
                box |= QRect(x, y, 1, 1);
        }
    }
    return box;
}

class FramedImageAtScale : public testing::TestWithParam<int> { };

INSTANTIATE_TEST_SUITE_P(, FramedImageAtScale, testing::Values(1, 2, 3),
                         testing::PrintToStringParamName());

TEST_P(FramedImageAtScale, isWiderBy120PointsAndHigherBy156)
{
    const int scale = GetParam();
    const QImage picture = framed(filled(400 * scale, 300 * scale, 0xff808080U), scale);
    EXPECT_EQ(picture.size(), QSize(520, 456) * scale);
    EXPECT_EQ(picture.format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(picture.devicePixelRatio(), 1);
}

TEST_P(FramedImageAtScale, holdsTheBasePixelByPixel)
{
    const int scale = GetParam();
    const QImage base = noise(203, 101);
    const QImage picture = framed(base, scale);
    ASSERT_EQ(picture.size(), QSize(203 + 120 * scale, 101 + 156 * scale));
    // The separator reaches a quarter of a point into the content, the corners 10 points.
    const QRect plain = base.rect().adjusted(0, scale, 0, -10 * scale);
    EXPECT_EQ(picture.copy(plain.translated(contentOf(base, scale).topLeft())), base.copy(plain));
    const QRect low = base.rect().adjusted(10 * scale, scale, -10 * scale, 0);
    EXPECT_EQ(picture.copy(low.translated(contentOf(base, scale).topLeft())), base.copy(low));
}

TEST_P(FramedImageAtScale, hasAPlainTitleBar)
{
    const int scale = GetParam();
    const QImage base = filled(200 * scale, 100 * scale, 0xff000000U);
    const QImage picture = framed(base, scale);
    const QRect bar = titleBarOf(base, scale);
    EXPECT_EQ(picture.pixel(bar.center()), qRgb(245, 245, 245));
    EXPECT_EQ(picture.pixel(bar.left(), bar.bottom() - scale), qRgb(245, 245, 245));
    EXPECT_EQ(picture.pixel(bar.right(), bar.bottom() - scale), qRgb(245, 245, 245));
    EXPECT_EQ(picture.pixel(bar.center().x(), bar.top()), qRgb(245, 245, 245));
}

TEST_P(FramedImageAtScale, hasThreeRoundWindowButtons)
{
    const int scale = GetParam();
    const QImage picture = framed(filled(200 * scale, 50 * scale, 0xff000000U), scale);
    constexpr std::array colors{Rgb{1.0, 0.38, 0.35}, Rgb{1.0, 0.74, 0.22}, Rgb{0.15, 0.8, 0.26}};
    constexpr std::array lefts{72, 92, 112};
    for (std::size_t button = 0; button < colors.size(); ++button) {
        const auto pixelAt = [&](double x, double y) { // points from the button's upper left
            return picture.pixel(static_cast<int>((lefts[button] + x) * scale),
                                 static_cast<int>((72 + y) * scale));
        };
        for (const auto &[x, y] : {QPointF(6, 6), QPointF(1.1, 6), QPointF(6, 1.1), QPointF(10, 3)})
            EXPECT_LE(distance(pixelAt(x, y), levelsOver(colors[button])), 1);
        for (const auto &[x, y] :
             {QPointF(0, 0), QPointF(11.9, 0), QPointF(0, 11.9), QPointF(6, -1), QPointF(12.4, 6)})
            EXPECT_LE(distance(pixelAt(x, y), levelsOver(titleBar)), 1);
    }
}

TEST_P(FramedImageAtScale, partsTitleBarAndContentByAThinLine)
{
    const int scale = GetParam();
    const QImage base = filled(200 * scale, 100 * scale, 0xff0000ffU);
    const QImage picture = framed(base, scale);
    const QRect content = contentOf(base, scale);
    constexpr Rgb line{0.82, 0.82, 0.82};
    const double share = scale * 0.25; // of the pixel on either side
    for (const int x : {content.left(), content.center().x(), content.right()}) {
        EXPECT_LE(distance(picture.pixel(x, content.top() - 1), levelsOver(titleBar, line, share)),
                  1);
        EXPECT_LE(distance(picture.pixel(x, content.top()), levelsOver({0, 0, 1}, line, share)), 1);
        EXPECT_EQ(picture.pixel(x, content.top() - 2), qRgb(245, 245, 245));
        EXPECT_EQ(picture.pixel(x, content.top() + 1), qRgb(0, 0, 255));
    }
}

TEST_P(FramedImageAtScale, showsTheBackgroundAroundTheCorners)
{
    const int scale = GetParam();
    const QImage dark = filled(100 * scale, 100 * scale, 0xff000000U);
    const QImage light = filled(100 * scale, 100 * scale, 0xffffffffU);
    const QRect difference = differenceOf(framed(dark, scale), framed(light, scale));
    EXPECT_EQ(difference, contentOf(dark, scale));
    const QImage picture = framed(light, scale);
    const QRect card = contentOf(light, scale).adjusted(0, -36 * scale, 0, 0);
    for (const QPoint corner :
         {card.topLeft(), card.topRight(), card.bottomLeft(), card.bottomRight()})
        EXPECT_EQ(qBlue(picture.pixel(corner)) < 80, true); // sunset under a shadow
}

TEST_P(FramedImageAtScale, hasTheSameBackgroundAndShadowAtEveryScale)
{
    const int scale = GetParam();
    const QImage small = framed(filled(90, 60, 0xff808080U), 1);
    const QImage picture = framed(filled(90 * scale, 60 * scale, 0xff808080U), scale);
    const QRegion around = QRegion(small.rect()).subtracted(QRect(60, 60, 90, 96));
    double worst = 0;
    for (const QRect &part : around) {
        for (int y = part.top(); y <= part.bottom(); ++y) {
            for (int x = part.left(); x <= part.right(); ++x) {
                const QRgb middle = picture.pixel(x * scale + scale / 2, y * scale + scale / 2);
                worst = std::max(
                    worst,
                    distance(small.pixel(x, y),
                             {1.0 * qRed(middle), 1.0 * qGreen(middle), 1.0 * qBlue(middle)}));
            }
        }
    }
    EXPECT_LE(worst, 3); // a pixel's middle lies elsewhere at an even scale
}

TEST(FramedImage, around400By300PointsAtScale2Is1040By912Pixels)
{
    EXPECT_EQ(framed(filled(800, 600, 0xff000000U), 2).size(), QSize(1040, 912));
}

TEST(FramedImage, losesNoPixelToThirdsOfPoints)
{
    EXPECT_EQ(framed(filled(410, 386, 0xff000000U), 3).size(), QSize(770, 854));
}

TEST(FramedImage, paintsTheGradientFromTheUpperLeftToTheLowerRight)
{
    const QImage picture = framed(filled(300, 100, 0xff808080U), 1);
    constexpr GradientColors colors{{0.5, 0.08, 0.22}, {0.88, 0.35, 0.12}};
    const double width = picture.width();
    const double height = picture.height();
    for (const QPoint pixel :
         {QPoint(0, 0), QPoint(picture.width() - 1, 0), QPoint(0, picture.height() - 1),
          QPoint(picture.width() - 1, picture.height() - 1)}) {
        const double along = ((pixel.x() + 0.5) * width + (pixel.y() + 0.5) * height)
            / (width * width + height * height);
        EXPECT_LE(distance(picture.pixel(pixel), levelsOver(colors.first, colors.second, along)),
                  1.5);
    }
}

TEST(FramedImage, takesTheColorsOfItsBackgroundFromTheBase)
{
    const QImage red =
        framed(filled(300, 200, 0xffff0000U), 1, FrameBackgroundStyle::DominantColor);
    EXPECT_LE(distance(red.pixel(0, 0), levelsOver(hsbToRGB(0.42, 0.8, 0.4))), 1.5);
    EXPECT_LE(distance(red.pixel(red.width() - 1, red.height() - 1),
                       levelsOver(hsbToRGB(0.58, 0.7, 0.65))),
              1.5);
}

TEST(FramedImage, dropsItsShadowDownward)
{
    const QImage picture = framed(filled(300, 300, 0xff000000U), 1, FrameBackgroundStyle::Light);
    const QRect card(60, 60, 300, 336);
    const int above = qRed(picture.pixel(card.center().x(), card.top() - 1));
    const int below = qRed(picture.pixel(card.center().x(), card.bottom() + 1));
    // Half a pixel outside the card the shadow's edge is 8.5 and -7.5 points away, of a deviation
    // of 15: normal distributions of 0.2855 and 0.6915.
    const auto lightAt = [](double along) { return 255 * (0.92 + 0.06 * along); };
    const double width = picture.width();
    const double height = picture.height();
    const auto along = [&](double x, double y) {
        return (x * width + y * height) / (width * width + height * height);
    };
    EXPECT_NEAR(above, lightAt(along(210, 59.5)) * (1 - 0.5 * 0.2855), 1.5);
    EXPECT_NEAR(below, lightAt(along(210, 396.5)) * (1 - 0.5 * 0.6915), 1.5);
}

TEST(FramedImage, paintsTheNewspaperBehindTheWholeCanvas)
{
    ScriptedRandom random(upperEnd);
    const QImage picture = renderFramedImage(filled(401, 300, 0xff808080U), std::nullopt,
                                             FrameBackgroundStyle::Newspaper, 2, random)
                               .value_or(QImage());
    ASSERT_GE(random.asked().size(), 2U);
    EXPECT_EQ(random.asked().at(0), (AskedRange{0, 200.5 + 120}));
    EXPECT_EQ(random.asked().at(1), (AskedRange{0, 150 + 156}));
    EXPECT_LE(distance(picture.pixel(4, 4), levelsOver({0.94, 0.9, 0.82})), 1);
    EXPECT_LE(distance(picture.pixel(20, 64), levelsOver({0.94, 0.9, 0.82})), 1);
    EXPECT_LE(
        distance(picture.pixel(34, 64), levelsOver({0.94, 0.9, 0.82}, {0.12, 0.1, 0.08}, 0.85)), 1);
}

TEST(FramedImage, drawsNoRandomNumbersForAGradient)
{
    ScriptedRandom random(upperEnd);
    EXPECT_TRUE(renderFramedImage(filled(50, 50, 0xff808080U), std::nullopt,
                                  FrameBackgroundStyle::DominantColor, 1, random));
    EXPECT_TRUE(random.asked().empty());
}

TEST(FramedImage, showsTheCardsWhiteThroughATransparentBase)
{
    const QImage clear = framed(filled(100, 100, 0), 1);
    EXPECT_EQ(clear.pixel(110, 150), 0xffffffffU);
    const QImage half = framed(filled(100, 100, qRgba(128, 0, 0, 128)), 1);
    EXPECT_EQ(qRed(half.pixel(110, 150)), 255);
    EXPECT_EQ(qAlpha(half.pixel(110, 150)), 255);
    EXPECT_NEAR(qGreen(half.pixel(110, 150)), 127, 1);
}

TEST(FramedImage, isOpaqueEverywhere)
{
    const QImage picture = framed(filled(100, 100, 0), 2);
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            ASSERT_EQ(qAlpha(picture.pixel(x, y)), 255);
    }
}

TEST_P(FramedImageAtScale, centresItsTitle)
{
    const int scale = GetParam();
    const QImage base = filled(300 * scale, 100 * scale, 0xff000000U);
    const FrameBackgroundStyle style = FrameBackgroundStyle::Sunset;
    const QImage titled = framed(base, scale, style, u"oooo"_s);
    const QRect ink = differenceOf(framed(base, scale), titled);
    const QRect bar = titleBarOf(base, scale);
    EXPECT_NEAR(ink.center().x(), bar.center().x(), 1.5 * scale);
    EXPECT_NEAR(ink.center().y(), bar.center().y(), 4 * scale);
    int darkest = 255;
    for (int x = ink.left(); x <= ink.right(); ++x)
        for (int y = ink.top(); y <= ink.bottom(); ++y)
            darkest = std::min(darkest, qGreen(titled.pixel(x, y)));
    EXPECT_GE(darkest, 101);
    EXPECT_LE(darkest, 170);
}

TEST(FramedImage, hasNoTitleWithoutAName)
{
    const QImage base = filled(300, 100, 0xff000000U);
    EXPECT_EQ(framed(base, 1, FrameBackgroundStyle::Ocean, u""_s),
              framed(base, 1, FrameBackgroundStyle::Ocean));
}

TEST(FramedImage, keepsALongTitleInItsBar)
{
    const QImage base = filled(140, 100, 0xff000000U);
    const QString title = u"The name of a program that goes on and on, and then on"_s;
    const QRect ink =
        differenceOf(framed(base, 1), framed(base, 1, FrameBackgroundStyle::Sunset, title));
    EXPECT_TRUE(titleBarOf(base, 1).contains(ink));
    EXPECT_GT(ink.width(), 120);
}

} // namespace
} // namespace lumacap
