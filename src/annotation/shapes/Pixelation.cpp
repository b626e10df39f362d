#include "annotation/shapes/Pixelation.h"

#include "graphics/CanvasPainting.h"
#include "graphics/PainterState.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace lumacap {
namespace {

constexpr double blocksAPoint = 0.125;

/// One direction of a pixelation: which source pixel each device pixel shows.
struct Samples {
    /// `low` … `high` is the whole stretch in device pixels, of which those with their centre on it
    /// and between `visibleFirst` and `visibleEnd` are looked up.
    Samples(double low, double high, double blocks, int sourceLength, int visibleFirst,
            int visibleEnd)
        : first{
              static_cast<int>(std::clamp<double>(std::ceil(low - 0.5), visibleFirst, visibleEnd))}
    {
        const auto end =
            static_cast<int>(std::clamp<double>(std::ceil(high - 0.5), visibleFirst, visibleEnd));
        sources.reserve(static_cast<std::size_t>(std::max(0, end - first)));
        for (int pixel = first; pixel < end; ++pixel) {
            const double position = (pixel + 0.5 - low) / (high - low);
            const double block = std::clamp(std::floor(position * blocks), 0.0, blocks - 1);
            const double source = std::floor((block + 0.5) * sourceLength / blocks);
            sources.push_back(static_cast<int>(std::clamp(source, 0.0, sourceLength - 1.0)));
        }
    }

    int count() const { return static_cast<int>(sources.size()); }

    int first; ///< the device pixel of the first sample
    std::vector<int> sources;
};

QImage sampled(const QImage &picture, const Samples &columns, const Samples &rows)
{
    QImage result(columns.count(), rows.count(), picture.format());
    if (result.isNull())
        return result;
    const auto bytes = static_cast<std::size_t>(result.bytesPerLine());
    const uchar *previous = nullptr;
    int previousSource = -1;
    for (int row = 0; row < rows.count(); ++row) {
        uchar *const line = result.scanLine(row);
        const int source = rows.sources.at(static_cast<std::size_t>(row));
        if (source == previousSource) {
            std::memcpy(line, previous, bytes);
        } else {
            const auto *const from = reinterpret_cast<const QRgb *>(picture.constScanLine(source));
            std::ranges::transform(columns.sources, reinterpret_cast<QRgb *>(line),
                                   [from](int column) { return from[column]; });
        }
        previous = line;
        previousSource = source;
    }
    return result;
}

} // namespace

double pixelationBlocks(double length)
{
    return std::max(1.0, std::floor(length * blocksAPoint));
}

void drawPixelated(QPainter &context, const Rect<Canvas> &area, const QImage &picture)
{
    const QRectF device = context.deviceTransform().mapRect(toQRectF(area));
    const QRect visible = visiblePixels(context).toAlignedRect();
    const Samples columns(device.left(), device.right(), pixelationBlocks(area.width()),
                          picture.width(), visible.left(), visible.right() + 1);
    const Samples rows(device.top(), device.bottom(), pixelationBlocks(area.height()),
                       picture.height(), visible.top(), visible.bottom() + 1);
    if (columns.count() == 0 || rows.count() == 0)
        return;
    const PainterState state(context);
    context.resetTransform();
    context.drawImage(columns.first, rows.first, sampled(picture, columns, rows));
}

} // namespace lumacap
