#pragma once

#include <QColor>

class QPalette;

namespace lumacap {

/// The colours of the preferences.
struct PrefsTheme {
    QColor accent;
    QColor primary; ///< text, and what is a shade of it
    QColor secondary; ///< text that explains; translucent
    QColor tertiary; ///< text that is beside the point; translucent
    QColor button; ///< the fill of a bordered button; translucent
    QColor buttonEdge; ///< translucent
    QColor segment; ///< the current segment of a picker
    QColor knob;
    QColor shadow; ///< under a knob or a segment; translucent

    friend bool operator==(const PrefsTheme &, const PrefsTheme &) = default;
};

/// Light or dark as the palette's windows are; the accent is its highlight.
PrefsTheme prefsThemeOf(const QPalette &palette);

/// The colours of the sections' badges, which are the same in light and dark.
namespace systemcolor {
inline constexpr QColor gray(142, 142, 147);
inline constexpr QColor blue(0, 122, 255);
inline constexpr QColor green(52, 199, 89);
} // namespace systemcolor

} // namespace lumacap
