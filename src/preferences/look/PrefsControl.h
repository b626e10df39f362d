#pragma once

#include "controls/PaintedButton.h"

class QPainterPath;

namespace lumacap {

struct PrefsTheme;

/// A control of the preferences. Its size is that of its drawing; the ring of the keyboard's focus
/// is drawn around it by a `FocusRing`.
class PrefsControl : public PaintedButton {
    Q_OBJECT

public:
    PrefsControl(QAccessible::Role role, const QString &name, QWidget *parent);

    /// What the ring runs around, in the widget's units.
    virtual QPainterPath outline() const = 0;
    /// Whether the ring is to be seen while this has the focus, or a widget inside it.
    virtual bool showsRing() const { return showsFocus(); }

    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    /// Draws into a painter in points.
    virtual void paintFace(QPainter &painter, const PrefsTheme &theme) const = 0;

    void paintEvent(QPaintEvent *event) override;
};

} // namespace lumacap
