#include "overlay/KeyableWindow.h"

#include <QCoreApplication>
#include <QMouseEvent>

namespace lumacap {

KeyableWindow::KeyableWindow()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // the content covers it all
    setAttribute(Qt::WA_NoSystemBackground);
    setMouseTracking(true);
    setWindowTitle(QStringLiteral("Lumacap"));
}

void KeyableWindow::setContentView(QWidget *content)
{
    m_contentView = content;
    content->setParent(this);
    content->setGeometry(rect());
    content->setAttribute(Qt::WA_NoMousePropagation); // it would be passed on, and come back
    setFocusProxy(content);
}

void KeyableWindow::resizeEvent(QResizeEvent *event)
{
    if (m_contentView != nullptr)
        m_contentView->setGeometry(rect());
    QWidget::resizeEvent(event);
}

void KeyableWindow::mousePressEvent(QMouseEvent *event)
{
    passOn(event);
}

void KeyableWindow::mouseMoveEvent(QMouseEvent *event)
{
    passOn(event);
}

void KeyableWindow::mouseReleaseEvent(QMouseEvent *event)
{
    passOn(event);
}

/// The content fills the window, but the toolkit rounds the pointer's place to whole points before
/// it looks for a child there, and the last pixels of a point to the next one, which is outside.
void KeyableWindow::passOn(QMouseEvent *event)
{
    if (m_contentView != nullptr)
        QCoreApplication::sendEvent(m_contentView, event);
}

} // namespace lumacap
