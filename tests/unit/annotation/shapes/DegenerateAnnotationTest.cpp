#include "AnnotationPictures.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

namespace lumacap::tests {
namespace {

constexpr double nan = std::numeric_limits<double>::quiet_NaN();
constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr QSize canvas(120, 90);
constexpr Rect<Canvas> canvasBounds{{0, 0}, {120, 90}};

/// Both ways of drawing, on one painter, and after them a rectangle, which must come out as it
/// does alone.
void expectNothingLeaks(const Annotation &annotation, const QImage &screen)
{
    const RectAnnotation next(Qt::green, 4, {{100, 70}, {15, 15}});
    const QImage alone = live(next, canvas);
    const QImage picture = painted(canvas, 1, [&](QPainter &painter) {
        annotation.draw(painter, canvasBounds);
        annotation.drawWithImage(painter, canvasBounds, screen, 1);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.fillRect(QRectF(90, 60, 30, 30), Qt::transparent);
        painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
        next.draw(painter, canvasBounds);
    });
    const QRect corner(90, 0, 30, 30); // the upper right in pixels
    EXPECT_EQ(picture.copy(corner), alone.copy(corner));
}

struct Degenerate {
    const char *name;
    Rect<Canvas> rect;
};

class DegenerateRectTest : public testing::TestWithParam<Degenerate> { };

TEST_P(DegenerateRectTest, drawsWithoutALeakIntoTheNextAnnotation)
{
    const QImage screen = screenOfDistinctPixels(canvas);
    for (const auto &annotation : oneOfEachKind(GetParam().rect))
        expectNothingLeaks(*annotation, screen);
}

TEST_P(DegenerateRectTest, drawsOverAnImageOfOnePixel)
{
    const QImage pixel = screenOfDistinctPixels({1, 1});
    for (const auto &annotation : oneOfEachKind(GetParam().rect))
        expectNothingLeaks(*annotation, pixel);
}

INSTANTIATE_TEST_SUITE_P(Rects, DegenerateRectTest,
                         testing::Values(Degenerate{"zeroSize", {{30, 30}, {0, 0}}},
                                         Degenerate{"zeroWidth", {{30, 30}, {0, 40}}},
                                         Degenerate{"zeroHeight", {{30, 30}, {40, 0}}},
                                         Degenerate{"notANumber", {{nan, 30}, {40, 40}}},
                                         Degenerate{"sizeNotANumber", {{30, 30}, {40, nan}}},
                                         Degenerate{"infinite", {{30, 30}, {infinity, 40}}},
                                         Degenerate{"farOutside", {{1e7, -1e7}, {50, 50}}},
                                         Degenerate{"furtherOutside", {{-1e12, 1e12}, {50, 50}}},
                                         Degenerate{"immense", {{-1e6, -1e6}, {2e6, 2e6}}},
                                         Degenerate{"moreThanImmense",
                                                    {{-1e12, -1e12}, {2e12, 2e12}}},
                                         Degenerate{"tiny", {{30, 30}, {1e-9, 1e-9}}},
                                         Degenerate{"onePixel", {{30, 30}, {1, 1}}}),
                         [](const auto &instance) { return instance.param.name; });

class NotANumberTest : public testing::TestWithParam<Degenerate> { };

TEST_P(NotANumberTest, drawsNothing)
{
    const QImage screen = screenOfDistinctPixels(canvas);
    const auto kinds = oneOfEachKind(GetParam().rect);
    const bool isOriginANumber = isFinite(GetParam().rect.origin);
    for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
        const bool hasOnlyAnOrigin = kind == 5 || kind == 7; // a numbered point and a text
        if (!hasOnlyAnOrigin || !isOriginANumber) {
            EXPECT_EQ(finished(*kinds.at(kind), screen), screen) << kind;
        }
    }
}

TEST(NotANumber, asLineWidthDrawsNothing)
{
    const QImage screen = screenOfDistinctPixels(canvas);
    for (const double width : {nan, infinity, 0.0, -2.0}) {
        const auto kinds = oneOfEachKind({{10, 10}, {40, 30}});
        for (const std::size_t kind : {0U, 1U, 3U, 4U, 6U}) {
            kinds.at(kind)->lineWidth = width;
            EXPECT_EQ(finished(*kinds.at(kind), screen), screen) << kind;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Rects, NotANumberTest,
                         testing::Values(Degenerate{"origin", {{nan, 30}, {40, 40}}},
                                         Degenerate{"infiniteOrigin", {{30, infinity}, {40, 40}}},
                                         Degenerate{"width", {{30, 30}, {nan, 40}}},
                                         Degenerate{"height", {{30, 30}, {40, nan}}},
                                         Degenerate{"infiniteHeight", {{30, 30}, {40, -infinity}}}),
                         [](const auto &instance) { return instance.param.name; });

TEST(DegenerateAnnotation, aStrokeThatCrossesItselfEverywhereIsDrawnToItsEnd)
{
    std::vector<Point<Canvas>> scribble;
    scribble.reserve(201);
    std::mt19937 random(5);
    std::uniform_real_distribution<double> x(100, 1900);
    std::uniform_real_distribution<double> y(100, 1000);
    for (int i = 0; i < 200; ++i)
        scribble.push_back({x(random), y(random)});
    scribble.push_back({20, 20});

    const QImage picture = live(FreehandAnnotation(Qt::red, 4, scribble), {1920, 1080});

    EXPECT_EQ(colorAt(picture, 20, 1080 - 20), QColor(Qt::red));
}

TEST(DegenerateAnnotation, freehandOfTwentyThousandPointsIsDrawn)
{
    std::vector<Point<Canvas>> spiral;
    spiral.reserve(20'000);
    for (int i = 0; i < 20'000; ++i) {
        const double angle = i * 0.01;
        spiral.push_back({60 + i * 0.002 * std::cos(angle), 45 + i * 0.002 * std::sin(angle)});
    }
    const FreehandAnnotation annotation(Qt::red, 2, spiral);
    const QImage picture = live(annotation, canvas);

    expectNothingLeaks(annotation, screenOfDistinctPixels(canvas));
    const auto last = spiral.back();
    EXPECT_GT(colorAt(picture, static_cast<int>(last.x), 90 - 1 - static_cast<int>(last.y)).alpha(),
              0);
}

TEST(DegenerateAnnotation, freehandWithAPointThatIsNoNumberDrawsNothing)
{
    const FreehandAnnotation annotation(Qt::red, 2, {{10, 10}, {nan, 20}, {50, 50}});

    EXPECT_TRUE(inkBounds(live(annotation, canvas)).isNull());
}

TEST(DegenerateAnnotation, textOfNoSizeDrawsNothing)
{
    for (const double size : {0.0, -4.0, nan, infinity}) {
        const TextAnnotation annotation(Qt::red, 4, {10, 10}, QStringLiteral("Text"), size);
        EXPECT_TRUE(inkBounds(live(annotation, canvas)).isNull()) << size;
    }
}

TEST(DegenerateAnnotation, loupeFarFromItsSourceIsConnectedAllTheSame)
{
    MagnifierAnnotation annotation(Qt::red, 4, {{10, 10}, {20, 20}}, 2, MagnifierShape::Circle);
    annotation.loupeOrigin = {1e9, 10};
    annotation.loupeSize = {20, 20};

    expectNothingLeaks(annotation, screenOfDistinctPixels(canvas));
    EXPECT_GT(colorAt(live(annotation, canvas), 33, 69).alpha(), 0) << "the first dash";
}

} // namespace
} // namespace lumacap::tests
