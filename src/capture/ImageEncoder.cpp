#include "capture/ImageEncoder.h"

#include "capture/encoding/JpegEncoder.h"
#include "capture/encoding/PngEncoder.h"
#include "capture/encoding/TiffEncoder.h"
#include "graphics/Fatal.h"

namespace lumacap {

Result<QByteArray> encodeImage(const QImage &image, ImageFormat format)
{
    switch (format) {
    case ImageFormat::Png:
        return encodePng(image);
    case ImageFormat::Jpeg:
        return encodeJpeg(image);
    case ImageFormat::Tiff:
        return encodeTiff(image);
    }
    fatal("an image format without an encoder");
}

} // namespace lumacap
