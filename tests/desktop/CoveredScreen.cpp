#include "CoveredScreen.h"

#include "harness/Pictures.h"
#include "harness/PopUps.h"
#include "harness/ShownPicture.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <algorithm>
#include <chrono>

#include <xcb/xcb.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

DesktopOptions sideBySide(WindowManager windowManager)
{
    return {.server = {.size = {1440, 700},
                       .monitors = {{u"LEFT"_s, leftMonitor, Role::Primary},
                                    {u"RIGHT"_s, rightMonitor}}},
            .windowManager = windowManager};
}

DesktopOptions outputs()
{
    return {.server = {.kind = ServerKind::RealOutputs,
                       .monitors = {{u"DUMMY0"_s, leftMonitor, Role::Primary},
                                    {u"DUMMY1"_s, rightMonitor},
                                    {u"DUMMY2"_s, {0, 700, 640, 480}}}}};
}

QStringList overlayProbe(const QStringList &words)
{
    return QStringList{testedProgram(QStringLiteral(LUMACAP_OVERLAY_PROBE))} + words;
}

bool says(const Process &process, const QByteArray &line)
{
    return waitFor([&] { return process.output().contains(line + '\n'); });
}

bool isInputFree(const QByteArray &display)
{
    const XConnection connection(display);
    auto *const raw = connection.raw();
    const XReply<xcb_grab_pointer_reply_t> pointer(xcb_grab_pointer_reply(
        raw,
        xcb_grab_pointer(raw, 0, connection.root(), XCB_EVENT_MASK_BUTTON_PRESS,
                         XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC, 0, 0, XCB_CURRENT_TIME),
        nullptr));
    const XReply<xcb_grab_keyboard_reply_t> keyboard(
        xcb_grab_keyboard_reply(raw,
                                xcb_grab_keyboard(raw, 0, connection.root(), XCB_CURRENT_TIME,
                                                  XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                                nullptr));
    return pointer && pointer->status == XCB_GRAB_STATUS_SUCCESS && keyboard
        && keyboard->status == XCB_GRAB_STATUS_SUCCESS;
}

bool isCovered(const QByteArray &display)
{
    return std::ranges::count(popUps(XConnection(display)), rightMonitor) > 0;
}

void outlastTheKeyboardLimit()
{
    const auto start = std::chrono::steady_clock::now();
    require("two seconds and more",
            [start] { return std::chrono::steady_clock::now() - start > 3s; });
}

void CoveredScreenTest::start(const DesktopOptions &options)
{
    desktop = std::make_unique<PrivateDesktop>(options);
    display = desktop->server().display();
}

Process &CoveredScreenTest::run(const QString &mode, int index, const QStringList &more)
{
    const QStringList words{mode, QString::number(index)};
    return desktop->start(u"probe"_s, overlayProbe(words + more));
}

Process &CoveredScreenTest::coverRight(const QString &mode)
{
    Process &process = run(mode, 1);
    requireShown(rightMonitor);
    return process;
}

void CoveredScreenTest::requireShown(const QRect &monitor) const
{
    const QImage picture = noisePicture(monitor.size());
    require("the covered screen",
            [&] { return differingPixels(picture, shownOn(display, monitor)) == 0; });
}

void CoveredScreenTest::xdotool(const QStringList &words) const
{
    ASSERT_EQ(desktop->ask(QStringList{u"xdotool"_s} + words).ending, Ending{});
}

void CoveredScreenTest::press(const QString &key) const
{
    xdotool({u"key"_s, key});
}

void CoveredScreenTest::click(QPoint place) const
{
    xdotool({u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s,
             u"1"_s});
}

} // namespace lumacap::harness
