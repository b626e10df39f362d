#pragma once

#include "annotation/toolbar/ToolbarTheme.h"
#include "graphics/Geometry.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QMarginsF>
#include <QRectF>

class QPainterPath;

namespace lumacap {

/// A control of the strip or of its menu. It draws itself in points, whatever the units of its
/// window, and is current only when it is told so: a click changes nothing by itself. It takes the
/// space key alone; all others go on to its parent. Lies around a frame, which is what counts in
/// its row; presses are taken and rings are drawn a little beyond.
class ToolbarButton : public QAbstractButton {
    Q_OBJECT

public:
    /// `name` is what assistive technology calls it.
    ToolbarButton(QAccessible::Role role, const QString &name, QWidget *parent);

    QAccessible::Role role() const { return m_role; }

    /// In points.
    virtual Size frameSize() const = 0;

    /// Puts the frame's upper left corner at `origin`, in points of the parent, of which each is
    /// `unitsAPoint` units of the window.
    void place(QPointF origin, double unitsAPoint);

    /// In points of the parent, as it was placed.
    QRectF frame() const { return m_frame; }

protected:
    /// Draws into a painter in points with its origin at the frame's upper left corner.
    virtual void paintFace(QPainter &painter, const ToolbarTheme &theme) const = 0;
    /// How far it goes beyond its frame, in points.
    virtual QMarginsF reach() const;
    /// What is drawn around it while it has the keyboard's focus; in the frame's points.
    virtual QPainterPath focusRing() const;
    virtual double focusRingWidth() const;

    /// The fill that says that the pointer is over it or presses it; transparent otherwise.
    QColor feedback(const ToolbarTheme &theme) const;

    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool hitButton(const QPoint &position) const override;
    void nextCheckState() override { }

private:
    QAccessible::Role m_role;
    QRectF m_frame;
    QPointF m_origin; ///< of the frame, in the widget's units
    double m_unitsAPoint = 1;
    bool m_showsFocus = false;
};

} // namespace lumacap
