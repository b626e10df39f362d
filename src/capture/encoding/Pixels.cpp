#include "capture/encoding/Pixels.h"

#include <QtEndian>

#include <algorithm>
#include <cstring>

namespace lumacap {

namespace {

quint32 colourOf(QRgb pixel)
{
    return static_cast<quint32>(qRed(pixel)) | static_cast<quint32>(qGreen(pixel)) << 8
        | static_cast<quint32>(qBlue(pixel)) << 16;
}

void store(quint32 value, uchar *bytes)
{
    qToLittleEndian(value, bytes);
}

} // namespace

QImage premultipliedPixels(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

std::span<const QRgb> pixelRow(const QImage &image, int row)
{
    return {reinterpret_cast<const QRgb *>(image.constScanLine(row)),
            static_cast<std::size_t>(image.width())};
}

bool isOpaqueRow(std::span<const QRgb> row)
{
    QRgb common = 0xffffffff;
    for (const QRgb pixel : row)
        common &= pixel;
    return common >= 0xff000000;
}

bool isOpaque(const QImage &premultiplied)
{
    for (int row = 0; row < premultiplied.height(); ++row) {
        if (!isOpaqueRow(pixelRow(premultiplied, row)))
            return false;
    }
    return true;
}

void packRgb(std::span<const QRgb> row, std::span<uchar> rgb)
{
    // Four pixels are three words: a third of the stores that a byte at a time takes.
    const std::size_t quads = row.size() / 4;
    const QRgb *from = row.data();
    uchar *to = rgb.data();
    for (std::size_t quad = 0; quad < quads; ++quad, from += 4, to += 12) {
        const quint32 first = colourOf(from[0]);
        const quint32 second = colourOf(from[1]);
        const quint32 third = colourOf(from[2]);
        const quint32 fourth = colourOf(from[3]);
        store(first | second << 24, to);
        store(second >> 8 | third << 16, to + 4);
        store(third >> 16 | fourth << 8, to + 8);
    }
    for (std::size_t rest = quads * 4; rest < row.size(); ++rest, ++from, to += 3) {
        to[0] = static_cast<uchar>(qRed(*from));
        to[1] = static_cast<uchar>(qGreen(*from));
        to[2] = static_cast<uchar>(qBlue(*from));
    }
}

void packRgba(const QImage &premultiplied, int row, std::span<uchar> rgba)
{
    const QImage line(premultiplied.constScanLine(row), premultiplied.width(), 1,
                      premultiplied.bytesPerLine(), premultiplied.format());
    const QImage converted = line.convertToFormat(QImage::Format_RGBA8888);
    std::memcpy(rgba.data(), converted.constScanLine(0), rgba.size());
}

} // namespace lumacap
