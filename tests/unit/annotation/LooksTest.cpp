#include "annotation/AnnotationRenderer.h"
#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "annotation/vocabulary/AnnotationColor.h"

#include "ReferencePicture.h"

#include <QGuiApplication>
#include <QPainter>

#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

using Annotations = std::vector<std::unique_ptr<Annotation>>;

constexpr Size screenSize{220, 140};

/// A screen with something to enlarge and to hide: a light window with lines and a coloured bar.
QImage screenAt(int scale)
{
    QImage screen(QSize(220, 140) * scale, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&screen);
    painter.scale(scale, scale);
    painter.fillRect(0, 0, 220, 140, QColor(52, 90, 130));
    painter.fillRect(12, 12, 196, 116, QColor(245, 245, 242));
    painter.fillRect(12, 12, 196, 12, QColor(200, 80, 60));
    for (int line = 0; line < 9; ++line) {
        for (int word = 0; word < 7; ++word)
            painter.fillRect(20 + 26 * word, 34 + 10 * line, 8 + (word * 7 + line * 5) % 14, 4,
                             QColor(60 + 20 * word, 70, 90));
    }
    return screen;
}

Annotations only(std::unique_ptr<Annotation> annotation)
{
    Annotations annotations;
    annotations.push_back(std::move(annotation));
    return annotations;
}

QColor colorOf(AnnotationColor color)
{
    return nsColor(color);
}

Annotations arrows()
{
    Annotations annotations;
    annotations.push_back(std::make_unique<ArrowAnnotation>(
        colorOf(AnnotationColor::Red), 4, Point<Canvas>{30, 30}, Point<Canvas>{110, 110}));
    annotations.push_back(std::make_unique<ArrowAnnotation>(
        colorOf(AnnotationColor::Blue), 2, Point<Canvas>{190, 110}, Point<Canvas>{120, 90}));
    annotations.push_back(std::make_unique<ArrowAnnotation>(
        colorOf(AnnotationColor::Green), 6, Point<Canvas>{190, 40}, Point<Canvas>{90, 40}));
    return annotations;
}

Annotations outlines()
{
    Annotations annotations;
    annotations.push_back(std::make_unique<RectAnnotation>(colorOf(AnnotationColor::Orange), 4,
                                                           Rect<Canvas>{{30, 30}, {70, 80}}));
    annotations.push_back(std::make_unique<EllipseAnnotation>(colorOf(AnnotationColor::Green), 6,
                                                              Rect<Canvas>{{115, 25}, {80, 90}}));
    return annotations;
}

Annotations numbers()
{
    Annotations annotations;
    int number = 0;
    for (const auto &row : annotationColors) {
        const int column = number % 5;
        const int line = number / 5;
        ++number;
        annotations.push_back(std::make_unique<NumberedPointAnnotation>(
            nsColor(row.value), Point<Canvas>{30.0 + 40 * column, 100.0 - 50 * line},
            number < 6 ? number : 10 * number));
    }
    return annotations;
}

Annotations freehand()
{
    std::vector<Point<Canvas>> wave;
    for (int x = 25; x < 195; x += 3)
        wave.push_back({static_cast<double>(x), 70 + 40 * std::sin(x * 0.09)});
    return only(
        std::make_unique<FreehandAnnotation>(colorOf(AnnotationColor::Red), 6, std::move(wave)));
}

Annotations texts()
{
    Annotations annotations;
    annotations.push_back(std::make_unique<TextAnnotation>(
        colorOf(AnnotationColor::Red), 4, Point<Canvas>{25, 85}, u"Été Ångström"_s, 16));
    annotations.push_back(std::make_unique<TextAnnotation>(
        colorOf(AnnotationColor::Blue), 4, Point<Canvas>{25, 35}, u"two\nlines 123"_s, 20));
    return annotations;
}

Annotations magnifier(MagnifierShape shape, double zoom)
{
    auto annotation = std::make_unique<MagnifierAnnotation>(
        colorOf(AnnotationColor::Red), 4, Rect<Canvas>{{30, 60}, {40, 30}}, zoom, shape);
    annotation->autoPlaceLoupe({{0, 0}, screenSize});
    return only(std::move(annotation));
}

Annotations blur()
{
    return only(std::make_unique<BlurAnnotation>(colorOf(AnnotationColor::Red), 4,
                                                 Rect<Canvas>{{40, 30}, {120, 70}}));
}

struct Look {
    const char *name;
    std::function<Annotations()> annotations;
};

std::ostream &operator<<(std::ostream &stream, const Look &look)
{
    return stream << look.name;
}

class LookTest : public testing::TestWithParam<std::tuple<Look, int>> {
protected:
    void SetUp() override { QGuiApplication::setFont(QFont(u"DejaVu Sans"_s)); }
};

TEST_P(LookTest, isThatOfItsReference)
{
    const auto &[look, scale] = GetParam();

    const auto picture = AnnotationRenderer::renderFinalImage(
        screenAt(scale), std::nullopt, look.annotations(), screenSize, scale);

    ASSERT_TRUE(picture);
    EXPECT_TRUE(matchesReference(picture.value_or(QImage()),
                                 u"%1-%2"_s.arg(QLatin1StringView(look.name)).arg(scale)));
}

INSTANTIATE_TEST_SUITE_P(
    Annotations, LookTest,
    testing::Combine(
        testing::Values(
            Look{"arrows", &arrows}, Look{"outlines", &outlines}, Look{"numbers", &numbers},
            Look{"freehand", &freehand}, Look{"texts", &texts}, Look{"blur", &blur},
            Look{"circle", [] { return magnifier(MagnifierShape::Circle, 4); }},
            Look{"roundedRect", [] { return magnifier(MagnifierShape::RoundedRect, 3); }},
            Look{"rectangle", [] { return magnifier(MagnifierShape::Rectangle, 2); }}),
        testing::Values(1, 2, 3)),
    [](const auto &instance) {
        return std::get<0>(instance.param).name
            + testing::PrintToString(std::get<1>(instance.param));
    });

class FrameLookTest : public testing::TestWithParam<int> {
protected:
    void SetUp() override { QGuiApplication::setFont(QFont(u"DejaVu Sans"_s)); }
};

TEST_P(FrameLookTest, isThatOfItsReference)
{
    const int scale = GetParam();
    const QImage base = screenAt(scale);
    for (const FrameBackgroundStyle style :
         {FrameBackgroundStyle::DominantColor, FrameBackgroundStyle::Ocean,
          FrameBackgroundStyle::Light}) {
        const auto framed =
            AnnotationRenderer::renderFramedImage(base, u"Text Editor"_s, style, scale);
        ASSERT_TRUE(framed);
        const QString name = rowOf(frameBackgroundStyles, style).rawValue;
        EXPECT_TRUE(
            matchesReference(framed.value_or(QImage()), u"frame-%1-%2"_s.arg(name).arg(scale)));
    }
}

INSTANTIATE_TEST_SUITE_P(Scales, FrameLookTest, testing::Values(1, 2, 3));

} // namespace
} // namespace lumacap::tests
