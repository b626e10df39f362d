#include "platform/x11/X11OverlaySurface.h"

#include "platform/x11/HeldKeys.h"
#include "platform/x11/KeyboardGrab.h"
#include "platform/x11/MonitorWatch.h"
#include "platform/x11/Monitors.h"
#include "platform/xcb/Connection.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWindow>

#include <cmath>
#include <utility>

#include <qguiapplication_platform.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

namespace lumacap::x11 {

namespace {

/// The connection that the toolkit's windows belong to. What is asked there is done in order with
/// what the toolkit asks.
xcb_connection_t *toolkitConnection()
{
    const auto *const native = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    Q_ASSERT_X(native != nullptr, "X11OverlaySurface", "the toolkit shows its windows elsewhere");
    return native->connection();
}

/// The points that cover a frame. A factor that does not divide the frame makes them reach over its
/// edges by less than a point.
QRect pointsOver(const QRect &frame, double factor)
{
    return {frame.topLeft(),
            QSize(static_cast<int>(std::ceil(frame.width() / factor)),
                  static_cast<int>(std::ceil(frame.height() / factor)))};
}

/// Cuts off what of the window, which has the size `whole`, reaches over a frame of `size` root
/// pixels.
void cutTo(QSize size, QSizeF whole, std::uint32_t window)
{
    constexpr std::uint8_t outerShape = 0;
    auto *const raw = toolkitConnection();
    xcb_discard_reply(raw, xcb_xfixes_query_version(raw, 4, 0).sequence);
    if (whole == size) {
        xcb_xfixes_set_window_shape_region(raw, window, outerShape, 0, 0, XCB_NONE);
        return;
    }
    const xcb_rectangle_t area{0, 0, static_cast<std::uint16_t>(size.width()),
                               static_cast<std::uint16_t>(size.height())};
    const std::uint32_t region = xcb_generate_id(raw);
    xcb_xfixes_create_region(raw, region, 1, &area);
    xcb_xfixes_set_window_shape_region(raw, window, outerShape, 0, 0, region);
    xcb_xfixes_destroy_region(raw, region);
}

} // namespace

X11OverlaySurface::X11OverlaySurface(xcb::Connection &connection)
    : m_connection(connection)
{
}

X11OverlaySurface::~X11OverlaySurface() = default;

void X11OverlaySurface::cover(QWidget &widget, const Screen &screen,
                              std::function<void()> onScreenChanged)
{
    end();
    ++m_coverings;
    m_widget = &widget;
    m_onScreenChanged = std::move(onScreenChanged);
    connect(&widget, &QObject::destroyed, this, [this] { end(); });

    // Listened first and looked then, so that no change falls between the two.
    m_watch = std::make_unique<MonitorWatch>(m_connection, screen, [this] { tellScreenChanged(); });
    const auto frame = frameOf(screen, currentMonitors(m_connection));
    QScreen *const toolkitScreen = frame ? toolkitScreenAt(frame->topLeft()) : nullptr;
    if (!frame || toolkitScreen == nullptr) {
        tellScreenChanged();
        return;
    }
    show(*frame, *toolkitScreen);
    takeFocus();
    m_heldKeys.reset();
    m_keyboardGrab = std::make_unique<KeyboardGrab>(*widget.windowHandle());
    widget.windowHandle()->installEventFilter(this);
}

void X11OverlaySurface::show(const QRect &frame, QScreen &screen)
{
    m_widget->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    m_widget->setScreen(&screen);
    const QRect points = pointsOver(frame, screen.devicePixelRatio());
    m_widget->setGeometry(points);
    m_window = static_cast<std::uint32_t>(m_widget->winId());
    // What was on the screen stays until the first painting.
    const std::uint32_t noBackground = XCB_BACK_PIXMAP_NONE;
    xcb_change_window_attributes(toolkitConnection(), m_window, XCB_CW_BACK_PIXMAP, &noBackground);
    if (m_connection.hasFixes())
        cutTo(frame.size(), QSizeF(points.size()) * screen.devicePixelRatio(), m_window);
    m_widget->show();
    m_widget->raise();
}

/// Who has it now is who gets it back.
void X11OverlaySurface::takeFocus()
{
    const auto now = currentFocus(m_connection);
    if (now && now->window == m_window)
        return;
    m_earlierFocus = now;
    xcb_set_input_focus(toolkitConnection(), XCB_INPUT_FOCUS_POINTER_ROOT, m_window,
                        XCB_CURRENT_TIME);
    xcb_flush(toolkitConnection());
}

bool X11OverlaySurface::eventFilter(QObject *watched, QEvent *event)
{
    // The person may have been busy on another screen, or with a window that came up meanwhile.
    if (event->type() == QEvent::MouseButtonPress && m_keyboardGrab) {
        takeFocus();
        m_keyboardGrab->ask();
    }
    return QObject::eventFilter(watched, event);
}

void X11OverlaySurface::uncover(QWidget &widget)
{
    if (m_widget == &widget)
        end();
}

/// Also on the widget's own end, when its window has gone already and the server has released the
/// input.
void X11OverlaySurface::end()
{
    m_onScreenChanged = nullptr;
    m_watch.reset();
    if (const auto earlier = std::exchange(m_earlierFocus, std::nullopt))
        giveFocusBack(m_connection, *earlier, m_window);
    if (m_keyboardGrab)
        letKeyboardGo();
    if (!m_widget)
        return;
    disconnect(m_widget, nullptr, this, nullptr);
    if (m_widget->windowHandle() != nullptr)
        m_widget->windowHandle()->removeEventFilter(this);
    m_widget->hide();
    m_widget.clear();
    xcb_flush(toolkitConnection());
}

/// To whoever has the focus, but for the keys that are held.
void X11OverlaySurface::letKeyboardGo()
{
    // Asked before, so that the two requests, to let go and to hold on, travel together: a key that
    // is repeated doesn't get between them.
    const KeyCodes held = heldKeys(toolkitConnection());
    m_keyboardGrab.reset();
    m_heldKeys = std::make_unique<HeldKeys>(toolkitConnection(), held);
}

/// On the next turn of the loop, so that the answer may uncover and destroy whatever it likes.
void X11OverlaySurface::tellScreenChanged()
{
    QMetaObject::invokeMethod(
        this,
        [this, covering = m_coverings] {
            if (covering == m_coverings && m_onScreenChanged)
                std::exchange(m_onScreenChanged, nullptr)();
        },
        Qt::QueuedConnection);
}

} // namespace lumacap::x11
