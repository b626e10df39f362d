#include "preferences/window/PreferencesWindow.h"

#include "controls/Accessibility.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/window/PreferencesView.h"
#include "preferences/window/SectionColumn.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QScrollBar>

#include <algorithm>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {

PreferencesWindow::PreferencesWindow(const PreferencesServices &services,
                                     std::function<void()> onHotkeysChanged)
    : m_services(services)
    , m_onHotkeysChanged(std::move(onHotkeysChanged))
{
    describeAs(*this, QAccessible::Window);
    setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint
                   | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    setWindowTitle(u"Lumacap"_s);
    setWindowIcon(QIcon::fromTheme(QGuiApplication::desktopFileName()));
    placeOnScreen();
    buildView();
}

void PreferencesWindow::buildView()
{
    const std::unique_ptr<PreferencesView> before(
        std::exchange(m_view, new PreferencesView(m_services, m_onHotkeysChanged, this)));
    m_view->setGeometry(rect());
    m_view->column().setFocus(Qt::OtherFocusReason); // from where Tab leads to the first control
}

/// In the middle of the screen. On one that is too low the sections scroll further, so that the
/// last of them is reached there, too.
void PreferencesWindow::placeOnScreen()
{
    using namespace prefslook;
    const QScreen *const under = QGuiApplication::screenAt(QCursor::pos());
    const QScreen *const screen = under != nullptr ? under : QGuiApplication::primaryScreen();
    if (screen == nullptr)
        return setFixedSize(windowWidth, windowHeight);
    const QRect free = screen->availableGeometry();
    const int room = free.height() - frameHeight;
    setFixedSize(windowWidth, std::min(windowHeight, room));
    move(free.topLeft()
         + QPoint((free.width() - width()) / 2,
                  std::min((free.height() - height()) / 2, room - height())));
}

void PreferencesWindow::makeKeyAndOrderFront()
{
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
}

void PreferencesWindow::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    Q_EMIT closed();
}

/// Texts are laid out once: where the desktop's font changes, they are so anew.
void PreferencesWindow::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() != QEvent::FontChange || m_view == nullptr)
        return;
    const int scrolled = m_view->column().verticalScrollBar()->value();
    buildView();
    m_view->setVisible(true);
    m_view->column().verticalScrollBar()->setValue(scrolled);
}

} // namespace lumacap
