#pragma once

#include "annotation/shapes/Annotation.h"
#include "annotation/vocabulary/AnnotationColor.h"
#include "annotation/vocabulary/AnnotationTool.h"
#include "annotation/vocabulary/FrameBackgroundStyle.h"
#include "annotation/vocabulary/LineThickness.h"
#include "annotation/vocabulary/MagnifierShape.h"
#include "annotation/vocabulary/MagnifierZoom.h"

#include <QObject>
#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace lumacap {

class PreferencesStorage;

/// The state of one selection capture: what is chosen in the toolbar, the finished annotations and
/// their undo history. Made anew for each capture; on the main thread only.
///
/// Every write of a published property announces itself before the new value is in place, also when
/// it is the old one again: a direct connection is called at once and still reads the old value, a
/// queued one (`Qt::QueuedConnection`) on the next turn of the main loop, when the new one is
/// there.
class AnnotationStore final : public QObject {
    Q_OBJECT

public:
    using Annotations = std::vector<std::unique_ptr<Annotation>>;

    /// Reads the two settings of the frame now; later changes of theirs do not matter.
    explicit AnnotationStore(const PreferencesStorage &preferences);
    Q_DISABLE_COPY_MOVE(AnnotationStore)
    ~AnnotationStore() override;

    AnnotationTool currentTool() const { return m_currentTool; }
    void setCurrentTool(AnnotationTool tool);
    AnnotationColor currentColor() const { return m_currentColor; }
    void setCurrentColor(AnnotationColor color);
    LineThickness currentThickness() const { return m_currentThickness; }
    void setCurrentThickness(LineThickness thickness);
    MagnifierShape magnifierShape() const { return m_magnifierShape; }
    void setMagnifierShape(MagnifierShape shape);
    MagnifierZoom magnifierZoom() const { return m_magnifierZoom; }
    void setMagnifierZoom(MagnifierZoom zoom);
    bool showFrame() const { return m_showFrame; }
    void setShowFrame(bool isShown);
    FrameBackgroundStyle frameBackground() const { return m_frameBackground; }
    void setFrameBackground(FrameBackgroundStyle style);

    /// In drawing order: later ones lie on top.
    const Annotations &annotations() const { return m_annotations; }
    /// The ids of the annotations that were added and not undone, oldest first.
    const std::vector<QUuid> &undoStack() const { return m_undoStack; }

    /// Puts a finished annotation on top and asks for a redraw.
    void add(std::unique_ptr<Annotation> annotation);
    /// Takes away the annotation added last and asks for a redraw; nothing where there is none.
    /// Numbers that were given stay given.
    void undo();

    /// The area selected on the overlay.
    std::optional<Rect<Canvas>> selectedViewRect;
    /// The application whose window was picked: the title of the framed picture.
    std::optional<QString> sourceAppName;
    /// The last number given to a numbered point.
    int numberCounter = 0;
    /// Ends the capture with the annotated picture.
    std::function<void()> confirmCallback;
    /// Ends the capture without output.
    std::function<void()> cancelCallback;
    /// Asks the overlay to draw itself anew.
    std::function<void()> needsRedraw;

Q_SIGNALS:
    void currentToolWillChange(lumacap::AnnotationTool tool);
    void currentColorWillChange(lumacap::AnnotationColor color);
    void currentThicknessWillChange(lumacap::LineThickness thickness);
    void magnifierShapeWillChange(lumacap::MagnifierShape shape);
    void magnifierZoomWillChange(lumacap::MagnifierZoom zoom);
    void annotationsWillChange();
    void showFrameWillChange(bool isShown);
    void frameBackgroundWillChange(lumacap::FrameBackgroundStyle style);
    /// Any of the above.
    void objectWillChange();

private:
    template <class Value>
    void publish(Value &property, Value value, void (AnnotationStore::*willChange)(Value));

    AnnotationTool m_currentTool = AnnotationTool::Selection;
    AnnotationColor m_currentColor = AnnotationColor::Red;
    LineThickness m_currentThickness = LineThickness::Medium;
    MagnifierShape m_magnifierShape = MagnifierShape::RoundedRect;
    MagnifierZoom m_magnifierZoom = MagnifierZoom::X2;
    Annotations m_annotations;
    bool m_showFrame;
    FrameBackgroundStyle m_frameBackground;
    std::vector<QUuid> m_undoStack;
};

} // namespace lumacap
