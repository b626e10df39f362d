#pragma once

#include "platform/Result.h"

#include <QByteArray>
#include <QImage>

namespace lumacap {

/// `image` as a JPEG file of quality 90 with colour as sharp as brightness (4:4:4), since screens
/// hold coloured text. Translucent pixels are laid over white. Fails for a null image, for more
/// than 65500 pixels either way and where memory runs out.
Result<QByteArray> encodeJpeg(const QImage &image);

} // namespace lumacap
