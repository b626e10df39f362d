#pragma once

#include <QWidget>

#include <optional>

class QScrollBar;

namespace lumacap {

/// Says, over the right edge of what is scrolled, how far that is, and scrolls it by the pointer.
/// It takes no room from the content; there only while there is something to scroll.
class ScrollMark final : public QWidget {
    Q_OBJECT

public:
    /// Follows `bar`, which is not shown itself. Both are children of `parent`.
    ScrollMark(QScrollBar *bar, QWidget *parent);

    /// Puts it at the right edge of `area`, in units of the parent.
    void placeIn(const QRect &area);

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    QRectF thumb() const;

    QScrollBar *m_bar;
    std::optional<double> m_heldAt; ///< below the thumb's upper edge
};

} // namespace lumacap
