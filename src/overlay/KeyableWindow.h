#pragma once

#include <QWidget>

namespace lumacap {

/// The window of one overlay: without a frame, black until its content is drawn, and a place for
/// the keyboard. Its one child of the class of the content fills it.
class KeyableWindow final : public QWidget {
    Q_OBJECT

public:
    KeyableWindow();

    /// Takes `content` over, fills the window with it and gives it the keyboard.
    void setContentView(QWidget *content);

protected:
    void resizeEvent(QResizeEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void passOn(QMouseEvent *event);

    QWidget *m_contentView = nullptr;
};

} // namespace lumacap
