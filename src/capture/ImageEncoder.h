#pragma once

#include "platform/Result.h"
#include "preferences/storage/ImageFormat.h"

#include <QByteArray>

QT_BEGIN_NAMESPACE
class QImage;
QT_END_NAMESPACE

namespace lumacap {

/// The whole file of `image` in this format, in memory.
Result<QByteArray> encodeImage(const QImage &image, ImageFormat format);

} // namespace lumacap
