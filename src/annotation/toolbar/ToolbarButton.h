#pragma once

#include "annotation/toolbar/ToolbarTheme.h"
#include "controls/PaintedButton.h"
#include "graphics/Geometry.h"

#include <QMarginsF>
#include <QRectF>

class QPainterPath;

namespace lumacap {

/// A control of the strip or of its menu. It draws itself in points, whatever the units of its
/// window, and is current only when it is told so: a click changes nothing by itself. Lies around a
/// frame, which is what counts in its row; presses are taken and rings are drawn a little beyond.
class ToolbarButton : public PaintedButton {
    Q_OBJECT

public:
    using PaintedButton::PaintedButton;

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

    void paintEvent(QPaintEvent *event) override;
    void nextCheckState() override { }

private:
    QRectF m_frame;
    QPointF m_origin; ///< of the frame, in the widget's units
    double m_unitsAPoint = 1;
};

} // namespace lumacap
