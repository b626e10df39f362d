#include "preferences/look/FocusRing.h"

#include "preferences/look/PrefsControl.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsTheme.h"

#include <QApplication>
#include <QEvent>
#include <QPainter>
#include <QPainterPath>
#include <QPainterPathStroker>

#include <cmath>

namespace lumacap {
namespace {

constexpr int reach = 4; // of the ring beyond the control
static_assert(reach >= prefslook::focusRingOutset + prefslook::focusRingWidth / 2);

PrefsControl *controlAround(QWidget *widget)
{
    while (widget != nullptr && qobject_cast<PrefsControl *>(widget) == nullptr)
        widget = widget->parentWidget();
    return qobject_cast<PrefsControl *>(widget);
}

} // namespace

FocusRing::FocusRing(QWidget *host)
    : QWidget(host)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget * /*old*/, QWidget *now) { follow(now); });
}

void FocusRing::follow(QWidget *focused)
{
    if (m_control)
        m_control->removeEventFilter(this);
    PrefsControl *const control = controlAround(focused);
    const bool isShown =
        control != nullptr && parentWidget()->isAncestorOf(control) && control->showsRing();
    m_control = isShown ? control : nullptr;
    setVisible(isShown);
    if (!isShown)
        return;
    control->installEventFilter(this);
    place();
    raise();
}

void FocusRing::place()
{
    const QPoint corner = m_control->mapTo(parentWidget(), QPoint());
    setGeometry(QRect(corner, m_control->size()).adjusted(-reach, -reach, reach, reach));
    update();
}

bool FocusRing::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_control) {
        if (event->type() == QEvent::Move || event->type() == QEvent::Resize)
            place();
        else if (event->type() == QEvent::Hide)
            hide();
    }
    return QWidget::eventFilter(watched, event);
}

void FocusRing::paintEvent(QPaintEvent * /*event*/)
{
    if (!m_control)
        return;
    constexpr double toOuterEdge = prefslook::focusRingOutset + prefslook::focusRingWidth / 2;
    constexpr double toInnerEdge = prefslook::focusRingOutset - prefslook::focusRingWidth / 2;
    const QPainterPath outline = m_control->outline();
    const auto grown = [&outline](double by) {
        QPainterPathStroker stroker;
        stroker.setWidth(2 * by);
        stroker.setJoinStyle(Qt::RoundJoin);
        return outline.united(stroker.createStroke(outline));
    };
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(reach, reach);
    painter.fillPath(grown(toOuterEdge).subtracted(grown(toInnerEdge)),
                     prefsThemeOf(palette()).accent);
}

} // namespace lumacap
