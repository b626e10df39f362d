#include "platform/portal/DisplayCut.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <optional>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

/// How far a length may be from the one reckoned: desktops round the sizes of scaled displays to
/// their whole units, and the picture's to whole pixels.
constexpr double onePixel = 1;

const auto otherScale =
    u"the desktop's portal gives the picture of this display at another scale than its own"_s;

bool isNear(double length, double reckoned)
{
    return std::abs(length - reckoned) <= onePixel;
}

double scaleOf(const wayland::Output &output)
{
    return static_cast<double>(output.pixels.width()) / std::max(1, output.frame.width());
}

QRect unionOf(const std::vector<wayland::Output> &outputs)
{
    QRect all;
    for (const wayland::Output &output : outputs)
        all |= output.frame;
    return all;
}

bool hasScale(QSize picture, QSize all, double scale)
{
    return isNear(picture.width(), all.width() * scale)
        && isNear(picture.height(), all.height() * scale);
}

/// By how much a picture of all outputs was scaled, told by its size: one of the outputs' scales.
std::optional<double> scaleOfPicture(QSize picture, const std::vector<wayland::Output> &outputs,
                                     double preferred)
{
    const QSize all = unionOf(outputs).size();
    if (hasScale(picture, all, preferred))
        return preferred;
    for (const wayland::Output &output : outputs) {
        if (hasScale(picture, all, scaleOf(output)))
            return scaleOf(output);
    }
    return std::nullopt;
}

bool isRepeated(const QImage &picture, const QRect &block)
{
    const auto *const first =
        reinterpret_cast<const QRgb *>(picture.constScanLine(block.y())) + block.x();
    for (int y = block.top(); y <= block.bottom(); ++y) {
        const auto *const row =
            reinterpret_cast<const QRgb *>(picture.constScanLine(y)) + block.x();
        if (!std::all_of(row, row + block.width(), [first](QRgb pixel) { return pixel == *first; }))
            return false;
    }
    return true;
}

/// Takes one of each block of equal pixels; nothing where one is of several colours.
std::optional<QImage> undoEnlargement(const QImage &enlarged, int times)
{
    QImage own(enlarged.size() / times, enlarged.format());
    if (own.isNull())
        return std::nullopt;
    for (int y = 0; y < own.height(); ++y) {
        auto *const row = reinterpret_cast<QRgb *>(own.scanLine(y));
        for (int x = 0; x < own.width(); ++x) {
            const QRect block(x * times, y * times, times, times);
            if (!isRepeated(enlarged, block))
                return std::nullopt;
            row[x] = enlarged.pixel(block.topLeft());
        }
    }
    return own;
}

} // namespace

Result<DisplayCut> cutOf(DisplayId display, const std::vector<wayland::Output> &outputs,
                         QSize picture)
{
    const auto output = std::ranges::find(outputs, display, &wayland::Output::id);
    if (output == outputs.end())
        return failure(u"the display has been unplugged"_s);
    if (outputs.size() == 1 && picture == output->pixels)
        return DisplayCut{QRect(QPoint(), picture)};
    const double own = scaleOf(*output);
    const auto scale = scaleOfPicture(picture, outputs, own);
    if (!scale)
        return failure(u"the desktop's portal gives a picture that is not one of the screens"_s);
    const int enlargement = static_cast<int>(std::lround(*scale / own));
    if (enlargement < 1
        || !isNear(output->pixels.width() * enlargement, output->frame.width() * *scale))
        return failure(otherScale);
    const QPoint place = output->frame.topLeft() - unionOf(outputs).topLeft();
    const QPoint origin(static_cast<int>(std::lround(place.x() * *scale)),
                        static_cast<int>(std::lround(place.y() * *scale)));
    const QRect area(origin, output->pixels * enlargement);
    if (!QRect(QPoint(), picture).contains(area))
        return failure(otherScale);
    return DisplayCut{area, enlargement};
}

Result<QImage> cutOut(const QImage &picture, const DisplayCut &cut)
{
    QImage image =
        cut.area == picture.rect() ? picture : picture.copy(cut.area); // converted in place below
    image.convertTo(QImage::Format_RGB32);
    if (image.isNull())
        return failure(u"there is no memory for the picture"_s);
    if (cut.enlargement > 1) {
        auto own = undoEnlargement(image, cut.enlargement);
        if (!own)
            return failure(otherScale);
        image = std::move(*own);
    }
    // The same bytes: 32 bits of which the upper eight are set.
    image.reinterpretAsFormat(QImage::Format_ARGB32_Premultiplied);
    return image;
}

} // namespace lumacap::portal
