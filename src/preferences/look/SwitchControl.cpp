#include "preferences/look/SwitchControl.h"

#include "graphics/ColorMixing.h"
#include "graphics/PointPainting.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsTheme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>
#include <QStyle>

namespace lumacap {
namespace {

constexpr QRectF track(0, 0, prefslook::switchWidth, prefslook::switchHeight);
constexpr double knobSide = prefslook::switchHeight - 2 * prefslook::switchInset;
constexpr double knobTravel = prefslook::switchWidth - prefslook::switchHeight;

/// The track, smaller by `inset` on each side.
QPainterPath capsule(double inset = 0)
{
    const QRectF inner = track.adjusted(inset, inset, -inset, -inset);
    QPainterPath path;
    path.addRoundedRect(inner, inner.height() / 2, inner.height() / 2);
    return path;
}

} // namespace

SwitchControl::SwitchControl(const QString &name, QWidget *parent)
    : PrefsControl(QAccessible::CheckBox, name, parent)
{
    setCheckable(true);
    m_slide.setEasingCurve(QEasingCurve::InOutQuad);
    connect(this, &QAbstractButton::toggled, this, &SwitchControl::follow);
    connect(&m_slide, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { moveTo(value.toDouble()); });
}

QPainterPath SwitchControl::outline() const
{
    return capsule();
}

QSize SwitchControl::sizeHint() const
{
    return {prefslook::switchWidth, prefslook::switchHeight};
}

void SwitchControl::follow(bool isOn)
{
    const double end = isOn ? 1 : 0;
    m_slide.stop();
    const bool moves = isVisible() && end != m_position
        && style()->styleHint(QStyle::SH_Widget_Animation_Duration, nullptr, this) > 0;
    if (!moves)
        return moveTo(end);
    m_slide.setStartValue(m_position);
    m_slide.setEndValue(end);
    m_slide.setDuration(prefslook::switchMilliseconds);
    m_slide.start();
}

void SwitchControl::moveTo(double position)
{
    m_position = position;
    update();
}

void SwitchControl::hideEvent(QHideEvent *event)
{
    m_slide.stop();
    moveTo(isChecked() ? 1 : 0);
    PrefsControl::hideEvent(event);
}

void SwitchControl::paintFace(QPainter &painter, const PrefsTheme &theme) const
{
    const QPainterPath ground = capsule();
    painter.fillPath(ground, translucent(theme.primary, prefslook::switchOffOpacity));
    painter.fillPath(ground, translucent(theme.accent, m_position));
    if (isDown())
        painter.fillPath(ground, feedback(theme.primary));
    const double hairline = 1 / pixelsAPoint(painter);
    painter.strokePath(capsule(hairline / 2),
                       QPen(translucent(theme.primary, prefslook::switchEdgeOpacity), hairline));
    const QRectF knob(prefslook::switchInset + m_position * knobTravel, prefslook::switchInset,
                      knobSide, knobSide);
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.shadow);
    painter.drawEllipse(knob.translated(0, 0.75).adjusted(-0.5, 0, 0.5, 0.25));
    painter.setBrush(theme.knob);
    painter.drawEllipse(knob);
}

} // namespace lumacap
