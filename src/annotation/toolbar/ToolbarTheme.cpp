#include "annotation/toolbar/ToolbarTheme.h"

#include "graphics/ColorMixing.h"

#include <QPalette>

namespace lumacap {
namespace {

constexpr int middleLightness = 128;
constexpr double towardsWhite = 0.45; // windows are a shade darker than menus and strips

} // namespace

ToolbarTheme themeOf(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Window);
    const bool isDark = window.lightness() < middleLightness;
    const QColor ground = isDark ? window : mixed(window, Qt::white, towardsWhite);
    return {.accent = palette.color(QPalette::Active, QPalette::Highlight),
            .onAccent = palette.color(QPalette::Active, QPalette::HighlightedText),
            .text = palette.color(QPalette::Active, QPalette::WindowText),
            .ground = ground,
            .menuGround = isDark ? mixed(window, Qt::white, 0.04) : ground,
            .plainButton = translucent(Qt::white, isDark ? 0.13 : 0.6),
            .innerEdge = translucent(Qt::white, isDark ? 0.14 : 0.45),
            .outerEdge = translucent(Qt::black, isDark ? 0.55 : 0.22)};
}

} // namespace lumacap
