#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QColor>

namespace lumacap {

/// The opacities of `PaintedButton::feedback`.
namespace feedbacklook {
inline constexpr double hoverOpacity = 0.08;
inline constexpr double pressedOpacity = 0.18;
} // namespace feedbacklook

/// A button that draws itself and tells assistive technology what it is. It takes the space key
/// alone; all others go on to its parent. The keyboard's focus is shown only where the keyboard
/// brought it.
class PaintedButton : public QAbstractButton {
    Q_OBJECT

public:
    /// `name` is what assistive technology calls it.
    PaintedButton(QAccessible::Role role, const QString &name, QWidget *parent);

    QAccessible::Role role() const { return m_role; }

    /// Adds to what every button says of itself.
    virtual void describe(QAccessible::State &state) const;

protected:
    bool showsFocus() const { return m_showsFocus && hasFocus(); }

    /// The fill in `ink` that says that the pointer is over it or presses it; transparent
    /// otherwise.
    QColor feedback(const QColor &ink) const;

    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    bool hitButton(const QPoint &position) const override;

private:
    QAccessible::Role m_role;
    bool m_showsFocus = false;
};

} // namespace lumacap
