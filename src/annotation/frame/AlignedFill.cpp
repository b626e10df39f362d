#include "annotation/frame/AlignedFill.h"

#include "annotation/frame/MixedPixels.h"

#include <QRegion>

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

/// What a rectangle covers along one axis, in pixels.
struct Extent {
    double begin;
    double end;

    bool isEmpty() const { return !(begin < end); }
    int firstPixel() const { return static_cast<int>(begin); }
    int pastLastPixel() const { return static_cast<int>(std::ceil(end)); }
    double shareOf(int pixel) const
    {
        return std::min<double>(pixel + 1, end) - std::max<double>(pixel, begin);
    }
};

Extent clipped(double begin, double end, int length)
{
    return {.begin = std::max(begin, 0.0), .end = std::min<double>(end, length)};
}

void fillRow(QRgb *row, const Extent &columns, QRgb color, double alpha)
{
    const int first = columns.firstPixel();
    const int last = columns.pastLastPixel() - 1;
    row[first] = mixed(row[first], color, weightOf(alpha * columns.shareOf(first)));
    if (last == first)
        return;
    const std::uint32_t weight = weightOf(alpha); // of the pixels that are covered from end to end
    if (weight == wholeWeight) {
        std::fill(row + first + 1, row + last, color);
    } else {
        for (int x = first + 1; x < last; ++x)
            row[x] = mixed(row[x], color, weight);
    }
    row[last] = mixed(row[last], color, weightOf(alpha * columns.shareOf(last)));
}

} // namespace

AlignedFill::AlignedFill(QImage &picture, double scale, const QRect &hidden)
    : m_picture{picture}
    , m_scale{scale}
    , m_hidden{hidden}
{
}

void AlignedFill::fillEverything(const Rgb &color)
{
    const QRgb pixel = toQColor(color).rgba();
    for (const QRect &part : QRegion(m_picture.rect()).subtracted(m_hidden)) {
        for (int y = part.y(); y < part.y() + part.height(); ++y) {
            auto *row = reinterpret_cast<QRgb *>(m_picture.scanLine(y));
            std::fill_n(row + part.x(), part.width(), pixel);
        }
    }
}

void AlignedFill::fill(const Rect<Canvas> &rect, const Rgb &color, double alpha)
{
    const int height = m_picture.height();
    const Extent columns = clipped(rect.minX() * m_scale, rect.maxX() * m_scale, m_picture.width());
    const Extent rows =
        clipped(height - rect.maxY() * m_scale, height - rect.minY() * m_scale, height);
    if (columns.isEmpty() || rows.isEmpty())
        return;
    const QRect touched(QPoint(columns.firstPixel(), rows.firstPixel()),
                        QPoint(columns.pastLastPixel() - 1, rows.pastLastPixel() - 1));
    if (m_hidden.contains(touched))
        return;
    const QRgb pixel = toQColor(color).rgba();
    for (int y = touched.top(); y <= touched.bottom(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(m_picture.scanLine(y));
        fillRow(row, columns, pixel, alpha * rows.shareOf(y));
    }
}

} // namespace lumacap
