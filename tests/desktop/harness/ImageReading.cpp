#include "harness/ImageReading.h"

#include <QFile>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// The command that writes the picture in `file` as a portable pixmap.
QStringList reader(ImageKind kind, const QString &file)
{
    switch (kind) {
    case ImageKind::Png:
        return {u"pngtopnm"_s, file};
    case ImageKind::Jpeg:
        return {u"djpeg"_s, u"-pnm"_s, u"-strict"_s, file};
    case ImageKind::Tiff:
        return {u"tifftopnm"_s, u"-byrow"_s, file};
    case ImageKind::Bmp:
        return {u"bmptopnm"_s, file};
    }
    throw std::logic_error("no such kind of image");
}

/// Takes a decimal number and the white space after it off the front of `rest`.
int takeNumber(QByteArrayView &rest)
{
    qsizetype digits = 0;
    while (digits < rest.size() && rest[digits] >= '0' && rest[digits] <= '9')
        ++digits;
    const int number = rest.first(digits).toInt();
    rest = rest.sliced(std::min(digits + 1, rest.size()));
    return number;
}

/// A binary portable pixmap or greymap of 255 levels.
QImage parsePixmap(const QByteArray &bytes)
{
    QByteArrayView rest(bytes);
    const bool isColour = rest.startsWith("P6\n");
    if (!isColour && !rest.startsWith("P5\n"))
        return {};
    rest = rest.sliced(3);
    const int width = takeNumber(rest);
    const int height = takeNumber(rest);
    const int levels = takeNumber(rest);
    const int rowBytes = width * (isColour ? 3 : 1);
    if (width <= 0 || levels != 255 || rest.size() != qsizetype{rowBytes} * height)
        return {};
    const QImage view(reinterpret_cast<const uchar *>(rest.data()), width, height, rowBytes,
                      isColour ? QImage::Format_RGB888 : QImage::Format_Grayscale8);
    return view.convertToFormat(QImage::Format_RGB32);
}

} // namespace

QImage readImage(TestDesktop &desktop, const QByteArray &bytes, ImageKind kind)
{
    QFile file(desktop.newLog(u"image"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("no room for an image");
    file.close();
    const auto answer = desktop.ask(reader(kind, file.fileName()));
    file.remove();
    return answer.ending == Ending{} ? parsePixmap(answer.output) : QImage();
}

ImageKind kindOfSuffix(const QString &suffix)
{
    const QString lower = suffix.toLower();
    if (lower == "png"_L1)
        return ImageKind::Png;
    return lower.startsWith("tif"_L1) ? ImageKind::Tiff : ImageKind::Jpeg;
}

QByteArray fileBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace lumacap::harness
