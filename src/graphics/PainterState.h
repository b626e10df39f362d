#pragma once

#include <QPainter>

namespace lumacap {

/// Gives a painter back at the end of a scope as it was at its beginning.
class PainterState {
public:
    /// `painter` outlives the object.
    explicit PainterState(QPainter &painter)
        : m_painter{painter}
    {
        m_painter.save();
    }
    Q_DISABLE_COPY_MOVE(PainterState)
    ~PainterState() { m_painter.restore(); }

private:
    QPainter &m_painter;
};

} // namespace lumacap
