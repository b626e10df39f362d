#pragma once

#include "graphics/EnumTable.h"

#include <QLatin1StringView>
#include <QStringView>

#include <array>
#include <optional>

namespace lumacap {

/// The kinds of file a capture is written as, in the order the format picker lists them.
enum class ImageFormat { Png, Jpeg, Tiff };

struct ImageFormatRow {
    ImageFormat value;
    /// What is stored, and the extension of the file's name.
    QLatin1StringView rawValue;
};

inline constexpr std::array imageFormats{
    ImageFormatRow{ImageFormat::Png, QLatin1StringView("png")},
    ImageFormatRow{ImageFormat::Jpeg, QLatin1StringView("jpeg")},
    ImageFormatRow{ImageFormat::Tiff, QLatin1StringView("tiff")},
};

static_assert(rowsFollowTheEnum(imageFormats));

constexpr QLatin1StringView rawValue(ImageFormat format)
{
    return rowOf(imageFormats, format).rawValue;
}

/// The format of exactly this raw value, lower case; nothing for any other text.
inline std::optional<ImageFormat> imageFormat(QStringView rawValue)
{
    return caseOf(imageFormats, rawValue);
}

} // namespace lumacap
