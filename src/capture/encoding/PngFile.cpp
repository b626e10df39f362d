#include "capture/encoding/PngFile.h"

#include <QtEndian>

#include <limits>

#include <zlib.h>

namespace lumacap {

using namespace Qt::StringLiterals;

namespace {

constexpr QByteArrayView signature("\x89PNG\r\n\x1a\n");
/// Deflate with a window of 32 KiB.
constexpr QByteArrayView zlibHeader("\x78\x01");

QByteArray bigEndian(quint32 value)
{
    QByteArray bytes(sizeof value, Qt::Uninitialized);
    qToBigEndian(value, bytes.data());
    return bytes;
}

quint32 crc32Of(QByteArrayView bytes, quint32 before = 0)
{
    if (bytes.isEmpty())
        return before; // zlib takes no bytes at no address for a wish to start afresh
    return static_cast<quint32>(::crc32_z(before, reinterpret_cast<const Bytef *>(bytes.data()),
                                          static_cast<std::size_t>(bytes.size())));
}

void appendChunk(QByteArray &file, QByteArrayView name, QByteArrayView content)
{
    file.append(bigEndian(static_cast<quint32>(content.size())));
    file.append(name);
    file.append(content);
    file.append(bigEndian(crc32Of(content, crc32Of(name))));
}

/// An IDAT chunk that holds `before`, the strip and `after`; the strip's own checksum is used as it
/// is.
void appendStrip(QByteArray &file, QByteArrayView before, const PngStrip &strip,
                 QByteArrayView after)
{
    constexpr QByteArrayView name("IDAT");
    const qsizetype size = before.size() + strip.deflated.size() + after.size();
    file.append(bigEndian(static_cast<quint32>(size)));
    file.append(name);
    file.append(before);
    file.append(strip.deflated);
    file.append(after);
    const quint32 lead = crc32Of(before, crc32Of(name));
    const auto joined = static_cast<quint32>(
        ::crc32_combine(lead, strip.crc, static_cast<z_off_t>(strip.deflated.size())));
    file.append(bigEndian(crc32Of(after, joined)));
}

QByteArray imageHeader(QSize size, PngPixels pixels)
{
    constexpr char bitsAChannel = 8;
    constexpr char rgb = 2;
    constexpr char rgba = 6;
    QByteArray header = bigEndian(static_cast<quint32>(size.width()));
    header.append(bigEndian(static_cast<quint32>(size.height())));
    header.append(bitsAChannel);
    header.append(pixels == PngPixels::Rgb ? rgb : rgba);
    header.append("\0\0\0"_ba); // deflate, the five filters, not interlaced
    return header;
}

} // namespace

Result<QByteArray> joinedPngFile(QSize size, PngPixels pixels, std::span<const PngStrip> strips)
{
    constexpr qsizetype roomForTheRest = 128;
    constexpr qsizetype roomAStrip = 32;
    qsizetype room = roomForTheRest;
    uLong adler = ::adler32(0, nullptr, 0);
    for (const PngStrip &strip : strips) {
        if (strip.deflated.size() > std::numeric_limits<qint32>::max() - roomAStrip)
            return failure(u"the image is too large for a PNG file"_s);
        room += strip.deflated.size() + roomAStrip;
        adler = ::adler32_combine(adler, strip.adler, static_cast<z_off_t>(strip.filteredSize));
    }
    QByteArray file;
    file.reserve(room);
    file.append(signature);
    appendChunk(file, "IHDR", imageHeader(size, pixels));
    appendChunk(file, "sRGB", QByteArrayView("\0", 1)); // perceptual
    for (std::size_t index = 0; index < strips.size(); ++index) {
        const bool isLast = index + 1 == strips.size();
        appendStrip(file, index == 0 ? zlibHeader : QByteArrayView(), strips[index],
                    isLast ? bigEndian(static_cast<quint32>(adler)) : QByteArray());
    }
    appendChunk(file, "IEND", QByteArrayView());
    return file;
}

} // namespace lumacap
