#include "AnnotationPictures.h"
#include "annotation/shapes/MagnifierAnnotation.h"

#include <QPainter>

#include <gtest/gtest.h>

#include <random>
#include <set>
#include <typeinfo>

namespace lumacap::tests {
namespace {

constexpr QSize canvas(120, 90);
constexpr Rect<Canvas> canvasBounds{{0, 0}, {120, 90}};

TEST(EveryAnnotation, hasAnIdOfItsOwnForLife)
{
    std::set<QUuid> ids;
    for (const auto &annotation : oneOfEachKind({{10, 10}, {40, 30}})) {
        EXPECT_FALSE(annotation->id().isNull());
        EXPECT_EQ(annotation->id(), annotation->id());
        ids.insert(annotation->id());
    }
    EXPECT_EQ(ids.size(), 8U);
}

TEST(EveryAnnotation, drawsTheSamePixelsFromANegativeSizeAsFromItsStandardizedTwin)
{
    std::mt19937 random(20261121);
    std::uniform_real_distribution<double> position(-20, 110);
    std::uniform_real_distribution<double> length(-90, 90);
    const QImage screen = screenOfDistinctPixels(canvas);
    for (int round = 0; round < 60; ++round) {
        const Rect<Canvas> dragged{{position(random), position(random)},
                                   {length(random), length(random)}};
        const auto kinds = oneOfEachRectangularKind(dragged);
        const auto twins = oneOfEachRectangularKind(dragged.standardized());
        // The loupe stands beside the source's origin, which differs between the two.
        dynamic_cast<MagnifierAnnotation &>(*kinds.back()).loupeOrigin = {dragged.origin.x + 5,
                                                                          dragged.origin.y - 7};
        auto &twin = dynamic_cast<MagnifierAnnotation &>(*twins.back());
        const Rect<Canvas> loupe{{dragged.origin.x + 5, dragged.origin.y - 7}, dragged.size};
        twin.loupeOrigin = loupe.standardized().origin;
        twin.loupeSize = loupe.standardized().size;
        for (std::size_t kind = 0; kind < kinds.size(); ++kind) {
            ASSERT_EQ(live(*kinds.at(kind), canvas), live(*twins.at(kind), canvas))
                << "kind " << kind << ", round " << round;
            ASSERT_EQ(finished(*kinds.at(kind), screen), finished(*twins.at(kind), screen))
                << "kind " << kind << ", round " << round;
        }
    }
}

TEST(EveryAnnotation, drawnFromLowerRightToUpperLeftIsTheSame)
{
    const auto forth = oneOfEachRectangularKind({{20, 60}, {50, -40}});
    const auto back = oneOfEachRectangularKind({{70, 20}, {-50, 40}});
    for (const std::size_t kind : {0U, 1U, 2U}) // the loupe's place depends on the direction
        EXPECT_EQ(live(*forth.at(kind), canvas), live(*back.at(kind), canvas)) << kind;
}

/// A painter's whole state, set to values that no annotation uses.
struct OddState {
    explicit OddState(QPainter &painter)
    {
        painter.setPen(QPen(Qt::magenta, 3.25, Qt::DotLine, Qt::SquareCap, Qt::BevelJoin));
        painter.setBrush(QBrush(Qt::cyan, Qt::Dense3Pattern));
        painter.setFont(QFont(QStringLiteral("Serif"), 33));
        painter.setOpacity(1);
        painter.setClipRect(QRect(1, 2, 100, 80));
        painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform
                                   | QPainter::TextAntialiasing,
                               false);
    }
};

TEST(EveryAnnotation, leavesThePainterAsItFoundIt)
{
    const QImage screen = screenOfDistinctPixels(canvas);
    for (const auto &annotation : oneOfEachKind({{10, 10}, {40, 30}})) {
        painted(canvas, 1, [&](QPainter &painter) {
            const OddState odd(painter);
            const QPen pen = painter.pen();
            const QBrush brush = painter.brush();
            const QFont font = painter.font();
            const QTransform transform = painter.transform();
            const QRegion clip = painter.clipRegion();
            const auto hints = painter.renderHints();
            const auto mode = painter.compositionMode();

            annotation->draw(painter, canvasBounds);
            annotation->drawWithImage(painter, canvasBounds, screen, 1);

            EXPECT_EQ(painter.pen(), pen);
            EXPECT_EQ(painter.brush(), brush);
            EXPECT_EQ(painter.font(), font);
            EXPECT_EQ(painter.transform(), transform);
            EXPECT_EQ(painter.clipRegion(), clip);
            EXPECT_EQ(painter.renderHints(), hints);
            EXPECT_EQ(painter.compositionMode(), mode);
        });
    }
}

TEST(EveryAnnotation, drawsTheSameWhateverThePainterWasSetTo)
{
    const QImage screen = screenOfDistinctPixels(canvas);
    const auto drawn = [&](const Annotation &annotation, bool isOdd) {
        return painted(canvas, 1, [&](QPainter &painter) {
            if (isOdd)
                const OddState odd(painter);
            else
                painter.setClipRect(QRect(1, 2, 100, 80));
            annotation.drawWithImage(painter, canvasBounds, screen, 1);
        });
    };
    for (const auto &annotation : oneOfEachKind({{10, 10}, {40, 30}}))
        EXPECT_EQ(drawn(*annotation, true), drawn(*annotation, false));
}

TEST(EveryAnnotation, drawsThePartInsideAClipAsItDrawsTheWhole)
{
    std::mt19937 random(7);
    std::uniform_real_distribution<double> position(-10, 120);
    std::uniform_real_distribution<double> length(-90, 90);
    const QImage screen = screenOfDistinctPixels(canvas);
    for (int round = 0; round < 30; ++round) {
        const Rect<Canvas> rect{{position(random), position(random)},
                                {length(random), length(random)}};
        std::size_t kind = 0;
        for (const auto &annotation : oneOfEachKind(rect)) {
            QImage inTiles = screen;
            QPainter painter(&inTiles);
            painter.translate(0, canvas.height());
            painter.scale(1, -1);
            for (int y = 0; y < canvas.height(); y += 10) {
                for (int x = 0; x < canvas.width(); x += 40) {
                    painter.setClipRect(x, y, 40, 10);
                    annotation->drawWithImage(painter, canvasBounds, screen, 1);
                }
            }
            painter.end();
            ASSERT_EQ(inTiles, finished(*annotation, screen))
                << "kind " << kind << ", round " << round;
            ++kind;
        }
    }
}

TEST(EveryAnnotation, butLoupeAndBlurLooksInTheFinalPictureAsItDoesLive)
{
    QImage nothing(canvas, QImage::Format_ARGB32_Premultiplied);
    nothing.fill(Qt::transparent);
    const auto kinds = oneOfEachKind({{10, 10}, {40, 30}});
    for (const std::size_t kind : {0U, 1U, 4U, 5U, 6U, 7U}) {
        const QImage picture = live(*kinds.at(kind), canvas);
        EXPECT_FALSE(inkBounds(picture).isNull()) << kind;
        EXPECT_EQ(finished(*kinds.at(kind), nothing), picture) << kind;
    }
}

/// Whether every pixel in which the pictures differ lies in `areas`.
testing::AssertionResult differOnlyIn(const DrawnAreas &areas, const QImage &one,
                                      const QImage &other, int scale)
{
    QRegion inside;
    for (const Rect<Canvas> &area : areas)
        inside += QRectF(area.minX() * scale, one.height() - area.maxY() * scale,
                         area.width() * scale, area.height() * scale)
                      .toAlignedRect();
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            if (one.pixel(x, y) != other.pixel(x, y) && !inside.contains(QPoint(x, y)))
                return testing::AssertionFailure() << "at " << x << ", " << y;
        }
    }
    return testing::AssertionSuccess();
}

class DrawnAreasTest : public testing::TestWithParam<int> {
protected:
    int m_scale = GetParam();
    QImage m_screen = screenOfDistinctPixels(canvas * m_scale);
    std::mt19937 m_random{99};
    std::uniform_real_distribution<double> m_position{-20, 130};
    std::uniform_real_distribution<double> m_length{-90, 90};

    Point<Canvas> point() { return {m_position(m_random), m_position(m_random)}; }
    Rect<Canvas> rect() { return {point(), {m_length(m_random), m_length(m_random)}}; }
};

TEST_P(DrawnAreasTest, holdAllThatIsDrawn)
{
    for (int round = 0; round < 40; ++round) {
        for (const auto &annotation : oneOfEachKind(rect())) {
            annotation->lineWidth = 2 + 2 * (round % 5);
            const QImage drawn = finished(*annotation, m_screen, m_scale);
            ASSERT_TRUE(differOnlyIn(annotation->drawnAreas(), drawn, m_screen, m_scale))
                << typeid(*annotation).name() << ", round " << round;
        }
    }
}

TEST_P(DrawnAreasTest, ofADragHoldAllThatLooksDifferent)
{
    for (int round = 0; round < 10; ++round) {
        for (const auto &annotation : oneOfEachKind(rect())) {
            QImage before = finished(*annotation, m_screen, m_scale);
            for (int step = 0; step < 6; ++step) {
                const DrawnAreas changed = annotation->dragTo(point());
                const QImage after = finished(*annotation, m_screen, m_scale);
                ASSERT_TRUE(differOnlyIn(changed, before, after, m_scale))
                    << typeid(*annotation).name() << ", round " << round << ", step " << step;
                before = after;
            }
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, DrawnAreasTest, testing::Values(1, 2));

} // namespace
} // namespace lumacap::tests
