#include "BusyFrame.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <random>
#include <vector>

namespace lumacap::bench {

namespace {

using Random = std::minstd_rand;

double unit(Random &random)
{
    return static_cast<double>(random()) / static_cast<double>(Random::max());
}

int below(Random &random, int limit)
{
    return static_cast<int>(unit(random) * 0.999999 * limit);
}

/// One soft shape of the picture: a wave across it with a direction, a length and a weight a
/// channel.
struct Wave {
    double x;
    double y;
    double phase;
    std::array<double, 3> weights;
};

std::vector<Wave> waves(Random &random)
{
    std::vector<Wave> all;
    for (int octave = 0; octave < 7; ++octave) {
        const double frequency = 0.0015 * std::pow(2.3, octave);
        const double angle = unit(random) * 6.283;
        all.push_back(
            {.x = frequency * std::cos(angle),
             .y = frequency * std::sin(angle),
             .phase = unit(random) * 6.283,
             .weights = {unit(random) * 40 / (1 + octave), unit(random) * 40 / (1 + octave),
                         unit(random) * 40 / (1 + octave)}});
    }
    return all;
}

void paintPhotograph(QImage &image, QRect area, unsigned seed)
{
    Random random{seed};
    const std::vector<Wave> shapes = waves(random);
    std::normal_distribution<double> grain{0, 1.5};
    for (int y = area.top(); y < area.top() + area.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = area.left(); x < area.left() + area.width(); ++x) {
            std::array<double, 3> colour{120, 110, 100};
            for (const Wave &wave : shapes) {
                const double height = std::sin(x * wave.x + y * wave.y + wave.phase);
                for (std::size_t channel = 0; channel < 3; ++channel)
                    colour[channel] += wave.weights[channel] * height;
            }
            std::array<int, 3> level{};
            for (std::size_t channel = 0; channel < 3; ++channel)
                level[channel] = std::clamp(
                    static_cast<int>(std::lround(colour[channel] + grain(random))), 0, 255);
            row[x] = qRgb(level[0], level[1], level[2]);
        }
    }
}

/// Letters of a made-up script: smooth strokes, so that the picture needs no font.
std::vector<QPainterPath> alphabet(Random &random)
{
    std::vector<QPainterPath> letters;
    for (int letter = 0; letter < 60; ++letter) {
        QPainterPath path;
        for (int stroke = 0; stroke < 2 + letter % 2; ++stroke) {
            path.moveTo(1 + below(random, 8), 3 + below(random, 12));
            path.quadTo(1 + below(random, 8), 3 + below(random, 12), 1 + below(random, 8),
                        3 + below(random, 12));
        }
        letters.push_back(path);
    }
    return letters;
}

void paintText(QPainter &painter, QRect area, QColor paper, const std::vector<QColor> &inks,
               unsigned seed)
{
    Random random{seed};
    const std::vector<QPainterPath> letters = alphabet(random);
    painter.fillRect(area, paper);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int y = area.top() + 12; y + 22 < area.bottom(); y += 22) {
        const int indent = 12 + 24 * below(random, 4);
        const int end = area.left() + area.width() * (30 + below(random, 65)) / 100;
        for (int x = area.left() + indent; x < end;) {
            painter.setPen(
                QPen(inks[static_cast<std::size_t>(below(random, int(inks.size())))], 1.3));
            for (int rest = 2 + below(random, 8); rest > 0 && x < end; --rest, x += 10) {
                const auto letter =
                    static_cast<std::size_t>(60 * unit(random) * unit(random) * 0.999);
                painter.save();
                painter.translate(x, y);
                painter.drawPath(letters[letter]);
                painter.restore();
            }
            x += 10;
        }
    }
}

/// From blue at the top left to pink at the bottom right. Pixel by pixel: Qt has threads of its own
/// paint gradients (and translucent shapes), which the thread sanitizer cannot see into.
void paintSky(QImage &image, QRect area)
{
    for (int y = 0; y < area.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(area.top() + y)) + area.left();
        for (int x = 0; x < area.width(); ++x) {
            const double way =
                (static_cast<double>(x) / area.width() + static_cast<double>(y) / area.height())
                / 2;
            row[x] = qRgb(static_cast<int>(40 + 150 * way), static_cast<int>(60 + 70 * way),
                          static_cast<int>(110 + 40 * way));
        }
    }
}

void paintPanels(QPainter &painter, QRect area)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(150, 150, 160), 1));
    painter.setBrush(QColor(246, 246, 248));
    const int step = std::max(40, area.height() / 4);
    for (int y = area.top() + 20; y + step - 20 < area.bottom(); y += step)
        painter.drawRoundedRect(area.left() + 20, y, area.width() - 40, step - 40, 12, 12);
}

QImage emptyFrame(QSize size)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    return image;
}

std::vector<QColor> editorInks()
{
    return {QColor(212, 212, 212), QColor(86, 156, 214), QColor(206, 145, 120),
            QColor(106, 153, 85)};
}

} // namespace

QImage busyFrame(QSize size)
{
    QImage image = emptyFrame(size);
    const int column = size.width() * 2 / 5;
    const int middle = size.height() / 2;
    paintPhotograph(image, QRect(0, 0, column, size.height()), 7);
    const QRect rest(2 * column, 0, size.width() - 2 * column, size.height());
    paintSky(image, rest);
    QPainter painter(&image);
    paintText(painter, QRect(column, 0, column, middle), Qt::white, {QColor(34, 34, 34)}, 11);
    paintText(painter, QRect(column, middle, column, size.height() - middle), QColor(30, 30, 30),
              editorInks(), 13);
    paintPanels(painter, rest);
    return image;
}

QImage textFrame(QSize size)
{
    QImage image = emptyFrame(size);
    QPainter painter(&image);
    const int half = size.width() / 2;
    paintText(painter, QRect(0, 0, half, size.height()), Qt::white, {QColor(34, 34, 34)}, 17);
    paintText(painter, QRect(half, 0, size.width() - half, size.height()), QColor(30, 30, 30),
              editorInks(), 19);
    return image;
}

QImage photographFrame(QSize size)
{
    QImage image = emptyFrame(size);
    paintPhotograph(image, QRect(QPoint(0, 0), size), 23);
    return image;
}

} // namespace lumacap::bench
