#include "WindowListFixture.h"

#include <QFile>

#include <chrono>
#include <string>

#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// What it takes to follow the windows.
struct WindowFollowing : WindowListFixture {
    /// The events of `window` that any program of the desktop has asked for.
    std::uint32_t watchedEvents(const PlainWindow &window) const
    {
        xcb_connection_t *const raw = window.connection().raw();
        const XReply<xcb_get_window_attributes_reply_t> reply(xcb_get_window_attributes_reply(
            raw, xcb_get_window_attributes(raw, window.id()), nullptr));
        return reply ? reply->all_event_masks : 0;
    }
};

TEST_F(WindowFollowing, readsWhatGoesOnChangingAFewTimesASecond)
{
    start({.windowManager = WindowManager::Nobody});
    const PlainWindow &window = addShown("0", {100, 100, 200, 100});
    follow();
    expectTitles({"0"});

    int changes = 0;
    const auto change = [&] {
        window.setTitle(QByteArray::number(++changes));
        return false;
    };
    ASSERT_FALSE(waitFor(change, 1s));
    EXPECT_LT(list->history().size(), 20U) << "of " << changes;
    expectTitles({std::to_string(changes)});
}

TEST_F(WindowFollowing, watchesWindowsNoLongerThanItIsAskedTo)
{
    start({.windowManager = WindowManager::Nobody});
    const PlainWindow &window = addShown("window", {100, 100, 200, 100});
    EXPECT_EQ(watchedEvents(window), 0U);
    follow();
    expectTitles({"window"});
    EXPECT_EQ(watchedEvents(window), std::uint32_t{XCB_EVENT_MASK_PROPERTY_CHANGE});
    desktop->stop(list->process());

    const ListedWindows released(*desktop, {u"release"_s});
    ASSERT_TRUE(waitFor([&released] { return released.history().size() == 2; }));
    EXPECT_EQ(released.history().front().size(), 1U);
    EXPECT_TRUE(released.history().back().empty());
    EXPECT_TRUE(waitFor([&] { return watchedEvents(window) == 0; }));
    EXPECT_THAT(released.process().output().toStdString(), testing::HasSubstr("masks kept"));
}

TEST_F(WindowFollowing, keepsTheProgramAliveAndEndsWhileTheServerIsSilent)
{
    start({.windowManager = WindowManager::Nobody});
    addShown("window", {100, 100, 200, 100});
    const QString sign = desktop->folder(u"tmp"_s) + u"/go"_s;
    const ListedWindows waiting(*desktop, {u"after"_s, sign});
    ASSERT_TRUE(waitFor([&] { return waiting.process().output().contains("open"); }));

    const XConnection holder(display);
    xcb_grab_server(holder.raw());
    holder.finish();
    ASSERT_TRUE(QFile(sign).open(QIODevice::WriteOnly));
    EXPECT_TRUE(waitFor([&] { return waiting.process().output().count("turn") >= 3; }));
    EXPECT_TRUE(waiting.history().empty());
    EXPECT_TRUE(waitFor([&] { return !waiting.history().empty(); }, 60s));
    EXPECT_TRUE(waiting.now().empty());
    xcb_ungrab_server(holder.raw());
    holder.finish();
    EXPECT_EQ(waiting.process().ending(), std::nullopt);
}

} // namespace
} // namespace lumacap::harness
