#pragma once

#include "annotation/toolbar/Backdrop.h"
#include "annotation/toolbar/ToolbarRow.h"
#include "graphics/Geometry.h"

#include <QPointer>
#include <QRectF>
#include <QWidget>

#include <vector>

class QImage;

namespace lumacap {

class AnnotationStore;
class BackgroundStyleMenu;

/// The strip of controls over the frozen screen. It shows what the store says and writes there what
/// is clicked; it has no state of its own. All its lengths are in points, of which the host says
/// how many units of the window they are. Mouse events end here and never reach its parent.
class AnnotationToolbarView final : public QWidget {
    Q_OBJECT

public:
    /// Borrows the store, which outlives the view. `parent` is what the open menu covers.
    AnnotationToolbarView(AnnotationStore &store, QWidget *parent);
    Q_DISABLE_COPY_MOVE(AnnotationToolbarView)
    ~AnnotationToolbarView() override;

    /// 1 until it is set.
    double unitsAPoint() const { return m_unitsAPoint; }
    void setUnitsAPoint(double units);

    /// What it needs where it may be `width` points wide: one row where that suffices, else more
    /// that are narrower. In points that make whole units.
    Size fittingSize(double width) const;

    /// What lies behind the whole view, top row first, at the density of the screen; a null image
    /// makes the view opaque. Set anew when the view moves or changes its size.
    void setBackdrop(const QImage &frozenPart);

Q_SIGNALS:
    /// Controls came or went: the host measures and places the view again.
    void fittingSizeDidChange();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void scheduleRefresh();
    void refresh();
    void layOut();
    void openMenu();

    AnnotationStore &m_store;
    ToolbarRow m_row;
    QPointer<BackgroundStyleMenu> m_menu;
    std::vector<QRectF> m_dividers; ///< in points
    Backdrop m_backdrop;
    double m_unitsAPoint = 1;
    bool m_isRefreshScheduled = false;
};

} // namespace lumacap
