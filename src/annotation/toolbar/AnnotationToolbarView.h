#pragma once

#include "annotation/toolbar/Backdrop.h"
#include "annotation/toolbar/WrappingRow.h"
#include "graphics/Geometry.h"

#include <QPointer>
#include <QRectF>
#include <QWidget>

#include <functional>
#include <memory>
#include <vector>

class QImage;

namespace lumacap {

class AnnotationStore;
class BackgroundMenuButton;
class BackgroundStyleMenu;
class ToolbarButton;
class UndoButton;

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
    enum class Presence { Always, WithMagnifier, WithFrame };

    /// A control of the row; a divider where it has no button.
    struct Entry {
        Presence presence;
        ToolbarButton *button;
        std::function<bool()> isCurrent;
    };

    void addTools();
    void addStyles();
    void addMagnifierChoices();
    void addFrame();
    void addEnds();
    void addDivider(Presence presence);
    void add(Presence presence, ToolbarButton *button, const QString &objectName,
             std::function<void()> action, std::function<bool()> isCurrent = {});
    template <class Value>
    void addChoice(Presence presence, ToolbarButton *button, const QString &objectName, Value value,
                   Value (AnnotationStore::*current)() const, void (AnnotationStore::*set)(Value));

    void scheduleRefresh();
    void refresh();
    void showState();
    void layOut();
    bool isPresent(Presence presence) const;
    std::vector<RowItem> items() const;
    void openMenu();

    AnnotationStore &m_store;
    std::vector<Entry> m_entries;
    UndoButton *m_undo = nullptr;
    BackgroundMenuButton *m_menuButton = nullptr;
    QPointer<BackgroundStyleMenu> m_menu;
    std::vector<QRectF> m_dividers; ///< in points
    Backdrop m_backdrop;
    double m_unitsAPoint = 1;
    bool m_hasMagnifierChoices = false;
    bool m_hasFrameMenu = false;
    bool m_isRefreshScheduled = false;
};

} // namespace lumacap
