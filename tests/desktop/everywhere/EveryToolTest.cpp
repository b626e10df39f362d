#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "everywhere/EverywhereFixture.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr QRect selected{100, 150, 500, 400};
// Multiples of four units, which are whole points at every scale.
constexpr QPoint from{200, 200};
constexpr QPoint to{420, 340};

class EveryToolTest : public EverywhereFixture {
protected:
    /// The overlay is up, with an area selected and the tool chosen.
    void annotateWith(const QString &tool)
    {
        startAgent();
        openOverlay();
        awaitKeyboard();
        hands().drag(selected.topLeft(), selected.topLeft() + QPoint(500, 400));
        use(tool);
    }

    Rect<Canvas> between(QPoint start, QPoint end) const
    {
        return {canvas(start), canvas(end) - canvas(start)};
    }

    void expectConfirmed(const Marks &expected)
    {
        endOverlay(evdev::enter);
        EXPECT_EQ(differingPixels(shownWith(selected, expected), savedPicture()), 0);
    }

    static QColor red() { return colorOf(AnnotationColor::Red); }
};

TEST_P(EveryToolTest, anArrow)
{
    annotateWith(u"arrow"_s);
    hands().drag(from, to);
    expectConfirmed(marks(std::make_unique<ArrowAnnotation>(red(), 4, canvas(from), canvas(to))));
}

TEST_P(EveryToolTest, aRectangleOfAnotherColourAndThickness)
{
    annotateWith(u"rectangle"_s);
    use(u"blue"_s);
    use(u"thick"_s);
    hands().drag(from, to);
    expectConfirmed(marks(
        std::make_unique<RectAnnotation>(colorOf(AnnotationColor::Blue), 6, between(from, to))));
}

TEST_P(EveryToolTest, anEllipse)
{
    annotateWith(u"ellipse"_s);
    hands().drag(from, to);
    expectConfirmed(marks(std::make_unique<EllipseAnnotation>(red(), 4, between(from, to))));
}

TEST_P(EveryToolTest, numberedPointsWithAnUndo)
{
    annotateWith(u"numberedPoint"_s);
    hands().click(from);
    hands().click({260, 220});
    hands().press({evdev::control, evdev::letterZ});
    expectConfirmed(marks(std::make_unique<NumberedPointAnnotation>(red(), canvas(from), 1)));
}

TEST_P(EveryToolTest, aFreehandStroke)
{
    annotateWith(u"freehand"_s);
    hands().drag(from, to);
    expectConfirmed(marks(std::make_unique<FreehandAnnotation>(
        red(), 4, std::vector{canvas(from), canvas((from + to) / 2), canvas(to)})));
}

TEST_P(EveryToolTest, aBlur)
{
    annotateWith(u"blur"_s);
    hands().drag(from, to);
    expectConfirmed(marks(std::make_unique<BlurAnnotation>(red(), 4, between(from, to))));
}

TEST_P(EveryToolTest, aLoupe)
{
    annotateWith(u"magnifier"_s);
    use(u"3x"_s);
    use(u"circle"_s);
    hands().drag({152, 200}, {212, 252});
    hands().click({580, 520}); // far from it and from the toolbar: it is done

    auto loupe = std::make_unique<MagnifierAnnotation>(red(), 4, between({152, 200}, {212, 252}), 3,
                                                       MagnifierShape::Circle);
    const Point<Canvas> corner = canvas({1200, 0});
    loupe->autoPlaceLoupe({{0, 0}, {corner.x, corner.y}});
    expectConfirmed(marks(std::move(loupe)));
}

TEST_P(EveryToolTest, textKeptByTab)
{
    annotateWith(u"text"_s);
    use(u"black"_s);
    hands().click({200, 300});
    hands().press({evdev::letterA});
    hands().press({evdev::letterF});
    hands().press({evdev::tab});
    endOverlay(evdev::enter);

    const QImage seen = savedPicture();
    ASSERT_EQ(seen.size(), shown(selected).size());
    const auto written = differingPixels(shown(selected), seen);
    EXPECT_GT(written, 40);
    EXPECT_LT(written, 4000);
}

TEST_P(EveryToolTest, theFrameButtonPutsAFrameAround)
{
    annotateWith(u"frame"_s);
    endOverlay(evdev::enter);
    EXPECT_GT(savedPicture().width(), shown(selected).width());
}

TEST_P(EveryToolTest, cancelSavesNothing)
{
    annotateWith(u"arrow"_s);
    hands().drag(from, to);
    use(u"Annuler"_s);
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    EXPECT_TRUE(files().isEmpty());
}

TEST_P(EveryToolTest, validerSaves)
{
    annotateWith(u"arrow"_s);
    use(u"Valider"_s);
    EXPECT_EQ(differingPixels(shown(selected), savedPicture()), 0);
}

INSTANTIATE_TEST_SUITE_P(On, EveryToolTest, testing::ValuesIn(everyDesktop()),
                         [](const auto &make) { return make.param.name; });

} // namespace
} // namespace lumacap::harness
