#pragma once

#include <QPointer>
#include <QWidget>

namespace lumacap {

class PrefsControl;

/// Draws the ring of the keyboard's focus around whichever control inside `host` has it, over
/// everything else there. The pointer goes through it.
class FocusRing final : public QWidget {
    Q_OBJECT

public:
    /// A child of `host`.
    explicit FocusRing(QWidget *host);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void follow(QWidget *focused);
    void place();

    QPointer<PrefsControl> m_control;
};

} // namespace lumacap
