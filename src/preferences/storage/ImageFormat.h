#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <array>
#include <cstddef>
#include <optional>

namespace lumacap {

/// The kinds of file a capture is written as, in the order the format picker lists them.
enum class ImageFormat { Png, Jpeg, Tiff };

struct ImageFormatRow {
    ImageFormat format;
    /// What is stored, and the extension of the file's name.
    QLatin1StringView rawValue;
};

inline constexpr std::array imageFormats{
    ImageFormatRow{ImageFormat::Png, QLatin1StringView("png")},
    ImageFormatRow{ImageFormat::Jpeg, QLatin1StringView("jpeg")},
    ImageFormatRow{ImageFormat::Tiff, QLatin1StringView("tiff")},
};

constexpr bool rowsFollowTheEnum(const decltype(imageFormats) &rows)
{
    for (std::size_t index = 0; index < rows.size(); ++index) {
        if (static_cast<std::size_t>(rows.at(index).format) != index)
            return false;
    }
    return true;
}
static_assert(rowsFollowTheEnum(imageFormats));

constexpr QLatin1StringView rawValue(ImageFormat format)
{
    return imageFormats.at(static_cast<std::size_t>(format)).rawValue;
}

/// The format of exactly this raw value, lower case; nothing for any other text.
inline std::optional<ImageFormat> imageFormat(QStringView rawValue)
{
    for (const ImageFormatRow &row : imageFormats) {
        if (rawValue == row.rawValue)
            return row.format;
    }
    return std::nullopt;
}

} // namespace lumacap
