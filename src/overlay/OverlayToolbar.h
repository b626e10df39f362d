#pragma once

#include "graphics/Geometry.h"

#include <QImage>
#include <QObject>

namespace lumacap {

class AnnotationStore;
class AnnotationToolbarView;
class OverlayView;

/// Where a toolbar that needs `fitting`, measured for `toolbarWidth`, lies over a canvas: centred,
/// and below its upper edge; in canvas points.
Rect<Canvas> toolbarFrame(Size canvas, Size fitting);

/// The width that a toolbar may take of a canvas that is `width` points wide.
double toolbarWidth(double width);

/// Keeps the toolbar over an overlay: in its place, as large as its controls ask for, and before
/// its part of the frozen screen.
class OverlayToolbar final : public QObject {
    Q_OBJECT

public:
    /// Belongs to `view`. The store outlives both; `frozenImage` is of the view's canvas.
    OverlayToolbar(AnnotationStore &store, OverlayView &view, QImage frozenImage);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void place();

    OverlayView &m_view;
    QImage m_frozenImage;
    AnnotationToolbarView *m_toolbar;
};

} // namespace lumacap
