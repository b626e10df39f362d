#include "capture/encoding/TiffEncoder.h"

#include "capture/encoding/Pixels.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <vector>

#include <tiffio.h>

namespace lumacap {

using namespace Qt::StringLiterals;

namespace {

/// A file in memory that the library writes into and reads back. The operations answer as the
/// system calls do, since no exception may pass through the library.
class MemoryFile {
public:
    /// Throws where there is no memory for `likelySize` bytes.
    explicit MemoryFile(qsizetype likelySize) { m_bytes.reserve(likelySize); }

    tmsize_t read(void *bytes, tmsize_t size)
    {
        const qsizetype left = std::max<qsizetype>(0, m_bytes.size() - m_position);
        const qsizetype given = std::min<qsizetype>(size, left);
        if (given > 0)
            std::memcpy(bytes, m_bytes.constData() + m_position, static_cast<std::size_t>(given));
        m_position += given;
        return given;
    }
    tmsize_t write(const void *bytes, tmsize_t size)
    {
        const qsizetype end = m_position + size;
        if (!growTo(end))
            return -1;
        std::memcpy(m_bytes.data() + m_position, bytes, static_cast<std::size_t>(size));
        m_position = end;
        return size;
    }
    toff_t seek(toff_t offset, int from)
    {
        if (from == SEEK_SET)
            m_position = 0;
        else if (from == SEEK_END)
            m_position = m_bytes.size();
        m_position += static_cast<qsizetype>(offset);
        return static_cast<toff_t>(m_position);
    }
    toff_t size() const { return static_cast<toff_t>(m_bytes.size()); }
    QByteArray takeBytes() { return std::move(m_bytes); }

private:
    bool growTo(qsizetype size)
    {
        try {
            if (size > m_bytes.size())
                m_bytes.resize(size);
            return true;
        } catch (const std::bad_alloc &) {
            return false;
        }
    }

    QByteArray m_bytes;
    qsizetype m_position = 0;
};

MemoryFile &memoryFile(thandle_t handle)
{
    return *static_cast<MemoryFile *>(handle);
}

int stayQuiet(TIFF *, void *, const char *, const char *, va_list)
{
    return 1;
}

using Tiff = std::unique_ptr<TIFF, decltype(&TIFFClose)>;

Tiff openTiff(MemoryFile &file)
{
    const std::unique_ptr<TIFFOpenOptions, decltype(&TIFFOpenOptionsFree)> options(
        TIFFOpenOptionsAlloc(), &TIFFOpenOptionsFree);
    TIFFOpenOptionsSetErrorHandlerExtR(options.get(), &stayQuiet, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(options.get(), &stayQuiet, nullptr);
    return {TIFFClientOpenExt(
                "memory", "w", &file,
                [](thandle_t handle, void *bytes, tmsize_t size) {
                    return memoryFile(handle).read(bytes, size);
                },
                [](thandle_t handle, void *bytes, tmsize_t size) {
                    return memoryFile(handle).write(bytes, size);
                },
                [](thandle_t handle, toff_t offset, int from) {
                    return memoryFile(handle).seek(offset, from);
                },
                [](thandle_t) { return 0; },
                [](thandle_t handle) { return memoryFile(handle).size(); },
                [](thandle_t, void **, toff_t *) { return 0; }, [](thandle_t, void *, toff_t) {},
                options.get()),
            &TIFFClose};
}

/// How the pixels are laid down in the file.
struct Layout {
    std::size_t bytesAPixel;
    std::size_t rowBytes;
    int rowsAStrip;
};

Layout layoutFor(const QImage &premultiplied)
{
    constexpr std::size_t bytesAStrip = 1UZ << 18;
    const std::size_t bytesAPixel = isOpaque(premultiplied) ? 3 : 4;
    const std::size_t rowBytes = bytesAPixel * static_cast<std::size_t>(premultiplied.width());
    return {.bytesAPixel = bytesAPixel,
            .rowBytes = rowBytes,
            .rowsAStrip =
                std::clamp(static_cast<int>(bytesAStrip / rowBytes), 1, premultiplied.height())};
}

bool describe(TIFF *tiff, QSize size, const Layout &layout)
{
    const auto set = [tiff](quint32 field, auto... value) {
        return TIFFSetField(tiff, field, value...) == 1;
    };
    // Uncompressed: LZW with a predictor takes 110 to 280 ms for a 4K screen, this takes 11 ms.
    const bool described = set(TIFFTAG_IMAGEWIDTH, size.width())
        && set(TIFFTAG_IMAGELENGTH, size.height()) && set(TIFFTAG_BITSPERSAMPLE, 8)
        && set(TIFFTAG_SAMPLESPERPIXEL, static_cast<int>(layout.bytesAPixel))
        && set(TIFFTAG_PHOTOMETRIC, PHOTOMETRIC_RGB)
        && set(TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG)
        && set(TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT)
        && set(TIFFTAG_COMPRESSION, COMPRESSION_NONE)
        && set(TIFFTAG_ROWSPERSTRIP, layout.rowsAStrip);
    if (!described || layout.bytesAPixel == 3)
        return described;
    const quint16 alpha = EXTRASAMPLE_UNASSALPHA;
    return set(TIFFTAG_EXTRASAMPLES, 1, &alpha);
}

bool writePixels(TIFF *tiff, const QImage &premultiplied, const Layout &layout)
{
    std::vector<uchar> strip(layout.rowBytes * static_cast<std::size_t>(layout.rowsAStrip));
    quint32 index = 0;
    for (int first = 0; first < premultiplied.height(); first += layout.rowsAStrip, ++index) {
        const int rows = std::min(layout.rowsAStrip, premultiplied.height() - first);
        std::span<uchar> rest(strip);
        for (int row = first; row < first + rows; ++row) {
            const std::span<uchar> packed = rest.first(layout.rowBytes);
            if (layout.bytesAPixel == 3)
                packRgb(pixelRow(premultiplied, row), packed);
            else
                packRgba(premultiplied, row, packed);
            rest = rest.subspan(layout.rowBytes);
        }
        const auto size = static_cast<tmsize_t>(strip.size() - rest.size());
        if (TIFFWriteEncodedStrip(tiff, index, strip.data(), size) != size)
            return false;
    }
    return true;
}

Result<QByteArray> encodePixels(const QImage &premultiplied)
{
    constexpr quint64 roomForTheRest = 1U << 16;
    const Layout layout = layoutFor(premultiplied);
    const quint64 size =
        layout.rowBytes * static_cast<quint64>(premultiplied.height()) + roomForTheRest;
    if (size > std::numeric_limits<quint32>::max())
        return failure(u"the image is larger than the 4 GiB of a TIFF file"_s);
    MemoryFile file(static_cast<qsizetype>(size));
    {
        const Tiff tiff = openTiff(file);
        if (!tiff || !describe(tiff.get(), premultiplied.size(), layout)
            || !writePixels(tiff.get(), premultiplied, layout)
            || TIFFWriteDirectory(tiff.get()) != 1)
            return failure(u"the image cannot be encoded as TIFF"_s);
    }
    return file.takeBytes();
}

} // namespace

Result<QByteArray> encodeTiff(const QImage &image)
{
    if (image.isNull())
        return failure(u"there is no image to encode"_s);
    try {
        const QImage pixels = premultipliedPixels(image);
        if (pixels.isNull())
            return failure(u"there is not enough memory for the image file"_s);
        return encodePixels(pixels);
    } catch (const std::bad_alloc &) {
        return failure(u"there is not enough memory for the image file"_s);
    }
}

} // namespace lumacap
