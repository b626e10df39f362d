#include "harness/Pictures.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <random>

namespace lumacap::harness {

namespace {

const QRgb *row(const QImage &image, int y)
{
    return reinterpret_cast<const QRgb *>(image.constScanLine(y));
}

QRgb *row(QImage &image, int y)
{
    return reinterpret_cast<QRgb *>(image.scanLine(y));
}

/// Premultiplied `above` over the opaque `below`, rounded to the nearest level.
QRgb over(QRgb above, QRgb below)
{
    const int shown = 255 - qAlpha(above);
    const auto channel = [shown](int upper, int lower) {
        return std::min(255, upper + (lower * shown + 127) / 255);
    };
    return qRgb(channel(qRed(above), qRed(below)), channel(qGreen(above), qGreen(below)),
                channel(qBlue(above), qBlue(below)));
}

std::array<int, 3> distances(QRgb one, QRgb other)
{
    return {std::abs(qRed(one) - qRed(other)), std::abs(qGreen(one) - qGreen(other)),
            std::abs(qBlue(one) - qBlue(other))};
}

/// Calls `visit` with both pixels of every place.
template <typename Visit>
void forEachPixel(const QImage &expected, const QImage &seen, Visit visit)
{
    const QImage left = expected.convertToFormat(QImage::Format_RGB32);
    const QImage right = seen.convertToFormat(QImage::Format_RGB32);
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x)
            visit(row(left, y)[x], row(right, y)[x]);
    }
}

} // namespace

QImage noisePicture(const QSize &size, std::uint32_t seed)
{
    QImage picture(size, QImage::Format_RGB32);
    std::mt19937 random(seed);
    for (int y = 0; y < size.height(); ++y)
        std::generate_n(row(picture, y), size.width(), [&random] {
            return 0xff000000U | (static_cast<std::uint32_t>(random()) >> 8U);
        });
    return picture;
}

QImage photographPicture(const QSize &size, std::uint32_t seed)
{
    QImage picture(size, QImage::Format_RGB32);
    const double phase = seed;
    const auto level = [](double wave) {
        return static_cast<int>(std::lround(127.5 + 120 * wave));
    };
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            row(picture, y)[x] =
                qRgb(level(std::sin(x / 151.0 + phase)), level(std::cos(y / 97.0 - phase)),
                     level(std::sin((x + y) / 211.0 + 2 * phase)));
    }
    return picture;
}

Cursor opaqueCursor()
{
    QImage image(24, 30, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    for (int y = 0; y < image.height(); ++y) {
        const int width = std::max(2, image.width() - y);
        for (int x = 0; x < width; ++x) // no two pixels alike, so that a shifted cursor is seen
            row(image, y)[x] = qRgb(200 + y, 10 * x, 5 + 8 * y);
    }
    return {image, {5, 7}};
}

Cursor translucentCursor()
{
    QImage image(32, 32, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            row(image, y)[x] = qPremultiply(qRgba(255 - 7 * x, 90, 8 * x, y * 255 / 31));
    }
    return {image, {16, 3}};
}

QImage expectedStill(const QImage &screen, const QRect &area, const Cursor &cursor,
                     const QPoint &pointer)
{
    QImage still = screen.copy(area);
    const QPoint corner = pointer - cursor.hotSpot - area.topLeft();
    const QRect covered = QRect(corner, cursor.image.size()) & still.rect();
    for (int y = covered.top(); y <= covered.bottom(); ++y) {
        for (int x = covered.left(); x <= covered.right(); ++x)
            row(still, y)[x] =
                over(row(cursor.image, y - corner.y())[x - corner.x()], row(still, y)[x]);
    }
    return still;
}

qsizetype differingPixels(const QImage &expected, const QImage &seen, int levels)
{
    if (expected.size() != seen.size())
        return qsizetype{expected.width()} * expected.height();
    qsizetype count = 0;
    forEachPixel(expected, seen, [&](QRgb one, QRgb other) {
        count += std::ranges::max(distances(one, other)) > levels ? 1 : 0;
    });
    return count;
}

double meanDistance(const QImage &expected, const QImage &seen)
{
    if (expected.size() != seen.size() || expected.isNull())
        return 255;
    std::uint64_t sum = 0;
    forEachPixel(expected, seen, [&](QRgb one, QRgb other) {
        for (const int distance : distances(one, other))
            sum += static_cast<std::uint64_t>(distance);
    });
    const double channels = 3.0 * expected.width() * expected.height();
    return static_cast<double>(sum) / channels;
}

} // namespace lumacap::harness
