#include "SelectionFixture.h"
#include "harness/OpenMenu.h"
#include "harness/PlainWindow.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"

#include <QPainter>

#include <list>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// A person selects what other programs have on the screen.
struct WindowSelectionTest : SelectionFixture {
    void start(const Settings &settings = {})
    {
        SelectionFixture::start();
        screen->lower();
        set(settings);
    }

    /// A white window without a frame.
    QImage addWindow(const QRect &area)
    {
        windows.emplace_back(desktop->server().display(), area);
        windows.back().renounceDecoration();
        windows.back().show();
        windows.back().requireManaged();
        return shownOn(desktop->server().display(), area);
    }

    /// The picture that was saved by Return.
    QImage confirmed()
    {
        press(u"Return"_s);
        return savedPicture();
    }

    std::list<PlainWindow> windows;
};

TEST_F(WindowSelectionTest, aClickedWindowIsSavedAndNothingElse)
{
    start();
    const QImage expected = addWindow({201, 151, 233, 117});
    openOverlay();

    click({300, 200});

    EXPECT_EQ(differingPixels(expected, confirmed()), 0);
}

TEST_F(WindowSelectionTest, aClickedWindowIsSavedWithItsDecoration)
{
    start();
    const auto window = PlainWindow::shown(desktop->server().display(), {201, 151, 233, 117});
    window.requireManaged();
    const QRect frame = window.outermostFrame();
    ASSERT_GT(frame.height(), 117);
    openOverlay();

    click({300, 200});

    EXPECT_EQ(confirmed().size(), frame.size());
}

TEST_F(WindowSelectionTest, theWindowInFrontIsSelected)
{
    start();
    addWindow({200, 150, 200, 150});
    const QImage front = addWindow({300, 200, 220, 130});
    openOverlay();

    click({350, 250});

    EXPECT_EQ(differingPixels(front, confirmed()), 0);
}

TEST_F(WindowSelectionTest, theWindowBehindIsSelectedWhereItIsSeen)
{
    start();
    const QImage back = addWindow({200, 150, 200, 150});
    addWindow({300, 200, 220, 130});
    openOverlay();

    click({210, 160});

    EXPECT_EQ(differingPixels(back, confirmed()), 0);
}

TEST_F(WindowSelectionTest, aDoubleClickSelectsTheWindowToo)
{
    start();
    const QImage expected = addWindow({200, 150, 200, 100});
    openOverlay();

    input({u"mousemove"_s, u"300"_s, u"200"_s, u"click"_s, u"--repeat"_s, u"2"_s, u"1"_s});

    EXPECT_EQ(differingPixels(expected, confirmed()), 0);
}

TEST_F(WindowSelectionTest, theOtherButtonsSelectNothing)
{
    start();
    addWindow({200, 150, 200, 100});
    openOverlay();

    for (const QString &button : {u"2"_s, u"3"_s}) {
        input({u"mousemove"_s, u"300"_s, u"200"_s, u"click"_s, button});
        input({u"mousedown"_s, button, u"mousemove"_s, u"500"_s, u"400"_s, u"mouseup"_s, button});
    }

    EXPECT_EQ(confirmed().size(), QSize(800, 600));
}

TEST_F(WindowSelectionTest, aClickOnNothingKeepsTheSelection)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});
    drag({100, 100}, {300, 250});

    click({600, 500});

    EXPECT_EQ(differingPixels(expected, confirmed()), 0);
}

TEST_F(WindowSelectionTest, withAutoConfirmAClickOnAWindowSavesAndOneOnNothingDoesNot)
{
    start({{u"autoConfirmSelection"_s, u"true"_s}});
    const QImage expected = addWindow({200, 150, 200, 100});
    openOverlay();

    click({600, 500});
    // Had that confirmed, this click would go to the window itself.
    click({300, 200});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(WindowSelectionTest, anOpenMenuIsInThePictureAndClosesAtTheFirstPress)
{
    start();
    const QRect menuArea(120, 110, 150, 120);
    OpenMenu menu(desktop->server().display(), menuArea);
    QImage expected = screen->expected({100, 100, 301, 203});
    QPainter(&expected).fillRect(menuArea.translated(-100, -100), QColor(0xd0, 0xd0, 0xd0));
    openOverlay();

    click({600, 500});
    ASSERT_TRUE(waitFor([&menu] { return !menu.isOpen(); }));
    drag({100, 100}, {401, 303});

    EXPECT_EQ(differingPixels(expected, confirmed()), 0);
}

} // namespace
} // namespace lumacap::harness
