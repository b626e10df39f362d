#include "AnnotatingFixture.h"
#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr QRect selected{100, 150, 500, 400};

class AnnotatingTest : public AnnotatingFixture, public testing::WithParamInterface<int> {
protected:
    void start() { annotate(GetParam(), selected); }

    void expectConfirmed(const Marks &expected)
    {
        press(u"Return"_s);
        expectSaved(expected);
    }

    Rect<Canvas> between(QPoint from, QPoint to) const
    {
        return {canvas(from), canvas(to) - canvas(from)};
    }
};

TEST_P(AnnotatingTest, anArrowIsInTheFile)
{
    start();
    use(u"arrow"_s);
    dragPoints({200, 200}, {420, 340});

    expectConfirmed(marks(std::make_unique<ArrowAnnotation>(
        colorOf(AnnotationColor::Red), 4, canvas({200, 200}), canvas({420, 340}))));
}

TEST_P(AnnotatingTest, aRectangleOfAnotherColourAndThicknessIsInTheFile)
{
    start();
    use(u"rectangle"_s);
    use(u"blue"_s);
    use(u"thick"_s);
    dragPoints({420, 340}, {200, 200});

    expectConfirmed(marks(std::make_unique<RectAnnotation>(colorOf(AnnotationColor::Blue), 6,
                                                           between({420, 340}, {200, 200}))));
}

TEST_P(AnnotatingTest, anEllipseIsInTheFileAsFarAsItReachesIntoTheSelection)
{
    start();
    use(u"ellipse"_s);
    use(u"thin"_s);
    use(u"green"_s);
    dragPoints({60, 200}, {420, 640});

    expectConfirmed(marks(std::make_unique<EllipseAnnotation>(colorOf(AnnotationColor::Green), 2,
                                                              between({60, 200}, {420, 640}))));
}

TEST_P(AnnotatingTest, numberedPointsAreInTheFileAndGoOnAfterAnUndo)
{
    start();
    use(u"numberedPoint"_s);
    clickPoint({200, 200});
    clickPoint({260, 220});
    use(u"undo"_s);
    use(u"orange"_s);
    clickPoint({300, 300});

    expectConfirmed(marks(std::make_unique<NumberedPointAnnotation>(colorOf(AnnotationColor::Red),
                                                                    canvas({200, 200}), 1),
                          std::make_unique<NumberedPointAnnotation>(
                              colorOf(AnnotationColor::Orange), canvas({300, 300}), 3)));
}

TEST_P(AnnotatingTest, aFreehandStrokeIsInTheFile)
{
    start();
    use(u"freehand"_s);
    dragPoints({200, 200}, {420, 340});

    expectConfirmed(marks(std::make_unique<FreehandAnnotation>(
        colorOf(AnnotationColor::Red), 4,
        std::vector{canvas({200, 200}), canvas({310, 270}), canvas({420, 340})})));
}

TEST_P(AnnotatingTest, aBlurredRegionIsInTheFile)
{
    start();
    use(u"blur"_s);
    dragPoints({200, 200}, {420, 340});

    expectConfirmed(marks(std::make_unique<BlurAnnotation>(colorOf(AnnotationColor::Red), 4,
                                                           between({200, 200}, {420, 340}))));
}

TEST_P(AnnotatingTest, aLoupeThatWasMovedIsInTheFile)
{
    start();
    use(u"magnifier"_s);
    use(u"3x"_s);
    use(u"circle"_s);
    dragPoints({150, 200}, {210, 250});
    const QPoint inside(210 + 20 + 60, 225); // the loupe stands 20 points beside its source
    dragPoints(inside, inside + QPoint(40, 150));
    clickPoint({580, 160}); // outside: it is done

    auto loupe = std::make_unique<MagnifierAnnotation>(colorOf(AnnotationColor::Red), 4,
                                                       between({150, 200}, {210, 250}), 3,
                                                       MagnifierShape::Circle);
    loupe->autoPlaceLoupe({{0, 0}, {1400, 700}});
    loupe->loupeOrigin = {loupe->loupeOrigin.x + 40, loupe->loupeOrigin.y - 150};
    expectConfirmed(marks(std::move(loupe)));
}

TEST_P(AnnotatingTest, textKeptByTabIsInTheFile)
{
    start();
    use(u"black"_s);
    writeText({200, 300}, u"Bonjour 12"_s);
    press(u"Tab"_s);

    expectConfirmed(marks(std::make_unique<TextAnnotation>(
        colorOf(AnnotationColor::Black), 1, canvas({200, 312}), u"Bonjour 12"_s, 18)));
}

INSTANTIATE_TEST_SUITE_P(Scales, AnnotatingTest, testing::Values(1, 2));

} // namespace
} // namespace lumacap::harness
