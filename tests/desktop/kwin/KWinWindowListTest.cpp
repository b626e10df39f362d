#include "ListedWindows.h"
#include "harness/Agent.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <QDBusMessage>
#include <QDBusReply>

#include <csignal>
#include <memory>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using testing::ElementsAre;

struct KWinWindowListTest : testing::Test {
    Process &open(const char *title, QSize size = {300, 200})
    {
        Process &window =
            desktop.startWindow({.appId = u"org.example.%1"_s.arg(QLatin1StringView(title)),
                                 .title = QString::fromLatin1(title),
                                 .size = size});
        require("the keyboard", [&window] { return window.output().contains("focus\n"); });
        return window;
    }
    void follow() { list = std::make_unique<ListedWindows>(desktop, QStringList{u"follow"_s}); }
    void expectTitles(const std::vector<std::string> &titles) const
    {
        std::ignore = waitFor([&] { return list->titles() == titles; });
        EXPECT_EQ(list->titles(), titles);
    }
    /// Has KWin do to the active window what one of its own shortcuts would.
    void invoke(const QString &shortcut)
    {
        auto call = QDBusMessage::createMethodCall(u"org.kde.kglobalaccel"_s, u"/component/kwin"_s,
                                                   u"org.kde.kglobalaccel.Component"_s,
                                                   u"invokeShortcut"_s);
        call << shortcut;
        EXPECT_EQ(desktop.connection().call(call).type(), QDBusMessage::ReplyMessage);
    }
    bool isFollowing()
    {
        auto question = QDBusMessage::createMethodCall(
            u"org.kde.KWin"_s, u"/Scripting"_s, u"org.kde.kwin.Scripting"_s, u"isScriptLoaded"_s);
        question << u"lumacap-windows"_s;
        return QDBusReply<bool>(desktop.connection().call(question)).value();
    }

    KWinDesktop desktop{KWinOptions{.size = {1000, 800}}};
    std::unique_ptr<ListedWindows> list;
};

TEST_F(KWinWindowListTest, theFrontmostWindowIsFirstAndEachIsWhole)
{
    const Process &lower = open("lower");
    open("upper", {400, 250});
    follow();
    expectTitles({"upper", "lower"});
    const ListedWindow window = list->window("lower");
    EXPECT_EQ(window.process, lower.pid());
    EXPECT_EQ(window.owner, "org.example.lower");
    EXPECT_EQ(window.layer, 0);
    EXPECT_EQ(window.frame.size(), QSizeF(300, 200));
    // Where the list says it is, there it is to be clicked: above it lies nothing but the pointer.
    // Again until it comes: KWin lists windows before presses reach them.
    EXPECT_TRUE(waitFor([&] {
        desktop.input().click(window.frame.topLeft().toPoint() + QPoint(2, 2));
        return waitFor([&] { return lower.output().contains("button 272\n"); },
                       std::chrono::seconds(2));
    }));
}

TEST_F(KWinWindowListTest, theFrameIsWithTheDecorationAndWithoutTheShadow)
{
    Agent agent(desktop);
    agent.requireReady();
    ASSERT_TRUE(agent.activate(u"preferences"_s));
    follow();
    expectTitles({"Lumacap"});
    const QRect frame = list->window("Lumacap").frame.toRect();
    // A light title bar on a black desktop, on which the shadow is not seen.
    const auto lightness = [&](QPoint place) {
        return desktop.look(desktop.outputs().front().name).pixelColor(place).lightness();
    };
    constexpr int beside = 3;
    EXPECT_TRUE(waitFor(
        [&] { return lightness(frame.topLeft() + QPoint(frame.width() / 4, beside)) > 200; }));
    EXPECT_LT(lightness(frame.topLeft() + QPoint(frame.width() / 4, -beside)), 50);
    EXPECT_LT(lightness({frame.x() + frame.width() / 4, frame.y() + frame.height() + beside}), 50);
}

TEST_F(KWinWindowListTest, aRaisedWindowComesFirst)
{
    open("lower");
    open("upper", {400, 250});
    follow();
    expectTitles({"upper", "lower"});
    invoke(u"Window Lower"_s);
    expectTitles({"lower", "upper"});
}

TEST_F(KWinWindowListTest, windowsThatComeAndGoAreFollowed)
{
    open("first");
    follow();
    expectTitles({"first"});
    Process &second = open("second");
    expectTitles({"second", "first"});
    desktop.stop(second);
    expectTitles({"first"});
}

TEST_F(KWinWindowListTest, aMinimisedWindowIsLeftOut)
{
    open("stays");
    open("goes");
    follow();
    expectTitles({"goes", "stays"});
    invoke(u"Window Minimize"_s);
    expectTitles({"stays"});
}

TEST_F(KWinWindowListTest, whatIsHiddenToShowTheDesktopIsLeftOut)
{
    open("first");
    open("second");
    invoke(u"Show Desktop"_s);
    follow();
    require("a list", [&] { return !list->history().empty(); });
    expectTitles({});
    invoke(u"Show Desktop"_s);
    follow(); // KWin 5.27 tells no script of the change
    expectTitles({"second", "first"});
}

TEST_F(KWinWindowListTest, aMovedWindowIsWhereItIs)
{
    open("moves");
    follow();
    expectTitles({"moves"});
    invoke(u"Window Quick Tile Left"_s);
    EXPECT_TRUE(waitFor([&] { return list->window("moves").frame.topLeft() == QPointF(0, 0); }))
        << list->window("moves");
}

TEST_F(KWinWindowListTest, aWindowOfAnotherDesktopIsLeftOut)
{
    auto add =
        QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/VirtualDesktopManager"_s,
                                       u"org.kde.KWin.VirtualDesktopManager"_s, u"createDesktop"_s);
    add << 1U << u"another"_s;
    ASSERT_EQ(desktop.connection().call(add).type(), QDBusMessage::ReplyMessage);
    open("stays");
    open("goes");
    follow();
    expectTitles({"goes", "stays"});
    invoke(u"Window to Desktop 2"_s);
    expectTitles({"stays"});
    invoke(u"Switch to Desktop 2"_s);
    expectTitles({"goes"});
}

TEST_F(KWinWindowListTest, whatLiesUnderAllWindowsIsBelowTheOrdinaryOnes)
{
    desktop.paint(desktop.outputs().front().name, noisePicture({1000, 800}));
    open("above");
    follow();
    require("both", [&] { return list->now().size() == 2; });
    EXPECT_EQ(list->now().front().title, "above");
    EXPECT_LT(list->now().back().layer, 0);
}

TEST_F(KWinWindowListTest, nothingIsLeftInKWinAfterARelease)
{
    open("window");
    list = std::make_unique<ListedWindows>(desktop, QStringList{u"release"_s});
    require("both lists", [&] { return list->history().size() == 2; });
    EXPECT_EQ(list->history().front().size(), 1U);
    EXPECT_TRUE(list->history().back().empty());
    EXPECT_TRUE(waitFor([&] { return !isFollowing(); }));
}

TEST_F(KWinWindowListTest, whatAKilledProcessLeftIsReplaced)
{
    open("window");
    follow();
    expectTitles({"window"});
    list->process().send(SIGKILL);
    require("the end", [&] { return list->process().ending().has_value(); });
    EXPECT_TRUE(isFollowing());
    follow();
    expectTitles({"window"});
    open("another");
    expectTitles({"another", "window"});
}

TEST_F(KWinWindowListTest, whatAKilledProcessLeftGoesWhenAnAgentStarts)
{
    open("window");
    follow();
    expectTitles({"window"});
    list->process().send(SIGKILL);
    require("the end", [&] { return list->process().ending().has_value(); });
    EXPECT_TRUE(isFollowing());
    Agent agent(desktop);
    agent.requireReady();
    EXPECT_TRUE(waitFor([&] { return !isFollowing(); }));
}

} // namespace
} // namespace lumacap::harness
