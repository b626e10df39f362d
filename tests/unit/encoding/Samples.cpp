#include "Samples.h"

#include <algorithm>
#include <cstring>
#include <random>
#include <vector>

namespace lumacap::samples {

namespace {

using Random = std::minstd_rand;

int below(Random &random, int limit)
{
    return static_cast<int>(random() % static_cast<std::uint32_t>(limit));
}

QRgb colourAt(int x, int y, Content content, Random &random)
{
    switch (content) {
    case Content::Noise:
        return qRgb(below(random, 256), below(random, 256), below(random, 256));
    case Content::GrainyGradient:
        return qRgb((x + below(random, 4)) % 256, (y + below(random, 4)) % 256,
                    (x + y + below(random, 4)) / 2 % 256);
    case Content::Flat:
        return qRgb(12, 200, 99);
    case Content::Letters:
        return (x / 3 * 7 + y / 5 * 13) % 11 < 3 ? qRgb(30, 30, 30) : qRgb(255, 255, 255);
    }
    return 0;
}

} // namespace

QImage sample(QSize size, Content content, Alpha alpha, std::uint32_t seed)
{
    Random random{seed};
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < size.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const QRgb colour = colourAt(x, y, content, random);
            const int opacity = alpha == Alpha::Opaque ? 255 : (x * 5 + y * 3) % 256;
            row[x] = qPremultiply((colour & 0xffffff) | static_cast<QRgb>(opacity) << 24);
        }
    }
    return image;
}

QImage withWideRows(const QImage &image, int extraBytes)
{
    const qsizetype stride = image.width() * 4 + extraBytes;
    auto *bytes = new std::vector<uchar>(static_cast<std::size_t>(stride * image.height()), 0xa5);
    for (int y = 0; y < image.height(); ++y)
        std::memcpy(bytes->data() + y * stride, image.constScanLine(y),
                    static_cast<std::size_t>(image.width()) * 4);
    return {bytes->data(),  image.width(),
            image.height(), stride,
            image.format(), [](void *owned) { delete static_cast<std::vector<uchar> *>(owned); },
            bytes};
}

QByteArray storedPixels(const QImage &premultiplied, Alpha alpha)
{
    const bool opaque = alpha == Alpha::Opaque;
    QByteArray pixels;
    // Row by row: Qt hands larger pictures to threads that the thread sanitizer cannot see into.
    for (int y = 0; y < premultiplied.height(); ++y) {
        const QImage row =
            premultiplied.copy(0, y, premultiplied.width(), 1)
                .convertToFormat(opaque ? QImage::Format_RGB888 : QImage::Format_RGBA8888);
        pixels.append(reinterpret_cast<const char *>(row.constScanLine(0)),
                      qsizetype{row.width()} * (opaque ? 3 : 4));
    }
    return pixels;
}

} // namespace lumacap::samples
