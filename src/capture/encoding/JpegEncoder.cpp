#include "capture/encoding/JpegEncoder.h"

#include "capture/encoding/Pixels.h"

#include <array>
#include <csetjmp>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <vector>

#include <jpeglib.h>

namespace lumacap {

using namespace Qt::StringLiterals;

namespace {

constexpr int quality = 90;

/// What one compression needs, plain data throughout: the library leaves a failed call by a jump,
/// which must not pass over anything with a destructor.
struct Compression {
    jpeg_compress_struct library;
    jpeg_error_mgr errors;
    std::jmp_buf onError;
    std::array<char, JMSG_LENGTH_MAX> message;
    unsigned char *file;
    unsigned long fileSize;
};

[[noreturn]] void leave(j_common_ptr library)
{
    auto *compression = static_cast<Compression *>(library->client_data);
    compression->errors.format_message(library, compression->message.data());
    std::longjmp(compression->onError, 1);
}

void stayQuiet(j_common_ptr) { }

/// The picture's rows as the library reads them: four bytes a pixel, the fourth unused.
class OpaqueRows {
public:
    explicit OpaqueRows(const QImage &premultiplied)
        : m_image(premultiplied)
        , m_overWhite(isOpaque(premultiplied) ? 0 : static_cast<std::size_t>(premultiplied.width()))
    {
    }

    const QRgb *row(int index)
    {
        const std::span<const QRgb> pixels = pixelRow(m_image, index);
        if (m_overWhite.empty())
            return pixels.data();
        for (std::size_t at = 0; at < pixels.size(); ++at) {
            const QRgb white = 0xff - static_cast<QRgb>(qAlpha(pixels[at]));
            m_overWhite[at] = pixels[at] + white * 0x010101;
        }
        return m_overWhite.data();
    }

private:
    const QImage &m_image;
    std::vector<QRgb> m_overWhite;
};

void configure(jpeg_compress_struct &library, const QImage &image)
{
    library.image_width = static_cast<JDIMENSION>(image.width());
    library.image_height = static_cast<JDIMENSION>(image.height());
    library.input_components = 4;
    library.in_color_space = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? JCS_EXT_BGRX : JCS_EXT_XRGB;
    jpeg_set_defaults(&library);
    jpeg_set_quality(&library, quality, TRUE);
    for (int component = 0; component < library.num_components; ++component) {
        library.comp_info[component].h_samp_factor = 1;
        library.comp_info[component].v_samp_factor = 1;
    }
}

/// Fills in `compression`; false leaves its message. No object of this function has a destructor.
bool compress(Compression &compression, const QImage &image, OpaqueRows &rows)
{
    jpeg_compress_struct &library = compression.library;
    library.err = jpeg_std_error(&compression.errors);
    library.client_data = &compression;
    compression.errors.error_exit = &leave;
    compression.errors.output_message = &stayQuiet;
    // NOLINTNEXTLINE(modernize-avoid-setjmp-longjmp,cert-err52-cpp)
    if (setjmp(compression.onError) != 0) {
        jpeg_destroy_compress(&library);
        return false;
    }
    jpeg_create_compress(&library);
    jpeg_mem_dest(&library, &compression.file, &compression.fileSize);
    configure(library, image);
    jpeg_start_compress(&library, TRUE);
    while (library.next_scanline < library.image_height) {
        const QRgb *pixels = rows.row(static_cast<int>(library.next_scanline));
        // The library reads through this pointer only.
        auto *row = reinterpret_cast<JSAMPROW>(const_cast<QRgb *>(pixels));
        jpeg_write_scanlines(&library, &row, 1);
    }
    jpeg_finish_compress(&library);
    jpeg_destroy_compress(&library);
    return true;
}

Result<QByteArray> encodePixels(const QImage &premultiplied)
{
    OpaqueRows rows(premultiplied);
    Compression compression{};
    const bool done = compress(compression, premultiplied, rows);
    const std::unique_ptr<unsigned char, decltype(&std::free)> file(compression.file, &std::free);
    if (!done)
        return failure(u"the image cannot be encoded as JPEG: %1"_s.arg(
            QString::fromLocal8Bit(compression.message.data())));
    return QByteArray(reinterpret_cast<const char *>(file.get()),
                      static_cast<qsizetype>(compression.fileSize));
}

} // namespace

Result<QByteArray> encodeJpeg(const QImage &image)
{
    constexpr int longestSide = JPEG_MAX_DIMENSION;
    if (image.isNull())
        return failure(u"there is no image to encode"_s);
    if (image.width() > longestSide || image.height() > longestSide)
        return failure(
            u"the image is larger than the %1 pixels a side of a JPEG file"_s.arg(longestSide));
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
