#pragma once

#include "platform/OverlaySurface.h"
#include "platform/wayland/Output.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class QScreen;

namespace lumacap::wayland {

class Outputs;

/// What all ways to cover an output share: whom they cover it with, until when, and who is told.
class OutputOverlaySurface : public QObject, public OverlaySurface {
public:
    Q_DISABLE_COPY_MOVE(OutputOverlaySurface)

    void cover(QWidget &widget, const Screen &screen, std::function<void()> onScreenChanged) final;
    void uncover(QWidget &widget) final;

protected:
    /// Borrows `outputs`, which outlive the object.
    explicit OutputOverlaySurface(const Outputs &outputs);
    ~OutputOverlaySurface() override;

    /// Shows `widget` on `output`, which the toolkit calls `screen`, at once or later.
    virtual void show(QWidget &widget, const Output &output, QScreen &screen) = 0;
    /// Takes the widget off the screen, now. Its window is still there, or going at this moment.
    virtual void hide(QWidget &widget) = 0;

    /// The person's screen is no longer what it was, or can't be covered. On the next turn of the
    /// loop, so that whoever is told may uncover and destroy whatever they like.
    void tellScreenChanged();
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void end();
    bool isUnchanged() const;

    const Outputs &m_outputs;
    QPointer<QWidget> m_widget;
    QPointer<QWindow> m_window;
    Screen m_screen;
    std::function<void()> m_onScreenChanged;
    int m_coverings = 0;
};

} // namespace lumacap::wayland
