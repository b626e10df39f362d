#include "overlay/OverlayPainting.h"

#include "AnnotationPictures.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

constexpr QSize points(240, 160);

int areaOf(const QRegion &pixels)
{
    int area = 0;
    for (const QRect &rect : pixels)
        area += rect.width() * rect.height();
    return area;
}

/// Scenes as they follow each other while somebody points, drags and waits.
class Scenes {
public:
    explicit Scenes(unsigned seed)
        : m_random{seed}
    {
    }

    OverlayScene next()
    {
        switch (pick(8)) {
        case 0:
            m_scene.outline = std::nullopt;
            m_scene.label = std::nullopt;
            break;
        case 1:
            m_scene.outline = rect();
            break;
        case 2:
            if (m_scene.outline)
                m_scene.outline->size = {m_scene.outline->size.width + step(),
                                         m_scene.outline->size.height + step()};
            break;
        case 3:
            m_scene.antsPhase = pick(17);
            break;
        case 4:
            m_scene.label = OverlayLabel{u"%1 × %2"_s.arg(pick(300)).arg(pick(300)), rect()};
            break;
        case 5:
            m_scene.pointer = point();
            break;
        case 6:
            m_scene.guideLines = pick(2) == 0 ? GuideLines::Hidden : GuideLines::Shown;
            break;
        default:
            m_scene.pointer = m_scene.pointer
                ? std::optional(
                      Point<Canvas>{m_scene.pointer->x + step(), m_scene.pointer->y + step()})
                : point();
        }
        return m_scene;
    }

private:
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(m_random); }
    double step() { return pick(2) == 0 ? pick(9) - 4 : (pick(900) - 450) / 100.0; }
    double length(int least, int most)
    {
        const double whole = least + pick(most - least);
        return pick(3) == 0 ? whole + pick(100) / 100.0 : whole;
    }
    Point<Canvas> point() { return {length(-5, 245), length(-5, 165)}; }
    Rect<Canvas> rect()
    {
        return Rect<Canvas>{point(), {length(-120, 120), length(-90, 90)}}.standardized();
    }

    std::mt19937 m_random;
    OverlayScene m_scene;
};

class RepaintTest : public testing::TestWithParam<int> { };

TEST_P(RepaintTest, ofWhatChangedEqualsAFullRepaint)
{
    const CanvasMeasure canvas{{240, 160}, GetParam()};
    const QImage frozen = screenOfDistinctPixels(points * GetParam());
    const QImage veil = dimmed(frozen);
    for (unsigned seed = 0; seed < 12; ++seed) {
        Scenes scenes(seed);
        const auto kinds = oneOfEachKind({{60, 40}, {90, 70}});
        OverlayScene shown;
        if (seed % 3 == 0) {
            for (const auto &mark : kinds)
                shown.annotations.append(
                    {mark.get(), mark->id(), drawnPixels(mark->drawnAreas(), canvas)});
        }
        QImage picture(frozen.size(), QImage::Format_ARGB32_Premultiplied);
        paintOverlay(picture, frozen, veil, shown, canvas, picture.rect());
        for (int event = 0; event < 60; ++event) {
            OverlayScene scene = scenes.next();
            scene.annotations = shown.annotations;
            paintOverlay(picture, frozen, veil, scene, canvas, changedPixels(shown, scene, canvas));
            QImage whole(frozen.size(), QImage::Format_ARGB32_Premultiplied);
            paintOverlay(whole, frozen, veil, scene, canvas, whole.rect());
            ASSERT_EQ(picture, whole) << "seed " << seed << ", event " << event;
            shown = scene;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, RepaintTest, testing::Values(1, 2, 3));

constexpr CanvasMeasure fourK{{3840, 2160}, 1};
constexpr int fourKPixels = 3840 * 2160;

TEST(ChangedPixels, ofTheSameSceneAreNone)
{
    const OverlayScene scene{.outline = Rect<Canvas>{{100, 100}, {2000, 1000}},
                             .pointer = Point<Canvas>{50, 60}};

    EXPECT_TRUE(changedPixels(scene, scene, fourK).isEmpty());
}

TEST(ChangedPixels, ofAPointerThatMovesAreItsCrossesAndLines)
{
    const OverlayScene before{.pointer = Point<Canvas>{1000, 1000},
                              .guideLines = GuideLines::Shown};
    OverlayScene after = before;
    after.pointer = Point<Canvas>{1400, 700};

    EXPECT_LT(areaOf(changedPixels(before, after, fourK)), fourKPixels / 250);
}

TEST(ChangedPixels, ofATickAreTheLineAroundTheOutline)
{
    const OverlayScene before{.outline = Rect<Canvas>{{100, 100}, {3000, 1500}}};
    OverlayScene after = before;
    after.antsPhase = 1;

    const int area = areaOf(changedPixels(before, after, fourK));
    EXPECT_GE(area, 2 * 9000);
    EXPECT_LE(area, 4 * 9100);
}

TEST(ChangedPixels, ofADragStepAreItsLinesAndTheStripItGrewBy)
{
    OverlayScene before{.outline = Rect<Canvas>{{100, 100}, {3000, 1500}},
                        .label = OverlayLabel{u"3000 × 1500"_s, {{100, 100}, {3000, 1500}}},
                        .pointer = Point<Canvas>{3100, 1600}};
    OverlayScene after = before;
    after.outline = Rect<Canvas>{{100, 100}, {3010, 1505}};
    after.pointer = Point<Canvas>{3110, 1605};

    EXPECT_LT(areaOf(changedPixels(before, after, fourK)), fourKPixels / 60);
}

TEST(ChangedPixels, ofAnOutlineOutsideTheScreenAreNone)
{
    const OverlayScene after{.outline = Rect<Canvas>{{5000, 100}, {300, 150}}};

    EXPECT_TRUE(changedPixels({}, after, fourK).isEmpty());
}

TEST(ChangedPixels, ofAMarkThatComesOrGoesAreItsOwn)
{
    const RectAnnotation mark(Qt::red, 4, {{100, 100}, {3000, 1500}});
    OverlayScene with;
    with.annotations.append({&mark, mark.id(), drawnPixels(mark.drawnAreas(), fourK)});

    const QRegion come = changedPixels({}, with, fourK);
    EXPECT_EQ(changedPixels(with, {}, fourK), come);
    EXPECT_TRUE(come.contains(QPoint(100, 2160 - 100)));
    EXPECT_LT(areaOf(come), fourKPixels / 80);
    EXPECT_TRUE(changedPixels(with, OverlayScene(with), fourK).isEmpty());
}

TEST(ChangedPixels, ofAScribbleThatGrowsAreItsNewestStretch)
{
    FreehandAnnotation scribble(Qt::red, 4, {{10, 10}, {3800, 2100}});
    OverlayScene before;
    before.inProgress = {
        &scribble, scribble.id(), drawnPixels(scribble.drawnAreas(), fourK), 7, {}};
    OverlayScene after = before;
    after.inProgress->revision = 8;
    after.inProgress->lastChange = drawnPixels(scribble.dragTo({3790, 2050}), fourK);
    after.inProgress->pixels = drawnPixels(scribble.drawnAreas(), fourK);

    EXPECT_LT(areaOf(changedPixels(before, after, fourK)), 3000);
    before.inProgress->revision = 6; // a change between was not shown
    EXPECT_GT(areaOf(changedPixels(before, after, fourK)), 100'000);
}

} // namespace
} // namespace lumacap::tests
