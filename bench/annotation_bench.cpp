#include "BusyFrame.h"

#include "annotation/AnnotationRenderer.h"
#include "annotation/shapes/ArrowAnnotation.h"
#include "annotation/shapes/BlurAnnotation.h"
#include "annotation/shapes/EllipseAnnotation.h"
#include "annotation/shapes/FreehandAnnotation.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "graphics/CanvasPainting.h"

#include <QGuiApplication>
#include <QPainter>

#include <array>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

// What rendering the final picture and its frame takes, next to one plain copy of the picture in
// the same process. Read by bench/annotations, which makes the tables.

namespace {

using namespace lumacap;

using Annotations = std::vector<std::unique_ptr<Annotation>>;

struct ScreenKind {
    const char *name;
    QSize size;
};

constexpr std::array screens{ScreenKind{"4K", {3840, 2160}}, ScreenKind{"8K", {7680, 4320}}};

const QImage &frozenImage(QSize size)
{
    static std::vector<std::pair<QSize, QImage>> images;
    for (const auto &[known, image] : images) {
        if (known == size)
            return image;
    }
    return images
        .emplace_back(size,
                      bench::busyFrame(size).convertToFormat(QImage::Format_ARGB32_Premultiplied))
        .second;
}

Size points(QSize size)
{
    return {static_cast<double>(size.width()), static_cast<double>(size.height())};
}

/// Places of the usual size of a mark, strewn over a canvas.
class Places {
public:
    explicit Places(QSize canvas)
        : m_x{100, canvas.width() - 400.0}
        , m_y{100, canvas.height() - 300.0}
    {
    }

    Point<Canvas> point() { return {m_x(m_random), m_y(m_random)}; }
    Rect<Canvas> rect() { return {point(), {m_side(m_random) * 1.6, m_side(m_random)}}; }

private:
    std::mt19937 m_random{1};
    std::uniform_real_distribution<double> m_x;
    std::uniform_real_distribution<double> m_y;
    std::uniform_real_distribution<double> m_side{60, 140};
};

std::unique_ptr<Annotation> arrow(Places &places)
{
    const Rect<Canvas> rect = places.rect();
    return std::make_unique<ArrowAnnotation>(Qt::red, 4, rect.origin,
                                             Point<Canvas>{rect.maxX(), rect.maxY()});
}

std::unique_ptr<Annotation> rectangle(Places &places)
{
    return std::make_unique<RectAnnotation>(Qt::red, 4, places.rect());
}

std::unique_ptr<Annotation> ellipse(Places &places)
{
    return std::make_unique<EllipseAnnotation>(Qt::red, 4, places.rect());
}

std::unique_ptr<Annotation> numberedPoint(Places &places)
{
    return std::make_unique<NumberedPointAnnotation>(Qt::red, places.point(), 42);
}

std::unique_ptr<Annotation> freehand(Places &places)
{
    const Point<Canvas> start = places.point();
    std::vector<Point<Canvas>> way;
    way.reserve(60);
    for (int i = 0; i < 60; ++i)
        way.push_back({start.x + 4 * i, start.y + 40 * std::sin(i * 0.2)});
    return std::make_unique<FreehandAnnotation>(Qt::red, 4, std::move(way));
}

std::unique_ptr<Annotation> text(Places &places)
{
    return std::make_unique<TextAnnotation>(Qt::red, 4, places.point(),
                                            QStringLiteral("Here it goes wrong"), 16);
}

std::unique_ptr<Annotation> magnifier(Places &places)
{
    auto annotation = std::make_unique<MagnifierAnnotation>(Qt::red, 4, places.rect(), 2,
                                                            MagnifierShape::RoundedRect);
    annotation->autoPlaceLoupe({{0, 0}, {7680, 4320}});
    return annotation;
}

std::unique_ptr<Annotation> blur(Places &places)
{
    return std::make_unique<BlurAnnotation>(Qt::red, 4, places.rect());
}

struct Kind {
    const char *name;
    std::unique_ptr<Annotation> (*make)(Places &);
};

constexpr std::array kinds{Kind{"arrow", &arrow},         Kind{"rectangle", &rectangle},
                           Kind{"ellipse", &ellipse},     Kind{"numberedPoint", &numberedPoint},
                           Kind{"freehand", &freehand},   Kind{"text", &text},
                           Kind{"magnifier", &magnifier}, Kind{"blur", &blur}};

void copy(benchmark::State &state, QSize size)
{
    const QImage image = size == QSize(3840, 2160) || size == QSize(7680, 4320)
        ? frozenImage(size)
        : frozenImage({3840, 2160}).scaled(size);
    for (auto _ : state)
        benchmark::DoNotOptimize(image.copy());
}

void renderFinal(benchmark::State &state, QSize size, const Annotations &annotations)
{
    const QImage &frozen = frozenImage(size);
    for (auto _ : state) {
        benchmark::DoNotOptimize(AnnotationRenderer::renderFinalImage(
            frozen, std::nullopt, annotations, points(size), 1));
    }
}

void renderFramed(benchmark::State &state, QSize size, FrameBackgroundStyle style)
{
    const QImage &base = frozenImage(size);
    for (auto _ : state) {
        benchmark::DoNotOptimize(
            AnnotationRenderer::renderFramedImage(base, QStringLiteral("Editor"), style, 1));
    }
}

/// One mark of 1600 by 900 points alone, onto a picture that is there already.
void drawAlone(benchmark::State &state, const Annotation &annotation)
{
    const QSize size(3840, 2160);
    const QImage &frozen = frozenImage(size);
    QImage target = frozen.copy();
    QPainter painter(&target);
    painter.setTransform(canvasToPixels({0, 0}, 1, size.height()));
    for (auto _ : state)
        annotation.drawWithImage(painter, {{0, 0}, points(size)}, frozen, 1);
}

template <class... Arguments>
void add(const std::string &name, Arguments &&...arguments)
{
    benchmark::RegisterBenchmark(name.c_str(), std::forward<Arguments>(arguments)...)
        ->Unit(benchmark::kMillisecond)
        ->UseRealTime();
}

void addFinal(const ScreenKind &screen)
{
    const std::string prefix = std::string("final/") + screen.name;
    add(prefix + "/copy", &copy, screen.size);
    static const Annotations none;
    add(prefix + "/none/0",
        [screen](benchmark::State &state) { renderFinal(state, screen.size, none); });
    for (const Kind &kind : kinds) {
        for (const int count : {10, 1000}) {
            add(prefix + "/" + kind.name + "/" + std::to_string(count),
                [screen, kind, count](benchmark::State &state) {
                    Annotations annotations;
                    Places places(screen.size);
                    for (int i = 0; i < count; ++i)
                        annotations.push_back(kind.make(places));
                    renderFinal(state, screen.size, annotations);
                });
        }
    }
}

void addFramed(const ScreenKind &screen)
{
    const std::string prefix = std::string("framed/") + screen.name;
    add(prefix + "/copy", &copy, screen.size + QSize(120, 156));
    for (const auto &row : frameBackgroundStyles)
        add(prefix + "/" + row.rawValue.data(), &renderFramed, screen.size, row.value);
}

/// A hundred turns across the whole screen, which cross each other everywhere.
FreehandAnnotation scribble()
{
    std::mt19937 random(5);
    std::uniform_real_distribution<double> x(0, 3840);
    std::uniform_real_distribution<double> y(0, 2160);
    std::vector<Point<Canvas>> way(100);
    for (Point<Canvas> &point : way)
        point = {x(random), y(random)};
    return {Qt::red, 4, std::move(way)};
}

void addAlone()
{
    add("alone/scribble", [](benchmark::State &state) { drawAlone(state, scribble()); });
    add("alone/blur", [](benchmark::State &state) {
        drawAlone(state, BlurAnnotation(Qt::red, 4, {{500, 500}, {1600, 900}}));
    });
    for (const auto &row : magnifierShapes) {
        add(std::string("alone/loupe-") + row.rawValue.data(), [row](benchmark::State &state) {
            MagnifierAnnotation loupe(Qt::red, 4, {{100, 100}, {1600 / 1.5, 900 / 1.5}}, 2,
                                      row.value);
            loupe.loupeOrigin = {1300, 900};
            loupe.loupeSize = {1600, 900};
            drawAlone(state, loupe);
        });
    }
}

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    for (const ScreenKind &screen : screens) {
        addFinal(screen);
        addFramed(screen);
    }
    addAlone();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
