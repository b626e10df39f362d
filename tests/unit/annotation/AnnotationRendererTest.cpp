#include "annotation/AnnotationRenderer.h"

#include "AnnotationPictures.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <random>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

using Annotations = std::vector<std::unique_ptr<Annotation>>;
using Area = std::optional<Rect<Canvas>>;

constexpr Size screenSize{320, 200};

const QImage &screenAt(int scale)
{
    static const std::array screens{screenOfDistinctPixels({320, 200}),
                                    screenOfDistinctPixels({640, 400}),
                                    screenOfDistinctPixels({960, 600})};
    return screens.at(static_cast<std::size_t>(scale - 1));
}

/// The final picture of `area` of the screen, which has `scale` pixels a point.
std::optional<QImage> rendered(const Area &area, int scale, const Annotations &annotations = {})
{
    return AnnotationRenderer::renderFinalImage(screenAt(scale), area, annotations, screenSize,
                                                scale);
}

/// Pixels whose channels differ by more than a painter's rounding of antialiased edges, which
/// depends a little on the place; all where the sizes differ.
int differingPixels(const QImage &first, const QImage &second)
{
    if (first.size() != second.size())
        return first.width() * first.height();
    constexpr int rounding = 3;
    int count = 0;
    for (int y = 0; y < first.height(); ++y) {
        for (int x = 0; x < first.width(); ++x) {
            const QRgb one = first.pixel(x, y);
            const QRgb other = second.pixel(x, y);
            const int off =
                std::max({std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
                          std::abs(qBlue(one) - qBlue(other))});
            count += off > rounding ? 1 : 0;
        }
    }
    return count;
}

TEST(RenderFinalImage, withoutASelectionIsTheWholeScreenAtFullPixelSize)
{
    for (const int scale : {1, 2, 3})
        EXPECT_EQ(rendered(std::nullopt, scale), screenAt(scale)) << scale;
}

TEST(RenderFinalImage, isPremultipliedArgb)
{
    EXPECT_EQ(rendered(std::nullopt, 1).value_or(QImage()).format(),
              QImage::Format_ARGB32_Premultiplied);
    const QImage opaque = screenAt(1).convertToFormat(QImage::Format_RGB32);
    EXPECT_EQ(AnnotationRenderer::renderFinalImage(opaque, std::nullopt, {}, screenSize, 1),
              screenAt(1));
}

TEST(RenderFinalImage, isTheSelectedPartCountedFromTheLowerLeft)
{
    for (const int scale : {1, 2, 3}) {
        const QRect pixels(QPoint(40, 200 - 30 - 60) * scale, QSize(100, 60) * scale);
        EXPECT_EQ(rendered(Rect<Canvas>{{40, 30}, {100, 60}}, scale), screenAt(scale).copy(pixels));
    }
}

TEST(RenderFinalImage, ofASelectionDraggedEitherWayIsTheSame)
{
    EXPECT_EQ(rendered(Rect<Canvas>{{140, 90}, {-100, -60}}, 2),
              rendered(Rect<Canvas>{{40, 30}, {100, 60}}, 2));
}

TEST(RenderFinalImage, ofASelectionBetweenPixelsIsAPartOfTheScreenByteForByte)
{
    const Rect<Canvas> area{{100.37, 50.81}, {80.4, 60.7}};
    for (const int scale : {1, 2, 3}) {
        const double upperEdge = (200 - (50.81 + 60.7)) * scale;
        const QRect pixels(static_cast<int>(std::lround(100.37 * scale)),
                           static_cast<int>(std::lround(upperEdge)), static_cast<int>(80.4 * scale),
                           static_cast<int>(60.7 * scale));
        EXPECT_EQ(rendered(area, scale), screenAt(scale).copy(pixels)) << scale;
    }
}

TEST(RenderFinalImage, ofASelectionUpToTheScreensEdgesHasNoPixelBeyondThem)
{
    for (const double origin : {0.2, 0.5, 0.7, 1.5}) {
        const Rect<Canvas> area{{origin, 0}, {320 - origin, 200 - origin}};
        const QImage picture = rendered(area, 1).value_or(QImage());
        EXPECT_EQ(qAlpha(picture.pixel(picture.width() - 1, 0)), 255) << origin;
        EXPECT_EQ(qAlpha(picture.pixel(0, picture.height() - 1)), 255) << origin;
    }
}

TEST(RenderFinalImage, beyondTheScreenIsTransparent)
{
    const QImage picture = rendered(Rect<Canvas>{{300, 180}, {40, 40}}, 1).value_or(QImage());

    EXPECT_EQ(picture.size(), QSize(40, 40));
    EXPECT_EQ(picture.pixel(19, 20), screenAt(1).pixel(319, 0));
    EXPECT_EQ(qAlpha(picture.pixel(20, 20)), 0);
    EXPECT_EQ(qAlpha(picture.pixel(19, 19)), 0);
}

TEST(RenderFinalImage, ofASelectionBelowOnePixelIsNone)
{
    EXPECT_EQ(rendered(Rect<Canvas>{{10, 10}, {0.4, 100}}, 2), std::nullopt);
    EXPECT_EQ(rendered(Rect<Canvas>{{10, 10}, {100, 0.4}}, 2), std::nullopt);
    EXPECT_EQ(rendered(Rect<Canvas>{{10, 10}, {0, 0}}, 1), std::nullopt);
    EXPECT_NE(rendered(Rect<Canvas>{{10, 10}, {0.5, 0.5}}, 2), std::nullopt);
}

TEST(RenderFinalImage, ofASelectionNoMachineHasMemoryForIsNone)
{
    EXPECT_EQ(rendered(Rect<Canvas>{{0, 0}, {1e12, 1e12}}, 1), std::nullopt);
    EXPECT_EQ(rendered(Rect<Canvas>{{0, 0}, {2e9, 2e9}}, 1), std::nullopt);
}

TEST(RenderFinalImageDeathTest, ofASelectionThatIsNoNumberEndsTheProgram)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    constexpr double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_DEATH(rendered(Rect<Canvas>{{0, 0}, {nan, 10}}, 1), "");
    EXPECT_DEATH(rendered(Rect<Canvas>{{0, 0}, {1e300, 10}}, 1), "");
}

TEST(RenderFinalImage, drawsAnnotationsAtTheirPlaceInTheSelection)
{
    for (const int scale : {1, 2}) {
        Annotations annotations;
        annotations.push_back(
            std::make_unique<RectAnnotation>(Qt::red, 2, Rect<Canvas>{{60, 40}, {20, 10}}));

        const QImage picture =
            rendered(Rect<Canvas>{{40, 30}, {100, 60}}, scale, annotations).value_or(QImage());

        // From the lower left the rectangle begins at 20, 10: from the upper left 20, 60 - 20.
        const QRgb red = QColor(Qt::red).rgb();
        EXPECT_EQ(picture.pixel(19 * scale, 39 * scale), red);
        EXPECT_EQ(picture.pixel(41 * scale - 1, 51 * scale - 1), red);
        EXPECT_NE(picture.pixel(19 * scale - 1, 45 * scale), red);
        EXPECT_NE(picture.pixel(41 * scale, 45 * scale), red);
        EXPECT_NE(picture.pixel(30 * scale, 45 * scale), red);
    }
}

TEST(RenderFinalImage, ofAnySelectionIsAPartOfThePictureOfTheWholeScreen)
{
    std::mt19937 random(3);
    std::uniform_real_distribution<double> x(0, 200);
    std::uniform_real_distribution<double> y(0, 120);
    std::uniform_real_distribution<double> length(20, 80);
    const auto annotations = oneOfEachKind({{90.3, 60.7}, {70.2, 50.9}});
    for (const int scale : {1, 2, 3}) {
        const QImage whole = rendered(std::nullopt, scale, annotations).value_or(QImage());
        for (int round = 0; round < 40; ++round) {
            const Rect<Canvas> area{{x(random), y(random)}, {length(random), length(random)}};
            const QPoint first(static_cast<int>(std::lround(area.minX() * scale)),
                               static_cast<int>(std::lround((200 - area.maxY()) * scale)));
            const QSize size(static_cast<int>(area.width() * scale),
                             static_cast<int>(area.height() * scale));
            const QImage part = rendered(area, scale, annotations).value_or(QImage());
            // Letters that the left edge cuts are set a fraction of a pixel off by the toolkit.
            ASSERT_LE(differingPixels(part, whole.copy({first, size})), 40 * scale * scale)
                << "scale " << scale << ", round " << round;
        }
    }
}

TEST(RenderFinalImage, ofWholePixelsAtScaleThreeHasThemAll)
{
    for (int from = 0; from < 60; ++from) {
        for (int to = from + 1; to <= 60; ++to) {
            const Rect<Canvas> area{{from / 3.0, 10}, {to / 3.0 - from / 3.0, 10}};
            ASSERT_EQ(rendered(area, 3).value_or(QImage()).width(), to - from)
                << from << " to " << to;
        }
    }
}

class FormatTest : public testing::TestWithParam<QImage::Format> { };

TEST_P(FormatTest, ofTheScreenDoesNotMatter)
{
    QImage screen(320, 200, QImage::Format_ARGB32_Premultiplied);
    for (int row = 0; row < 200; ++row) {
        for (int column = 0; column < 320; ++column)
            screen.setPixel(column, row, (column / 4 + row / 4) % 2 == 0 ? 0xff000000 : 0xffffffff);
    }
    const auto annotations = oneOfEachKind({{90, 60}, {70, 50}});
    const Rect<Canvas> area{{200, 20}, {160, 100}}; // over the edge, too

    EXPECT_EQ(AnnotationRenderer::renderFinalImage(screen.convertToFormat(GetParam()), area,
                                                   annotations, screenSize, 1),
              AnnotationRenderer::renderFinalImage(screen, area, annotations, screenSize, 1));
}

INSTANTIATE_TEST_SUITE_P(Formats, FormatTest,
                         testing::Values(QImage::Format_RGB32, QImage::Format_RGB888,
                                         QImage::Format_RGB16, QImage::Format_RGB30,
                                         QImage::Format_RGBA64));

TEST(RenderFinalImage, pixelRatioOfTheScreensPictureDoesNotMatter)
{
    QImage screen = screenAt(2);
    screen.setDevicePixelRatio(2);
    const auto annotations = oneOfEachKind({{90, 60}, {70, 50}});

    const auto picture = AnnotationRenderer::renderFinalImage(
        screen, Rect<Canvas>{{40, 30}, {200, 100}}, annotations, screenSize, 2);

    EXPECT_EQ(picture, rendered(Rect<Canvas>{{40, 30}, {200, 100}}, 2, annotations));
    EXPECT_EQ(picture.value_or(QImage()).devicePixelRatio(), 1);
}

TEST(RenderFinalImage, drawsLaterAnnotationsOnTop)
{
    Annotations annotations;
    annotations.push_back(
        std::make_unique<RectAnnotation>(Qt::red, 4, Rect<Canvas>{{60, 40}, {40, 40}}));
    annotations.push_back(
        std::make_unique<RectAnnotation>(Qt::blue, 4, Rect<Canvas>{{60, 40}, {80, 20}}));

    const QImage picture = rendered(std::nullopt, 1, annotations).value_or(QImage());

    EXPECT_EQ(picture.pixel(60, 200 - 40), QColor(Qt::blue).rgb());
    EXPECT_EQ(picture.pixel(60, 200 - 70), QColor(Qt::red).rgb());
}

TEST(RenderFinalImage, pixelatesTheScreenAndNotTheAnnotationsBeneath)
{
    Annotations annotations;
    annotations.push_back(
        std::make_unique<RectAnnotation>(Qt::red, 6, Rect<Canvas>{{48, 48}, {24, 24}}));
    annotations.push_back(
        std::make_unique<BlurAnnotation>(Qt::red, 4, Rect<Canvas>{{48, 48}, {16, 16}}));
    const QImage screen = screenAt(2);

    const QImage picture =
        rendered(Rect<Canvas>{{40, 40}, {40, 40}}, 2, annotations).value_or(QImage());

    // The upper left block: 48 to 56 by 56 to 64 points, sampled at its middle.
    const QRgb sample = screen.pixel(2 * 52, 2 * (200 - 60));
    EXPECT_EQ(picture.pixel(2 * (48 - 40), 2 * (80 - 64)), sample);
    EXPECT_EQ(picture.pixel(2 * (56 - 40) - 1, 2 * (80 - 56) - 1), sample);
}

TEST(RenderFinalImage, showsTheScreenInLoupes)
{
    QImage screen(320, 200, QImage::Format_ARGB32_Premultiplied);
    screen.fill(Qt::white);
    screen.setPixelColor(0, 0, Qt::black);
    for (int x = 20; x < 40; ++x) {
        for (int y = 200 - 40; y < 200 - 20; ++y)
            screen.setPixelColor(x, y, Qt::green);
    }
    auto loupe = std::make_unique<MagnifierAnnotation>(Qt::red, 4, Rect<Canvas>{{20, 20}, {20, 20}},
                                                       4, MagnifierShape::Rectangle);
    loupe->autoPlaceLoupe({{0, 0}, screenSize});
    Annotations annotations;
    annotations.push_back(std::move(loupe));

    const QImage picture =
        AnnotationRenderer::renderFinalImage(screen, Rect<Canvas>{{50, 0}, {100, 100}}, annotations,
                                             screenSize, 1)
            .value_or(QImage());

    EXPECT_EQ(picture.pixel(40, 70), QColor(Qt::green).rgb());
}

TEST(RenderFramedImage, putsTheBaseOnACanvasWithRoomForTheFrame)
{
    const QImage base = screenOfDistinctPixels({800, 600});

    const QImage framed =
        AnnotationRenderer::renderFramedImage(base, u"Editor"_s, FrameBackgroundStyle::Newspaper, 2)
            .value_or(QImage());

    EXPECT_EQ(framed.size(), QSize(1040, 912));
    EXPECT_EQ(framed.copy(120 + 20, 912 - 120 - 600 + 2, 760, 570), base.copy(20, 2, 760, 570));
}

TEST(RenderFramedImage, drawsAnotherNewspaperPageEachTime)
{
    const QImage base = screenOfDistinctPixels({200, 100});
    const auto framed = [&] {
        return AnnotationRenderer::renderFramedImage(base, std::nullopt,
                                                     FrameBackgroundStyle::Newspaper, 1);
    };

    EXPECT_NE(framed(), framed());
}

} // namespace
} // namespace lumacap::tests
