#pragma once

#include <QColor>

class QPalette;

namespace lumacap {

/// The colours of the toolbar, all opaque.
struct ToolbarTheme {
    QColor accent;
    QColor onAccent; ///< text on the accent colour
    QColor text;
    QColor ground; ///< the material's tint, and the strip itself where nothing lies behind it
    QColor menuGround;
    QColor plainButton; ///< translucent
    QColor innerEdge; ///< the hairline inside the strip's border; translucent
    QColor outerEdge; ///< the hairline of the strip's border; translucent

    friend bool operator==(const ToolbarTheme &, const ToolbarTheme &) = default;
};

/// Light or dark as the palette's windows are.
ToolbarTheme themeOf(const QPalette &palette);

} // namespace lumacap
