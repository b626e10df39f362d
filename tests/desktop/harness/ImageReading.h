#pragma once

#include "harness/TestDesktop.h"

#include <QByteArray>
#include <QImage>

namespace lumacap::harness {

/// Kinds of image files that the tests read.
enum class ImageKind { Png, Jpeg, Tiff, Bmp };

/// The picture in `bytes`, read by the tools of netpbm and libjpeg, never by Qt, which may have
/// written it. Null when the tool complains. Format_RGB32.
QImage readImage(TestDesktop &desktop, const QByteArray &bytes, ImageKind kind);
/// The kind that a file's suffix tells, such as "png".
ImageKind kindOfSuffix(const QString &suffix);
/// The whole contents of a file, empty when there is none.
QByteArray fileBytes(const QString &path);

} // namespace lumacap::harness
