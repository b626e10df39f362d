#pragma once

#include "preferences/look/PrefsControl.h"

#include <QVariantAnimation>

namespace lumacap {

/// On or off, as its checked state. Its knob slides over when the user changes it, unless the
/// desktop wants no movement; at rest nothing runs.
class SwitchControl final : public PrefsControl {
    Q_OBJECT

public:
    SwitchControl(const QString &name, QWidget *parent);

    QPainterPath outline() const override;
    QSize sizeHint() const override;

    /// Where the knob is: 0 for off, 1 for on, in between while it slides.
    double position() const { return m_position; }
    bool isMoving() const { return m_slide.state() == QAbstractAnimation::Running; }

protected:
    void paintFace(QPainter &painter, const PrefsTheme &theme) const override;
    void hideEvent(QHideEvent *event) override;

private:
    void follow(bool isOn);
    void moveTo(double position);

    QVariantAnimation m_slide;
    double m_position = 0;
};

} // namespace lumacap
