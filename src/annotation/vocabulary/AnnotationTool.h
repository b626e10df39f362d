#pragma once

#include "graphics/EnumTable.h"

#include <QLatin1StringView>

namespace lumacap {

/// What a press on the selected area makes, in the order the toolbar lists them. `Selection` makes
/// no annotation: it selects the area anew.
enum class AnnotationTool {
    Selection,
    Arrow,
    Rectangle,
    Ellipse,
    NumberedPoint,
    Freehand,
    Text,
    Magnifier,
    Blur,
};

struct AnnotationToolRow {
    AnnotationTool value;
    QLatin1StringView rawValue;
    /// The name of the symbol image on its button.
    QLatin1StringView icon;
};

inline constexpr std::array annotationTools{
    AnnotationToolRow{AnnotationTool::Selection, QLatin1StringView("selection"),
                      QLatin1StringView("rectangle.dashed")},
    AnnotationToolRow{AnnotationTool::Arrow, QLatin1StringView("arrow"),
                      QLatin1StringView("arrow.up.right")},
    AnnotationToolRow{AnnotationTool::Rectangle, QLatin1StringView("rectangle"),
                      QLatin1StringView("rectangle")},
    AnnotationToolRow{AnnotationTool::Ellipse, QLatin1StringView("ellipse"),
                      QLatin1StringView("circle")},
    AnnotationToolRow{AnnotationTool::NumberedPoint, QLatin1StringView("numberedPoint"),
                      QLatin1StringView("1.circle.fill")},
    AnnotationToolRow{AnnotationTool::Freehand, QLatin1StringView("freehand"),
                      QLatin1StringView("pencil.tip")},
    AnnotationToolRow{AnnotationTool::Text, QLatin1StringView("text"),
                      QLatin1StringView("textformat")},
    AnnotationToolRow{AnnotationTool::Magnifier, QLatin1StringView("magnifier"),
                      QLatin1StringView("magnifyingglass")},
    AnnotationToolRow{AnnotationTool::Blur, QLatin1StringView("blur"),
                      QLatin1StringView("eye.slash")},
};
static_assert(rowsFollowTheEnum(annotationTools));

} // namespace lumacap
