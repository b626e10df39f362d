#include "annotation/shapes/FrozenCrop.h"

#include "graphics/CanvasPainting.h"

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

/// The whole pixels that cover the stretch from `low` to `high`, of those from 0 to `length`.
struct PixelSpan {
    PixelSpan(double low, double high, int length)
        : first{static_cast<int>(std::clamp<double>(std::floor(low + pixelRounding), 0, length))}
        , end{static_cast<int>(std::clamp<double>(std::ceil(high - pixelRounding), 0, length))}
    {
    }

    int first;
    int end;
};

} // namespace

QImage cropUnder(const Rect<Canvas> &area, const QImage &frozenImage, double scaleFactor)
{
    if (!isFinite(area) || frozenImage.depth() != 32)
        return {};
    const double height = frozenImage.height();
    const PixelSpan columns(area.minX() * scaleFactor, area.maxX() * scaleFactor,
                            frozenImage.width());
    const PixelSpan rows(height - area.maxY() * scaleFactor, height - area.minY() * scaleFactor,
                         frozenImage.height());
    if (columns.first >= columns.end || rows.first >= rows.end)
        return {};
    return {frozenImage.constScanLine(rows.first) + qsizetype{4} * columns.first,
            columns.end - columns.first, rows.end - rows.first, frozenImage.bytesPerLine(),
            frozenImage.format()};
}

} // namespace lumacap
