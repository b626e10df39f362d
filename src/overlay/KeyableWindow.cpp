#include "overlay/KeyableWindow.h"

namespace lumacap {

KeyableWindow::KeyableWindow()
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint)
{
    setAttribute(Qt::WA_OpaquePaintEvent); // the content covers it all
    setAttribute(Qt::WA_NoSystemBackground);
    setWindowTitle(QStringLiteral("Lumacap"));
}

void KeyableWindow::setContentView(QWidget *content)
{
    m_contentView = content;
    content->setParent(this);
    content->setGeometry(rect());
    setFocusProxy(content);
}

void KeyableWindow::resizeEvent(QResizeEvent *event)
{
    if (m_contentView != nullptr)
        m_contentView->setGeometry(rect());
    QWidget::resizeEvent(event);
}

} // namespace lumacap
