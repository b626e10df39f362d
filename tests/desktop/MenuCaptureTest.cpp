#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/FadingMenu.h"
#include "harness/PaintedScreen.h"
#include "harness/PopUps.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"
#include "harness/XEmbedTray.h"
#include "harness/XfcePanel.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// A capture chosen in a tray's menu over a screen that is known.
struct MenuCaptureTest : testing::Test {
    void click(const QPoint &place, int button)
    {
        screen.placePointer(place);
        desktop.ask({u"xdotool"_s, u"click"_s, QString::number(button)});
    }

    /// The menu that a click on `icon` opens; null when there is none.
    QRect menuOf(const QPoint &icon, int button)
    {
        const auto before = popUps(connection);
        const auto isMenu = [&before](const QRect &area) { // and no tip
            return area.height() > 100 && std::ranges::find(before, area) == before.end();
        };
        QRect menu;
        const auto isOpen = [&] {
            const auto now = popUps(connection);
            const auto found = std::ranges::find_if(now, isMenu);
            menu = found != now.end() ? *found : QRect();
            return found != now.end();
        };
        // A tray that has just started may not listen yet.
        std::ignore = waitFor([&] {
            click(icon, button);
            return waitFor(isOpen, 3s);
        });
        return menu;
    }

    /// Takes a picture by the menu of `icon`. It must show the painted screen wherever the tray
    /// along the top is not.
    void expectNoMenuInThePicture(const QPoint &icon, int button)
    {
        const QRect menu = menuOf(icon, button);
        ASSERT_FALSE(menu.isNull());
        const auto isClosed = [&] {
            const auto now = popUps(connection);
            return std::ranges::find(now, menu) == now.end();
        };
        // A menu that has just opened may not listen yet.
        ASSERT_TRUE(waitFor([&] {
            click(menu.topLeft() + QPoint(60, 20), 1);
            return waitFor(isClosed, 1s);
        }));
        const QImage seen = clipboardPicture(desktop);
        const QRect below(0, XfcePanel::height, 640, 480 - XfcePanel::height);
        EXPECT_EQ(differingPixels(screen.expected(below), seen.copy(below)), 0);
    }

    PrivateDesktop desktop{smallScreen()};
    PaintedScreen screen{desktop.server().display(), noisePicture({640, 480})};
    XConnection connection{desktop.server().display()};
};

TEST_F(MenuCaptureTest, doesNotShowTheMenuOfAPanel)
{
    screen.lower();
    XfcePanel panel(desktop);
    const Agent agent(desktop);
    panel.requireIcon();
    expectNoMenuInThePicture(XfcePanel::iconCentre(), 1);
}

TEST_F(MenuCaptureTest, doesNotShowThePanelsMenuFadingOutUnderACompositor)
{
    screen.lower();
    desktop.start(u"compositor"_s,
                  {u"picom"_s, u"--backend"_s, u"xrender"_s, u"--config"_s, u"/dev/null"_s,
                   u"--fading"_s, u"--fade-in-step"_s, u"1"_s, u"--fade-out-step"_s, u"0.03"_s});
    ASSERT_TRUE(waitFor([this] { return desktop.selectionOwner("_NET_WM_CM_S0") != 0; }));
    XfcePanel panel(desktop);
    const Agent agent(desktop);
    panel.requireIcon();
    expectNoMenuInThePicture(XfcePanel::iconCentre(), 1);
}

TEST_F(MenuCaptureTest, doesNotShowTheMenuOfAnOlderTray)
{
    XEmbedTray tray(desktop.server().display());
    const Agent agent(desktop);
    ASSERT_TRUE(waitFor([&tray] { return tray.dockedCount() == 1 && tray.isFirstIconVisible(); }));
    expectNoMenuInThePicture(XEmbedTray::firstIconCentre(), 3);
}

TEST_F(MenuCaptureTest, waitsForAMenuThatFadesOut)
{
    TrayHost tray(desktop.bus().address());
    const Agent agent(desktop);
    tray.requireItem();
    // On a busy machine the fading itself may halt for so long that it looks like its end.
    const auto fadedSteadily = [&] {
        ClipboardWatch watch(desktop.server().display());
        FadingMenu menu(desktop.server().display(), {10, 50, 200, 150});
        EXPECT_TRUE(tray.click(fullScreenTitle()));
        menu.fadeOut(50);
        EXPECT_TRUE(waitFor([&watch] { return watch.changes() > 0; }));
        return menu.longestStep() < 100ms;
    };
    ASSERT_TRUE(waitFor(fadedSteadily));
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
}

TEST_F(MenuCaptureTest, isTakenOfAScreenThatNeverRests)
{
    TrayHost tray(desktop.bus().address());
    const Agent agent(desktop);
    tray.requireItem();
    const FadingMenu film(desktop.server().display(), {10, 50, 200, 150});
    EXPECT_TRUE(tray.click(fullScreenTitle()));
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
}

} // namespace
} // namespace lumacap::harness
