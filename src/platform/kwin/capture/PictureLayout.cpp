#include "platform/kwin/capture/PictureLayout.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

// No screen is larger, and nothing of ours counts further.
constexpr qsizetype longestSide = 32'767;
constexpr qsizetype mostBytes = qsizetype{1} << 30;
constexpr qsizetype wordBytes = 4; // the toolkit's rows, which KWin sends, are whole words

constexpr std::uint32_t highByte = 0xff000000;
constexpr std::uint32_t highBits = 0xc0000000;

/// KWin numbers its formats as the toolkit does. What is behind a screen nobody sees: each format
/// that knows transparency is taken for its opaque sibling.
struct FormatRow {
    QImage::Format sent;
    PixelFormat pixels;
};

constexpr std::array formatRows{
    FormatRow{QImage::Format_RGB32, {QImage::Format_RGB32, 32, highByte}},
    FormatRow{QImage::Format_ARGB32, {QImage::Format_RGB32, 32, highByte}},
    FormatRow{QImage::Format_ARGB32_Premultiplied, {QImage::Format_RGB32, 32, highByte}},
    FormatRow{QImage::Format_RGBX8888, {QImage::Format_RGBX8888, 32, highByte}},
    FormatRow{QImage::Format_RGBA8888, {QImage::Format_RGBX8888, 32, highByte}},
    FormatRow{QImage::Format_RGBA8888_Premultiplied, {QImage::Format_RGBX8888, 32, highByte}},
    FormatRow{QImage::Format_RGB30, {QImage::Format_RGB30, 32, highBits}},
    FormatRow{QImage::Format_A2RGB30_Premultiplied, {QImage::Format_RGB30, 32, highBits}},
    FormatRow{QImage::Format_BGR30, {QImage::Format_BGR30, 32, highBits}},
    FormatRow{QImage::Format_A2BGR30_Premultiplied, {QImage::Format_BGR30, 32, highBits}},
    FormatRow{QImage::Format_RGB16, {QImage::Format_RGB16, 16, 0}},
    FormatRow{QImage::Format_RGB888, {QImage::Format_RGB888, 24, 0}},
    FormatRow{QImage::Format_BGR888, {QImage::Format_BGR888, 24, 0}},
    FormatRow{QImage::Format_RGBX64, {QImage::Format_RGBX64, 64, 0}},
    FormatRow{QImage::Format_RGBA64, {QImage::Format_RGBX64, 64, 0}},
    FormatRow{QImage::Format_RGBA64_Premultiplied, {QImage::Format_RGBX64, 64, 0}},
};

/// Less than 0 where the reply has no such number.
qsizetype number(const QVariantMap &reply, const QString &key)
{
    bool isNumber = false;
    const qlonglong value = reply.value(key).toLongLong(&isNumber);
    return isNumber ? value : -1;
}

bool isSide(qsizetype length)
{
    return length > 0 && length <= longestSide;
}

} // namespace

Result<PictureLayout> pictureLayout(const QVariantMap &reply)
{
    if (reply.value(u"type"_s).toString() != u"raw"_s)
        return failure(u"KWin sent a picture of an unknown kind"_s);
    const auto *const row =
        std::ranges::find(formatRows, number(reply, u"format"_s),
                          [](const FormatRow &candidate) { return qsizetype{candidate.sent}; });
    if (row == formatRows.end())
        return failure(u"KWin's pixels are of an unknown format"_s);
    const qsizetype width = number(reply, u"width"_s);
    const qsizetype height = number(reply, u"height"_s);
    const qsizetype stride = number(reply, u"stride"_s);
    if (!isSide(width) || !isSide(height) || stride % wordBytes != 0
        || stride < (width * row->pixels.bitsPerPixel + 7) / 8 || stride > mostBytes / height)
        return failure(u"KWin sent a picture of no size that a screen can have"_s);
    return PictureLayout{{static_cast<int>(width), static_cast<int>(height)}, stride, row->pixels};
}

} // namespace lumacap::kwin
