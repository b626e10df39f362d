#include "preferences/window/ScrollMark.h"

#include "graphics/ColorMixing.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsTheme.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace lumacap {

ScrollMark::ScrollMark(QScrollBar *bar, QWidget *parent)
    : QWidget(parent)
    , m_bar(bar)
{
    setCursor(Qt::ArrowCursor);
    setAttribute(Qt::WA_Hover);
    connect(bar, &QScrollBar::valueChanged, this, [this] { update(); });
    connect(bar, &QScrollBar::rangeChanged, this, [this](int least, int most) {
        setVisible(most > least);
        update();
    });
    setVisible(bar->maximum() > bar->minimum());
}

void ScrollMark::placeIn(const QRect &area)
{
    setGeometry(area.right() + 1 - prefslook::scrollMarkReach, area.top(),
                prefslook::scrollMarkReach, area.height());
    raise();
}

QRectF ScrollMark::thumb() const
{
    using namespace prefslook;
    const double room = height() - 2 * scrollMarkMargin;
    const double range = m_bar->maximum() - m_bar->minimum();
    const double whole = range + m_bar->pageStep();
    const double length = std::clamp(room * m_bar->pageStep() / whole, scrollMarkLeast, room);
    const double share = range > 0 ? (m_bar->value() - m_bar->minimum()) / range : 0;
    return {width() - scrollMarkMargin - scrollMarkWidth,
            scrollMarkMargin + share * (room - length), scrollMarkWidth, length};
}

void ScrollMark::paintEvent(QPaintEvent * /*event*/)
{
    const bool isHeld = m_heldAt.has_value() || underMouse();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(
        translucent(prefsThemeOf(palette()).primary,
                    isHeld ? prefslook::scrollMarkHeldOpacity : prefslook::scrollMarkOpacity));
    painter.drawRoundedRect(thumb(), prefslook::scrollMarkWidth / 2,
                            prefslook::scrollMarkWidth / 2);
}

void ScrollMark::mousePressEvent(QMouseEvent *event)
{
    if (event->button() != Qt::LeftButton)
        return;
    const double y = event->position().y();
    const QRectF held = thumb();
    if (y < held.top())
        m_bar->triggerAction(QAbstractSlider::SliderPageStepSub);
    else if (y > held.bottom())
        m_bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
    else
        m_heldAt = y - held.top();
    update();
}

void ScrollMark::mouseMoveEvent(QMouseEvent *event)
{
    if (!m_heldAt)
        return;
    const double travel = height() - 2 * prefslook::scrollMarkMargin - thumb().height();
    if (travel <= 0)
        return;
    const double share = (event->position().y() - *m_heldAt - prefslook::scrollMarkMargin) / travel;
    m_bar->setValue(static_cast<int>(
        std::lround(m_bar->minimum() + share * (m_bar->maximum() - m_bar->minimum()))));
}

void ScrollMark::mouseReleaseEvent(QMouseEvent * /*event*/)
{
    m_heldAt.reset();
    update();
}

void ScrollMark::wheelEvent(QWheelEvent *event)
{
    QCoreApplication::sendEvent(m_bar, event);
}

} // namespace lumacap
