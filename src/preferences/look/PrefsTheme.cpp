#include "preferences/look/PrefsTheme.h"

#include "graphics/ColorMixing.h"
#include "preferences/look/PrefsLook.h"

#include <QPalette>

namespace lumacap {
namespace {

constexpr int middleLightness = 128;

} // namespace

PrefsTheme prefsThemeOf(const QPalette &palette)
{
    const QColor window = palette.color(QPalette::Active, QPalette::Window);
    const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
    const bool isDark = window.lightness() < middleLightness;
    return {.accent = palette.color(QPalette::Active, QPalette::Highlight),
            .primary = text,
            .secondary = translucent(text, prefslook::secondaryOpacity),
            .tertiary = translucent(text, prefslook::tertiaryOpacity),
            .button = translucent(Qt::white, isDark ? 0.12 : 0.85),
            .buttonEdge = translucent(text, isDark ? 0.12 : 0.18),
            .segment = isDark ? mixed(window, Qt::white, 0.3) : QColor(Qt::white),
            .knob = isDark ? QColor(236, 236, 238) : QColor(Qt::white),
            .shadow = translucent(Qt::black, isDark ? 0.4 : 0.22)};
}

} // namespace lumacap
