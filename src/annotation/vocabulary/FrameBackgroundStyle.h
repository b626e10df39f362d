#pragma once

#include "graphics/EnumTable.h"
#include "graphics/Rgb.h"

#include <QLatin1StringView>
#include <QString>

#include <optional>

namespace lumacap {

/// What lies behind a framed picture, in the order of the menus.
enum class FrameBackgroundStyle { DominantColor, DarkSlate, Light, Ocean, Sunset, Newspaper };

struct FrameBackgroundStyleRow {
    FrameBackgroundStyle value;
    /// What the settings store.
    QLatin1StringView rawValue;
    /// UTF-8.
    const char *label;
    /// The name of the symbol image in the menus.
    QLatin1StringView icon;
    /// From the top left to the bottom right; none where it is computed or where there is none.
    std::optional<GradientColors> gradient;
};

inline constexpr std::array frameBackgroundStyles{
    FrameBackgroundStyleRow{FrameBackgroundStyle::DominantColor, QLatin1StringView("dominantColor"),
                            "Auto", QLatin1StringView("wand.and.stars"), std::nullopt},
    FrameBackgroundStyleRow{FrameBackgroundStyle::DarkSlate, QLatin1StringView("darkSlate"),
                            "Sombre", QLatin1StringView("moon.fill"),
                            GradientColors{{0.12, 0.13, 0.16}, {0.22, 0.23, 0.27}}},
    FrameBackgroundStyleRow{FrameBackgroundStyle::Light, QLatin1StringView("light"), "Clair",
                            QLatin1StringView("sun.max.fill"),
                            GradientColors{{0.92, 0.93, 0.95}, {0.98, 0.98, 0.99}}},
    FrameBackgroundStyleRow{FrameBackgroundStyle::Ocean, QLatin1StringView("ocean"), "Océan",
                            QLatin1StringView("water.waves"),
                            GradientColors{{0.04, 0.12, 0.32}, {0.08, 0.28, 0.52}}},
    FrameBackgroundStyleRow{FrameBackgroundStyle::Sunset, QLatin1StringView("sunset"), "Couchant",
                            QLatin1StringView("sunset.fill"),
                            GradientColors{{0.5, 0.08, 0.22}, {0.88, 0.35, 0.12}}},
    FrameBackgroundStyleRow{FrameBackgroundStyle::Newspaper, QLatin1StringView("newspaper"),
                            "Journal", QLatin1StringView("newspaper.fill"), std::nullopt},
};
static_assert(rowsFollowTheEnum(frameBackgroundStyles));

inline QString label(FrameBackgroundStyle style)
{
    return QString::fromUtf8(rowOf(frameBackgroundStyles, style).label);
}

} // namespace lumacap
