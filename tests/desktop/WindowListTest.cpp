#include "StandInManager.h"
#include "WindowListFixture.h"

#include <QFile>

#include <unistd.h>
#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct WindowList : WindowListFixture {
    void startBare(const ServerOptions &server = {})
    {
        start({.server = server, .windowManager = WindowManager::Nobody});
    }

    void install(const QString &id, const QByteArray &name, const QByteArray &more = {}) const
    {
        const QString path = desktop->folder(u"data/applications"_s) + u'/' + id + u".desktop"_s;
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_GT(file.write("[Desktop Entry]\nType=Application\nExec=/bin/true\nName=" + name
                             + '\n' + more + '\n'),
                  0);
    }
};

TEST_F(WindowList, withoutAWindowManagerHasTheOrderOfTheRootsChildren)
{
    startBare();
    const PlainWindow &one = addShown("one", {100, 100, 200, 100});
    addShown("two", {150, 120, 200, 100});
    add("never shown", {150, 120, 200, 100});
    follow();
    expectTitles({"two", "one"});
    expectFrame("one", {100, 100, 200, 100});
    EXPECT_EQ(list->window("one").layer, 0);

    one.raise();
    expectTitles({"one", "two"});
    one.place({30, 40, 50, 60});
    expectFrame("one", {30, 40, 50, 60});
    one.setBorder(4);
    expectFrame("one", {30, 40, 58, 68});
}

TEST_F(WindowList, withoutAWindowManagerHasMenusAboveTheThirdLayer)
{
    startBare();
    addShown("window", {100, 100, 200, 100});
    addShown("menu", {120, 110, 80, 200}, Placement::ByItself);
    addShown("dialog", {130, 130, 100, 80});
    follow();

    expectTitles({"dialog", "menu", "window"});
    expectLayer("menu", [](int layer) { return layer > 3; });
    expectLayer("dialog", [](int layer) { return layer == 0; });
}

TEST_F(WindowList, findsTheClientInAFrameOfAManagerThatListsNone)
{
    startBare();
    const PlainWindow frame(display, {100, 100, 210, 130}, Placement::ByItself);
    const PlainWindow inner(display, {5, 25, 200, 100}, Placement::ByItself, frame.id());
    const PlainWindow client(display, {0, 0, 200, 100}, Placement::ByManager, inner.id());
    client.setTitle("framed");
    client.setNumbers("WM_STATE", {1, 0}, "WM_STATE");
    for (const PlainWindow *window : {&frame, &inner, &client})
        window->show();
    follow();

    expectTitles({"framed"});
    expectFrame("framed", {100, 100, 210, 130});
    EXPECT_EQ(list->window("framed").number, client.id());
    EXPECT_EQ(list->window("framed").layer, 0);
}

TEST_F(WindowList, tellsTheOlderTitleWhereThereIsNoOther)
{
    startBare();
    const PlainWindow &window = addShown("new", {100, 100, 200, 100});
    window.setText("WM_NAME", "STRING", "ol\xe9");
    follow();
    expectTitles({"new"});

    xcb_delete_property(window.connection().raw(), window.id(),
                        window.connection().atom("_NET_WM_NAME"));
    window.connection().finish();
    expectTitles({"ol\xc3\xa9"});
    window.setText("WM_NAME", "STRING", "older");
    expectTitles({"older"});
}

TEST_F(WindowList, tellsTheProcessThatTheWindowNamesElseTheServerKnows)
{
    startBare();
    const PlainWindow &window = addShown("window", {100, 100, 200, 100});
    follow();
    expectTitles({"window"});
    EXPECT_EQ(list->window("window").process, getpid());

    window.setNumbers("_NET_WM_PID", {4'242'424});
    EXPECT_TRUE(waitFor([this] { return list->window("window").process == 4'242'424; }))
        << list->window("window");
}

TEST_F(WindowList, isThereOnAServerThatKnowsNoProcesses)
{
    startBare({.arguments = {u"-extension"_s, u"X-Resource"_s}});
    addShown("window", {100, 100, 200, 100});
    follow();

    expectTitles({"window"});
    constexpr int absent = -1;
    EXPECT_EQ(list->window("window").process, absent);
    EXPECT_EQ(list->window("window").owner, "");
}

TEST_F(WindowList, tellsTheApplicationsNameFromItsDesktopEntry)
{
    startBare();
    install(u"org.example.Editor"_s, "Text Editor",
            "Name[fr]=\xc3\x89"
            "diteur\nStartupWMClass=other");
    desktop->set("LC_ALL", "fr_FR.UTF-8");
    const PlainWindow &window = addShown("window", {100, 100, 200, 100});
    follow();
    expectTitles({"window"});
    const QByteArray own = QFile(u"/proc/self/comm"_s).exists() ? "desktop_window_" : "";
    EXPECT_EQ(list->window("window").owner, own.toStdString());

    window.setText("WM_CLASS", "STRING", QByteArray("edit\0Unknown\0", 13));
    expectOwner("window", "Unknown");
    window.setText("WM_CLASS", "STRING", QByteArray("other\0Unknown\0", 14));
    expectOwner("window",
                "\xc3\x89"
                "diteur");
    window.setText("WM_CLASS", "STRING", QByteArray("edit\0Unknown\0", 13));
    expectOwner("window", "Unknown");
    window.setText("_GTK_APPLICATION_ID", "UTF8_STRING", "org.example.Editor");
    expectOwner("window",
                "\xc3\x89"
                "diteur");
}

TEST_F(WindowList, countsInPointsOfTheMainScreenFromItsUpperLeft)
{
    startBare({.size = {1440, 700},
               .monitors = {{u"LEFT"_s, {0, 0, 640, 480}},
                            {u"MAIN"_s, {640, 100, 800, 600}, Role::Primary}}});
    addShown("left", {20, 30, 200, 100});
    addShown("main", {650, 110, 201, 100});
    addShown("nowhere", {20, 500, 200, 100});
    follow();
    expectTitles({"main", "left"});
    expectFrame("main", {10, 10, 201, 100});
    expectFrame("left", {-620, -70, 200, 100});

    desktop->set("QT_SCALE_FACTOR", "2");
    follow();
    expectTitles({"main", "left"});
    expectFrame("main", {5, 5, 100.5, 50});
    expectFrame("left", {-310, -35, 100, 50});
}

TEST_F(WindowList, hasNoShadowThatAProgramPaints)
{
    startBare();
    const PlainWindow &window = addShown("window", {100, 100, 200, 100});
    window.setNumbers("_GTK_FRAME_EXTENTS", {10, 12, 8, 14});
    follow();
    expectFrame("window", {110, 108, 178, 78});

    window.setNumbers("_GTK_FRAME_EXTENTS", {0, 0, 0, 0});
    expectFrame("window", {100, 100, 200, 100});
}

TEST_F(WindowList, leavesOutAWindowThatIsGoneBeforeItIsAsked)
{
    startBare();
    const PlainWindow &stays = addShown("stays", {100, 100, 200, 100});
    PlainWindow &goes = addShown("goes", {100, 100, 200, 100});
    const StandInManager manager(display);
    manager.list({goes.id(), stays.id(), 0xffffff});
    goes.destroy();
    follow();

    expectTitles({"stays"});
}

TEST_F(WindowList, believesAComposingManagerWhichWindowsAreHidden)
{
    startBare();
    const PlainWindow &here = addShown("here", {100, 100, 200, 100});
    const PlainWindow &there = addShown("there", {150, 120, 200, 100});
    here.setNumbers("_NET_WM_DESKTOP", {0});
    there.setNumbers("_NET_WM_DESKTOP", {1});
    const StandInManager manager(display);
    manager.list({here.id(), there.id()});
    manager.setCurrentDesktop(0);
    follow();
    // Without a compositor a mapped window is seen, on whichever monitor its desktop is shown.
    expectTitles({"there", "here"});

    manager.compose();
    manager.setCurrentDesktop(0);
    expectTitles({"here"});
    manager.setCurrentDesktop(1);
    expectTitles({"there"});
    here.setNumbers("_NET_WM_DESKTOP", {1});
    expectTitles({"there", "here"});
    there.setAtoms("_NET_WM_STATE", {"_NET_WM_STATE_HIDDEN"});
    expectTitles({"here"});
}

TEST_F(WindowList, hasAllWindowsAgainWhenTheManagerCrashes)
{
    startBare();
    addShown("unlisted", {100, 100, 200, 100});
    const PlainWindow &listed = addShown("listed", {150, 120, 200, 100});
    const StandInManager manager(display);
    manager.list({listed.id()});
    follow();
    expectLayer("listed", [](int layer) { return layer == 0; });
    expectLayer("unlisted", [](int layer) { return layer > 3; });

    manager.vanish();
    expectLayer("unlisted", [](int layer) { return layer == 0; });
    expectTitles({"listed", "unlisted"});
}

} // namespace
} // namespace lumacap::harness
