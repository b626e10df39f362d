#include "annotation/shapes/Enlargement.h"

#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace lumacap {
namespace {

/// What a device pixel takes from its two neighbours in one direction of the source.
struct Tap {
    int source;
    int next;
    uint32_t weightOfNext; ///< of 256
};

/// The taps of the device pixels from `first` to `end`, over which lies the whole source of
/// `sourceLength` pixels, stretched from `low` to `high`. Its outermost pixels reach to the edges.
std::vector<Tap> taps(double low, double high, int sourceLength, int first, int end)
{
    std::vector<Tap> result;
    result.reserve(static_cast<std::size_t>(end - first));
    for (int pixel = first; pixel < end; ++pixel) {
        const double position = (pixel + 0.5 - low) / (high - low) * sourceLength - 0.5;
        const double inside = std::clamp(position, 0.0, sourceLength - 1.0);
        const int source = static_cast<int>(inside);
        result.push_back({source, std::min(source + 1, sourceLength - 1),
                          static_cast<uint32_t>(std::lround((inside - source) * 256))});
    }
    return result;
}

QRgb mixed(QRgb first, QRgb second, uint32_t weightOfSecond)
{
    constexpr uint32_t evenBytes = 0x00ff00ff;
    const uint32_t weightOfFirst = 256 - weightOfSecond;
    const uint32_t even =
        (first & evenBytes) * weightOfFirst + (second & evenBytes) * weightOfSecond;
    const uint32_t odd =
        (first >> 8 & evenBytes) * weightOfFirst + (second >> 8 & evenBytes) * weightOfSecond;
    return (even >> 8 & evenBytes) | (odd & ~evenBytes);
}

/// Rows of a picture stretched in their own direction, the last two of which are kept: rows that
/// follow each other ask for the same.
class StretchedRows {
public:
    StretchedRows(const QImage &picture, const std::vector<Tap> &columns)
        : m_picture{picture}
        , m_columns{columns}
    {
    }

    const QRgb *row(int source)
    {
        Row &kept = m_rows.at(static_cast<std::size_t>(source % 2));
        if (kept.source != source) {
            const auto *const from =
                reinterpret_cast<const QRgb *>(m_picture.constScanLine(source));
            kept.source = source;
            kept.pixels.resize(m_columns.size());
            std::ranges::transform(m_columns, kept.pixels.begin(), [from](const Tap &tap) {
                return mixed(from[tap.source], from[tap.next], tap.weightOfNext);
            });
        }
        return kept.pixels.data();
    }

private:
    struct Row {
        int source = -1;
        std::vector<QRgb> pixels;
    };

    const QImage &m_picture;
    const std::vector<Tap> &m_columns;
    std::array<Row, 2> m_rows;
};

QImage stretched(const QImage &picture, const std::vector<Tap> &columns,
                 const std::vector<Tap> &rows)
{
    QImage result(static_cast<int>(columns.size()), static_cast<int>(rows.size()),
                  picture.format());
    if (result.isNull())
        return result;
    StretchedRows stretchedRows(picture, columns);
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        const Tap &tap = rows.at(static_cast<std::size_t>(row));
        const QRgb *const upper = stretchedRows.row(tap.source);
        const QRgb *const lower = stretchedRows.row(tap.next);
        auto *const line = reinterpret_cast<QRgb *>(result.scanLine(row));
        for (std::size_t column = 0; column < columns.size(); ++column)
            line[column] = mixed(upper[column], lower[column], tap.weightOfNext);
    }
    return result;
}

} // namespace

void drawEnlarged(QPainter &context, const Rect<Canvas> &place, const QPainterPath &outline,
                  const QImage &picture)
{
    const QTransform toDevice = context.deviceTransform();
    const QRectF device = toDevice.mapRect(toQRectF(place));
    const QRect visible = (device & visiblePixels(context)).toAlignedRect();
    if (visible.isEmpty())
        return;
    const QImage enlarged = stretched(
        picture,
        taps(device.left(), device.right(), picture.width(), visible.left(), visible.right() + 1),
        taps(device.top(), device.bottom(), picture.height(), visible.top(), visible.bottom() + 1));
    QBrush brush(enlarged);
    brush.setTransform(QTransform::fromTranslate(visible.left(), visible.top()));
    const PainterState state(context);
    context.resetTransform();
    context.fillPath(toDevice.map(outline), brush);
}

} // namespace lumacap
