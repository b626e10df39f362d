#pragma once

#include "annotation/vocabulary/FrameBackgroundStyle.h"

#include <QPointer>
#include <QWidget>

#include <vector>

namespace lumacap {

class BackgroundStyleRow;

/// Whether the menu was asked for by the keyboard, which then goes on from the current row.
enum class MenuOpener { Pointer, Keyboard };

/// The menu of the backgrounds behind a frame. A child that covers its whole parent, for some
/// desktops give the overlay no pop-up windows: what is pressed beside the panel ends the menu and
/// reaches nothing else. It has the keyboard's focus until it ends, and then gives it back. Ends
/// once, and deletes itself then.
class BackgroundStyleMenu final : public QWidget {
    Q_OBJECT

public:
    /// Of its parent's units `unitsAPoint` make a point. Hidden yet.
    BackgroundStyleMenu(FrameBackgroundStyle current, double unitsAPoint, QWidget *parent);

    /// Shows the menu by its button, whose frame is `anchor`, in units of the parent.
    void open(const QRectF &anchor, MenuOpener opener);

    /// Marks another row.
    void showStyle(FrameBackgroundStyle style);

    /// Ends the menu; nothing when it has ended.
    void end();

    /// The visible panel, in units of the parent.
    QRect panelGeometry() const { return m_panel->geometry(); }

Q_SIGNALS:
    void chosen(lumacap::FrameBackgroundStyle style);
    void ended();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addRows(FrameBackgroundStyle current);
    void placePanel(const QRectF &anchor);
    void takeFocus(MenuOpener opener);
    void choose(FrameBackgroundStyle style);
    void focusRow(int index);
    int focusedRow() const;

    double m_unitsAPoint;
    QPointer<QWidget> m_focusBefore;
    QWidget *m_panel;
    std::vector<BackgroundStyleRow *> m_rows;
    bool m_hasEnded = false;
};

} // namespace lumacap
