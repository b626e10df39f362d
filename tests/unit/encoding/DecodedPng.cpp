#include "DecodedPng.h"

#include <QtEndian>

#include <cstdlib>
#include <cstring>
#include <vector>

#include <png.h>
#include <zlib.h>

namespace lumacap::samples {

namespace {

struct Chunk {
    QByteArray name;
    QByteArray content;
};

std::optional<std::vector<Chunk>> chunksOf(const QByteArray &file)
{
    const QByteArray signature("\x89PNG\r\n\x1a\n", 8);
    if (!file.startsWith(signature))
        return std::nullopt;
    std::vector<Chunk> chunks;
    for (qsizetype at = signature.size(); at < file.size();) {
        if (file.size() - at < 12)
            return std::nullopt;
        const qsizetype size = qFromBigEndian<quint32>(file.constData() + at);
        if (file.size() - at - 12 < size)
            return std::nullopt;
        const QByteArray summed = file.sliced(at + 4, size + 4);
        const auto sum =
            static_cast<quint32>(::crc32(0, reinterpret_cast<const Bytef *>(summed.constData()),
                                         static_cast<uInt>(summed.size())));
        if (sum != qFromBigEndian<quint32>(file.constData() + at + 8 + size))
            return std::nullopt;
        chunks.push_back({.name = summed.first(4), .content = summed.sliced(4)});
        at += size + 12;
    }
    return chunks;
}

std::optional<QByteArray> inflated(const QByteArray &stream, qsizetype size)
{
    QByteArray bytes(size, 0);
    z_stream inflater{};
    if (inflateInit(&inflater) != Z_OK)
        return std::nullopt;
    inflater.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(stream.constData()));
    inflater.avail_in = static_cast<uInt>(stream.size());
    inflater.next_out = reinterpret_cast<Bytef *>(bytes.data());
    inflater.avail_out = static_cast<uInt>(size);
    const bool whole = inflate(&inflater, Z_FINISH) == Z_STREAM_END && inflater.avail_in == 0
        && inflater.avail_out == 0;
    inflateEnd(&inflater);
    return whole ? std::optional(bytes) : std::nullopt;
}

int paeth(int left, int above, int corner)
{
    const int guess = left + above - corner;
    const int toLeft = std::abs(guess - left);
    const int toAbove = std::abs(guess - above);
    const int toCorner = std::abs(guess - corner);
    if (toLeft <= toAbove && toLeft <= toCorner)
        return left;
    return toAbove <= toCorner ? above : corner;
}

std::optional<QByteArray> unfiltered(const QByteArray &rows, QSize size, int channels)
{
    const qsizetype rowBytes = qsizetype{size.width()} * channels;
    QByteArray pixels(rowBytes * size.height(), 0);
    for (qsizetype y = 0; y < size.height(); ++y) {
        const auto filter = static_cast<uchar>(rows[y * (rowBytes + 1)]);
        for (qsizetype x = 0; x < rowBytes; ++x) {
            const auto pixel = [&](qsizetype column, qsizetype row) {
                return column < 0 || row < 0
                    ? 0
                    : int{static_cast<uchar>(pixels[row * rowBytes + column])};
            };
            const int left = pixel(x - channels, y);
            const int above = pixel(x, y - 1);
            const int guesses[] = {0, left, above, (left + above) / 2,
                                   paeth(left, above, pixel(x - channels, y - 1))};
            if (filter > 4)
                return std::nullopt;
            pixels[y * rowBytes + x] =
                static_cast<char>(rows[y * (rowBytes + 1) + 1 + x] + guesses[filter]);
        }
    }
    return pixels;
}

} // namespace

std::optional<DecodedPng> decodedByLibpng(const QByteArray &file)
{
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    const auto size = static_cast<png_size_t>(file.size());
    if (png_image_begin_read_from_memory(&image, file.constData(), size) == 0)
        return std::nullopt;
    const bool hasAlpha = (image.format & PNG_FORMAT_FLAG_ALPHA) != 0;
    image.format = hasAlpha ? PNG_FORMAT_RGBA : PNG_FORMAT_RGB;
    DecodedPng decoded{.size = QSize(static_cast<int>(image.width), static_cast<int>(image.height)),
                       .channels = hasAlpha ? 4 : 3,
                       .pixels = QByteArray(qsizetype{PNG_IMAGE_SIZE(image)}, 0)};
    const int read = png_image_finish_read(&image, nullptr, decoded.pixels.data(), 0, nullptr);
    const bool complained = image.warning_or_error != 0;
    png_image_free(&image);
    return read != 0 && !complained ? std::optional(decoded) : std::nullopt;
}

std::optional<DecodedPng> decodedByTheRules(const QByteArray &file)
{
    const std::optional<std::vector<Chunk>> chunks = chunksOf(file);
    if (!chunks || chunks->size() < 3 || chunks->front().name != "IHDR"
        || chunks->back().name != "IEND" || chunks->front().content.size() != 13)
        return std::nullopt;
    const QByteArray header = chunks->front().content;
    DecodedPng decoded;
    decoded.size = QSize(qFromBigEndian<qint32>(header.constData()),
                         qFromBigEndian<qint32>(header.constData() + 4));
    if (header[8] != 8 || (header[9] != 2 && header[9] != 6) || header.last(3) != QByteArray(3, 0))
        return std::nullopt;
    decoded.channels = header[9] == 2 ? 3 : 4;
    QByteArray stream;
    for (const Chunk &chunk : *chunks) {
        if (chunk.name == "IDAT")
            stream += chunk.content;
    }
    const qsizetype rowBytes = qsizetype{decoded.size.width()} * decoded.channels;
    const auto rows = inflated(stream, (rowBytes + 1) * decoded.size.height());
    if (!rows)
        return std::nullopt;
    const auto pixels = unfiltered(*rows, decoded.size, decoded.channels);
    if (!pixels)
        return std::nullopt;
    decoded.pixels = *pixels;
    return decoded;
}

QByteArrayList chunkNames(const QByteArray &file)
{
    QByteArrayList names;
    const auto chunks = chunksOf(file);
    for (const Chunk &chunk : chunks.value_or(std::vector<Chunk>()))
        names.append(chunk.name);
    return names;
}

} // namespace lumacap::samples
