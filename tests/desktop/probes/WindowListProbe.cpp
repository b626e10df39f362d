// A program that lists the windows as the product does, and says on standard output what it sees:
//   window-list-probe follow        the list, and again whenever it is another one; stays
//   window-list-probe release       the list, then releases it: what is left of it; stays
//   window-list-probe after FILE    says "open", waits for FILE to appear, then as `follow`, with
//                                   "turn" at each hundredth turn of the event loop
// A list is one line a window, frontmost first, of fields with tabs between, and a line "end".
#include "app/Desktop.h"
#include "app/Session.h"
#include "platform/Spawn.h"
#include "platform/xcb/Connection.h"

#include <QCoroTimer>
#include <QFile>
#include <QGuiApplication>
#include <QTimer>

#include <chrono>
#include <cstdio>

#include <xcb/xcb.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace lumacap;

namespace {

void say(const QString &line)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

QString line(const WindowRecord &record)
{
    const Rect<TopLeftGlobal> bounds = record.bounds.value_or(Rect<TopLeftGlobal>{});
    QStringList fields{QString::number(record.windowNumber.value_or(-1)),
                       QString::number(record.layer.value_or(-99)),
                       QString::number(record.ownerPID.value_or(-1))};
    for (const double number : {bounds.minX(), bounds.minY(), bounds.width(), bounds.height()})
        fields.append(QString::number(number));
    fields.append(record.ownerName.value_or(u"(no owner)"_s));
    fields.append(record.windowName.value_or(u"(no title)"_s));
    return fields.join(u'\t');
}

void say(const std::vector<WindowRecord> &windows)
{
    for (const WindowRecord &record : windows)
        say(line(record));
    say(u"end"_s);
}

QCoro::Task<> follow(const WindowList &list)
{
    std::vector<WindowRecord> said = list.windows();
    say(said);
    while (true) {
        co_await QCoro::sleepFor(2ms);
        const std::vector<WindowRecord> windows = list.windows();
        if (windows != said)
            say(windows);
        said = windows;
    }
}

/// The events of the root that the connection has asked for.
std::uint32_t rootMask(const xcb::Connection &connection)
{
    const auto asked = xcb_get_window_attributes(connection.raw(), connection.screen().root);
    const xcb::Owned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(connection.raw(), asked, nullptr));
    return reply ? reply->your_event_mask : 0;
}

/// Where there is no X server, there are no masks to be kept.
QCoro::Task<> release(WindowList &list)
{
    co_await list.prepare();
    say(list.windows());
    list.release();
    say(list.windows());
}

QCoro::Task<> release(WindowList &list, xcb::Connection &connection)
{
    // What another user of the same connection wants is not lost.
    constexpr std::uint32_t wanted = XCB_EVENT_MASK_FOCUS_CHANGE;
    xcb_change_window_attributes(connection.raw(), connection.screen().root, XCB_CW_EVENT_MASK,
                                 &wanted);
    co_await list.prepare();
    say(list.windows());
    const bool isKept = (rootMask(connection) & wanted) == wanted;
    list.release();
    say(isKept && rootMask(connection) == wanted ? u"masks kept"_s : u"masks lost"_s);
    say(list.windows());
}

QCoro::Task<> prepareAfter(WindowList &list, QString path)
{
    co_await QCoro::sleepFor(1ms); // the toolkit asks the server for more as its loop begins
    say(u"open"_s);
    while (!QFile::exists(path))
        co_await QCoro::sleepFor(2ms);
    int turns = 0;
    QTimer turning;
    QObject::connect(&turning, &QTimer::timeout, &turning, [&turns] {
        if (++turns % 100 == 0)
            say(u"turn"_s);
    });
    turning.start(1ms);
    co_await list.prepare();
    turning.stop();
    co_await follow(list);
}

QCoro::Task<> prepareAndFollow(WindowList &list)
{
    co_await list.prepare();
    co_await follow(list);
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const QStringList words = QGuiApplication::arguments();
    const Session session = Session::open();
    const Desktop desktop = makeDesktop(session);
    WindowList &list = *desktop.windowList;
    if (words.value(1) == "release"_L1)
        spawn(session.x11() != nullptr ? release(list, *session.x11()) : release(list));
    else if (words.value(1) == "after"_L1)
        spawn(prepareAfter(list, words.value(2)));
    else
        spawn(prepareAndFollow(list));
    return QGuiApplication::exec();
}
