#pragma once

#include "annotation/AnnotationStore.h"
#include "capture/WindowDetector.h"
#include "overlay/CapturedScreen.h"
#include "overlay/OverlayScene.h"

#include <QImage>
#include <QPointer>
#include <QTimer>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>

namespace lumacap {

class AnnotationTextField;
class MagnifierAnnotation;
class PreferencesStorage;

/// How far the placing of a loupe has come.
enum class MagnifierPhase { Idle, DraggingSource, PositioningLoupe };

/// The frozen screen, on which a window is picked or an area dragged out, and marks are drawn. What
/// is chosen and what is finished is kept in the store. Everything is drawn in device pixels into a
/// picture of its own, of which the widget shows what changed.
class OverlayView final : public QWidget {
    Q_OBJECT

public:
    /// Borrows the windows, the settings and the store, which outlive the view. `frozenImage` is
    /// opaque and of the screen's pixel size.
    OverlayView(const WindowList &windows, const PreferencesStorage &preferences,
                const CapturedScreen &screen, const QImage &frozenImage, AnnotationStore &store);
    Q_DISABLE_COPY_MOVE(OverlayView)
    ~OverlayView() override;

    /// The rectangle to outline now: what is being dragged, what was chosen, or the window under
    /// the pointer while nothing was.
    std::optional<Rect<Canvas>> selectionRectForDisplay() const;

    /// Ends the crawling of the line, for good.
    void invalidateAnimationTimer();

    /// All that is to be seen now. It borrows the marks, of the store and of the view.
    OverlayScene scene() const;

    /// What the view shows now, in device pixels, without its child widgets.
    const QImage &picture() const { return m_picture; }

    const CanvasMeasure &canvas() const { return m_canvas; }

    /// Widget units for one canvas point: 1 unless the desktop's scale is no whole number.
    double unitsAPoint() const { return m_canvas.scale / pixelsAUnit().width(); }

    /// Lays `toolbar`, a child, over `frame`: what happens there is left to it.
    void setToolbarFrame(QWidget &toolbar, const Rect<Canvas> &frame);
    const Rect<Canvas> &toolbarFrame() const { return m_toolbarFrame; }

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    // The pointer, at a place of the view.
    void mouseDown(Point<Canvas> location);
    void mouseDragged(Point<Canvas> location);
    void mouseUp(Point<Canvas> location);
    void mouseMoved(Point<Canvas> location);

    bool isSelectingNow() const;

    // The selection tool.
    void selectionDown(Point<Canvas> location);
    void selectionDragged(Point<Canvas> location);
    void selectionUp(Point<Canvas> location);
    bool selectDraggedArea();
    bool selectWindowAt(Point<Canvas> location);
    void endSelectionGesture();
    bool isSelecting() const { return m_store.currentTool() == AnnotationTool::Selection; }
    std::optional<Rect<Canvas>> draggedRect() const;
    std::optional<DetectedWindow> windowAt(Point<Global> point) const;
    Rect<Global> fromQuartzRect(const Rect<TopLeftGlobal> &rect) const;
    Rect<Canvas> viewRect(const DetectedWindow &window) const;

    // The tools that draw.
    void useTool(AnnotationTool tool);
    void editingDown(Point<Canvas> location);
    void editingDragged(Point<Canvas> location);
    void editingUp();
    void begin(std::unique_ptr<Annotation> annotation);
    void inProgressChanged(const DrawnAreas &where);
    void dropInProgress();
    void addInProgress();
    void addNumberedPoint(Point<Canvas> location);

    // The loupe, which is placed in two steps.
    MagnifierAnnotation *loupeInProgress() const;
    void magnifierDown(Point<Canvas> location);
    void magnifierDragged(MagnifierAnnotation &loupe, Point<Canvas> location);
    void magnifierUp(MagnifierAnnotation &loupe);
    void endPlacing();

    // The text that is being typed.
    void beginTextEditing(Point<Canvas> location);
    void commitTextField(AnnotationTextField &field);
    void removeTextField();

    void cancelOperation();

    OverlayLabel labelUnder(const Rect<Canvas> &rect, const QString &text) const;
    std::optional<OverlayLabel> label() const;
    void redisplay();
    void annotationsChanged();
    void runAnimation();
    void advanceAnts();

    /// Hides the pointer, whose place the drawn cross takes.
    static const QCursor &invisibleCursor();

    /// The screen's device pixels behind one widget unit, in both directions.
    QSizeF pixelsAUnit() const;
    Point<Canvas> viewLocation(QPointF widgetPoint) const;
    QRect widgetRect(const Rect<Canvas> &rect) const;

    WindowDetector m_windowDetector;
    std::int32_t m_myPID;
    const PreferencesStorage &m_preferences;
    CapturedScreen m_screen;
    CanvasMeasure m_canvas;
    QImage m_frozenImage;
    QImage m_dimmedImage;
    AnnotationStore &m_store;
    std::optional<Point<Global>> m_dragOrigin;
    std::optional<Point<Global>> m_currentDragPoint;
    bool m_isDragging = false;
    std::optional<DetectedWindow> m_highlightedWindow;
    std::unique_ptr<Annotation> m_inProgressAnnotation;
    std::optional<AnnotationInProgress> m_drawnInProgress; ///< the same, as it is shown
    QPointer<AnnotationTextField> m_activeTextField;
    MagnifierPhase m_magnifierPhase = MagnifierPhase::Idle;
    std::optional<Size> m_magnifierDragOffset;
    std::optional<Point<Canvas>> m_cursorPosition;
    bool m_showGuideLines = false;
    double m_marchingAntsPhase = 0;
    QList<DrawnAnnotation> m_drawnAnnotations; ///< the store's, as they are shown
    QTimer m_animationTimer;
    bool m_isAnimationOver = false;
    Rect<Canvas> m_toolbarFrame;
    OverlayScene m_shown;
    QImage m_picture;
};

} // namespace lumacap
