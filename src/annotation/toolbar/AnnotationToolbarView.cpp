#include "annotation/toolbar/AnnotationToolbarView.h"

#include "annotation/AnnotationStore.h"
#include "annotation/toolbar/BackgroundMenuButton.h"
#include "annotation/toolbar/BackgroundStyleMenu.h"
#include "annotation/toolbar/StripPainting.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/ToolbarTheme.h"
#include "controls/Accessibility.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

/// The least length of whole units that is not shorter.
double inWholeUnits(double points, double unitsAPoint)
{
    constexpr double rounding = 1e-6;
    return std::ceil(points * unitsAPoint - rounding) / unitsAPoint;
}

} // namespace

AnnotationToolbarView::AnnotationToolbarView(AnnotationStore &store, QWidget *parent)
    : QWidget(parent)
    , m_store(store)
    , m_row(store, *this)
{
    describeAs(*this, QAccessible::ToolBar);
    setAttribute(Qt::WA_NoMousePropagation);
    setCursor(Qt::ArrowCursor);
    layOut();
    connect(&m_row.menuButton(), &ToolbarButton::clicked, this, &AnnotationToolbarView::openMenu);
    connect(&store, &AnnotationStore::objectWillChange, this,
            &AnnotationToolbarView::scheduleRefresh);
}

AnnotationToolbarView::~AnnotationToolbarView()
{
    if (m_menu)
        m_menu->end();
}

/// The store announces changes before they are in place, and often several in one turn.
void AnnotationToolbarView::scheduleRefresh()
{
    if (m_isRefreshScheduled)
        return;
    m_isRefreshScheduled = true;
    QMetaObject::invokeMethod(this, &AnnotationToolbarView::refresh, Qt::QueuedConnection);
}

void AnnotationToolbarView::refresh()
{
    m_isRefreshScheduled = false;
    if (m_menu && m_store.showFrame())
        m_menu->showStyle(m_store.frameBackground());
    else if (m_menu)
        m_menu->end();
    if (m_row.showState()) {
        layOut();
        Q_EMIT fittingSizeDidChange();
    }
}

Size AnnotationToolbarView::fittingSize(double width) const
{
    using namespace toolbarlook;
    const Size rows = placedInRows(m_row.items(), width - 2 * sidePadding, spacing).size;
    return {inWholeUnits(rows.width + 2 * sidePadding, m_unitsAPoint),
            inWholeUnits(rows.height + 2 * edgePadding, m_unitsAPoint)};
}

void AnnotationToolbarView::layOut()
{
    using namespace toolbarlook;
    const double inside = width() / m_unitsAPoint - 2 * sidePadding;
    const RowPlacement rows = placedInRows(m_row.items(), inside, spacing);
    const QPointF origin(sidePadding + (inside - rows.size.width) / 2,
                         (height() / m_unitsAPoint - rows.size.height) / 2);
    m_dividers = m_row.place(rows, origin, m_unitsAPoint);
    update();
}

void AnnotationToolbarView::setUnitsAPoint(double units)
{
    m_unitsAPoint = units;
    if (m_menu)
        m_menu->end();
    layOut();
}

void AnnotationToolbarView::setBackdrop(const QImage &frozenPart)
{
    m_backdrop.setPicture(frozenPart, frozenPart.width() * m_unitsAPoint / std::max(1, width()));
    update();
}

void AnnotationToolbarView::resizeEvent(QResizeEvent *event)
{
    layOut();
    QWidget::resizeEvent(event);
}

void AnnotationToolbarView::paintEvent(QPaintEvent * /*event*/)
{
    QPainter painter(this);
    paintStrip(painter, rect(), m_unitsAPoint, m_dividers, m_backdrop, themeOf(palette()));
}

void AnnotationToolbarView::openMenu()
{
    if (m_menu)
        m_menu->end();
    BackgroundMenuButton &button = m_row.menuButton();
    const QRectF anchor(QPointF(pos()) + button.frame().topLeft() * m_unitsAPoint,
                        button.frame().size() * m_unitsAPoint);
    const MenuOpener opener = button.hasFocus() ? MenuOpener::Keyboard : MenuOpener::Pointer;
    m_menu = new BackgroundStyleMenu(m_store.frameBackground(), m_unitsAPoint, parentWidget());
    m_menu->setPalette(palette());
    connect(m_menu, &BackgroundStyleMenu::chosen, this,
            [this](FrameBackgroundStyle style) { m_store.setFrameBackground(style); });
    connect(m_menu, &BackgroundStyleMenu::ended, &button,
            [&button] { button.setOpenness(MenuOpenness::Closed); });
    button.setOpenness(MenuOpenness::Open);
    m_menu->open(anchor, opener);
}

} // namespace lumacap
