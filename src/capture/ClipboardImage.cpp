#include "capture/ClipboardImage.h"

#include "capture/ImageEncoder.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <array>
#include <utility>

namespace lumacap {

namespace {

QByteArray bmp(const QImage &image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.convertToFormat(QImage::Format_RGB888).save(&buffer, "BMP");
    return bytes;
}

QByteArray encoded(const QImage &image, ImageFormat format)
{
    return encodeImage(image, format).value_or(QByteArray());
}

} // namespace

ClipboardImage::ClipboardImage(QImage image)
    : m_image(std::move(image))
{
}

ClipboardImage::~ClipboardImage() = default;

QList<QByteArray> ClipboardImage::types() const
{
    return {"image/png", "image/jpeg", "image/bmp", "image/tiff", "application/x-qt-image"};
}

QByteArray ClipboardImage::bytes(const QByteArray &type)
{
    if (type == "image/png" || type == "application/x-qt-image")
        return png(); // Qt's own type travels between programs as a PNG too
    if (!m_made.contains(type))
        m_made.insert(type, made(type));
    return m_made.value(type);
}

void ClipboardImage::shrink()
{
    if (!png().isEmpty())
        m_made.clear();
}

QByteArray ClipboardImage::made(const QByteArray &type)
{
    if (type == "image/jpeg")
        return encoded(image(), ImageFormat::Jpeg);
    if (type == "image/tiff")
        return encoded(image(), ImageFormat::Tiff);
    return bmp(image());
}

QByteArray ClipboardImage::png()
{
    if (m_png.isEmpty()) {
        m_png = encoded(m_image, ImageFormat::Png);
        if (!m_png.isEmpty())
            m_image = QImage();
    }
    return m_png;
}

QImage ClipboardImage::image() const
{
    if (!m_image.isNull())
        return m_image;
    // The toolkit's limit is against what strangers send; these bytes are ours, whatever they
    // become.
    const int limit = QImageReader::allocationLimit();
    QImageReader::setAllocationLimit(0);
    const QImage image = QImage::fromData(m_png, "PNG");
    QImageReader::setAllocationLimit(limit);
    return image;
}

} // namespace lumacap
