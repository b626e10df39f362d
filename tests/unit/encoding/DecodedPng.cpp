#include "DecodedPng.h"

#include <QtEndian>

#include <cstddef>
#include <vector>

#include <lodepng.h>
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

/// Whether `stream` is one zlib stream and nothing more.
bool isOneStream(const QByteArray &stream)
{
    z_stream inflater{};
    if (inflateInit(&inflater) != Z_OK)
        return false;
    inflater.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(stream.constData()));
    inflater.avail_in = static_cast<uInt>(stream.size());
    std::vector<Bytef> rows(1 << 16);
    int state = Z_OK;
    while (state == Z_OK) {
        inflater.next_out = rows.data();
        inflater.avail_out = static_cast<uInt>(rows.size());
        state = inflate(&inflater, Z_NO_FLUSH);
    }
    inflateEnd(&inflater);
    return state == Z_STREAM_END && inflater.avail_in == 0;
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

std::optional<DecodedPng> decodedByLodepng(const QByteArray &file)
{
    const auto *bytes = reinterpret_cast<const unsigned char *>(file.constData());
    const auto size = static_cast<std::size_t>(file.size());
    lodepng::State state;
    unsigned width = 0;
    unsigned height = 0;
    if (lodepng_inspect(&width, &height, &state, bytes, size) != 0)
        return std::nullopt;
    const LodePNGColorType colors = state.info_png.color.colortype;
    if ((colors != LCT_RGB && colors != LCT_RGBA) || state.info_png.color.bitdepth != 8)
        return std::nullopt;
    state.info_raw.colortype = colors;
    std::vector<unsigned char> pixels;
    if (lodepng::decode(pixels, width, height, state, bytes, size) != 0)
        return std::nullopt;
    return DecodedPng{.size = QSize(static_cast<int>(width), static_cast<int>(height)),
                      .channels = colors == LCT_RGBA ? 4 : 3,
                      .pixels = QByteArray(reinterpret_cast<const char *>(pixels.data()),
                                           static_cast<qsizetype>(pixels.size()))};
}

bool isWellFormed(const QByteArray &file)
{
    const auto chunks = chunksOf(file);
    if (!chunks || chunks->size() < 3 || chunks->front().name != "IHDR"
        || chunks->back().name != "IEND")
        return false;
    QByteArray stream;
    for (const Chunk &chunk : *chunks) {
        if (chunk.name == "IDAT")
            stream += chunk.content;
    }
    return isOneStream(stream);
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
