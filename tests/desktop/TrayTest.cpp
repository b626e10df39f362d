#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Clipboard.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"
#include "harness/XEmbedTray.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// An entry as one line: label, shortcut, state.
std::string line(const MenuEntry &entry)
{
    if (entry.kind == MenuEntry::Kind::Separator)
        return "---";
    const QString state = entry.isEnabled ? QString() : u" (off)"_s;
    const QString shortcut =
        entry.shortcut.isEmpty() ? QString() : " ["_L1 + entry.shortcut + ']'_L1;
    return (entry.label + shortcut + state).toStdString();
}

std::vector<std::string> lines(TrayHost &tray)
{
    std::vector<std::string> lines;
    for (const MenuEntry &entry : tray.menu())
        lines.push_back(line(entry));
    return lines;
}

struct TrayTest : testing::Test {
    PrivateDesktop desktop{smallScreen()};
};

TEST_F(TrayTest, theMenuHasTheEntriesInOrder)
{
    TrayHost tray(desktop.bus().address());
    const Agent agent(desktop);
    tray.requireItem();
    EXPECT_THAT(lines(tray),
                testing::ElementsAre("Capture plein ecran  (⌃⇧1)", "Capture selection  (⌃⇧2)",
                                     "---", "Preferences... [Super+comma]",
                                     "Rechercher les mises a jour...", "---",
                                     "Quitter Lumacap [Super+Q]"));
}

TEST_F(TrayTest, theTitlesShowTheStoredShortcuts)
{
    // Command and Option with Space; all four modifiers with A.
    writeSettings(desktop,
                  {{u"fullScreenHotkey"_s, storedHotkey(49, 0x0900)},
                   {u"selectionHotkey"_s, storedHotkey(0, 0x1b00)}});
    TrayHost tray(desktop.bus().address());
    const Agent agent(desktop);
    tray.requireItem();
    const auto seen = lines(tray);
    ASSERT_GE(seen.size(), 2U);
    EXPECT_EQ(seen[0], "Capture plein ecran  (⌥⌘Space)");
    EXPECT_EQ(seen[1], "Capture selection  (⌃⌥⇧⌘A)");
}

TEST_F(TrayTest, theItemHasANameAndPicturesForSmallAndLargePanels)
{
    TrayHost tray(desktop.bus().address());
    const Agent agent(desktop);
    tray.requireItem();
    EXPECT_FALSE(tray.property(u"Id"_s).toString().isEmpty());
    EXPECT_EQ(tray.property(u"Title"_s).toString(), u"Lumacap"_s);
    EXPECT_EQ(tray.property(u"Status"_s).toString(), u"Active"_s);
    const auto sizes = tray.iconSizes();
    EXPECT_THAT(sizes, testing::Contains(testing::Property(&QSize::width, testing::Le(24))));
    EXPECT_THAT(sizes, testing::Contains(testing::Property(&QSize::width, testing::Ge(44))));
}

TEST_F(TrayTest, aTrayThatStartsLaterShowsTheItem)
{
    Agent agent(desktop);
    agent.requireReady();
    TrayHost tray(desktop.bus().address());
    // A tray that comes just as the agent looks for one of the older kind sees, for a moment, an
    // item more that the toolkit makes for that.
    EXPECT_TRUE(waitFor([&tray] { return tray.itemCount() == 1 && !tray.menu().empty(); }));
}

TEST_F(TrayTest, aTrayThatRestartsShowsTheItemAgain)
{
    std::optional<TrayHost> tray(std::in_place, desktop.bus().address());
    Agent agent(desktop);
    for (int start = 0; start < 3; ++start) {
        EXPECT_TRUE(waitFor([&tray] { return tray->itemCount() == 1 && !tray->menu().empty(); }));
        tray.reset();
        EXPECT_TRUE(agent.activatePlainly());
        tray.emplace(desktop.bus().address());
    }
    tray->requireItem();
    ASSERT_TRUE(tray->click(fullScreenTitle()));
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
}

TEST_F(TrayTest, quitInTheMenuEndsTheAgentAndItsItem)
{
    TrayHost tray(desktop.bus().address());
    Agent agent(desktop);
    tray.requireItem();
    tray.click(u"Quitter Lumacap"_s); // the answer may be cut off by the end
    EXPECT_EQ(agent.process().waitForEnd(usualLimit), Ending{});
    EXPECT_TRUE(waitFor([&tray] { return tray.itemCount() == 0; }));
}

TEST_F(TrayTest, withoutAWatcherTheIconDocksInAnOlderTray)
{
    XEmbedTray tray(desktop.server().display());
    const Agent agent(desktop);
    EXPECT_TRUE(waitFor([&tray] { return tray.dockedCount() == 1; }));
    EXPECT_TRUE(waitFor([&tray] { return tray.isFirstIconVisible(); }));
}

TEST_F(TrayTest, anOlderTrayThatStartsLaterShowsTheIcon)
{
    Agent agent(desktop);
    agent.requireReady();
    XEmbedTray tray(desktop.server().display());
    EXPECT_TRUE(waitFor([&tray] { return tray.dockedCount() == 1; }));
    EXPECT_TRUE(waitFor([&tray] { return tray.isFirstIconVisible(); }));
}

TEST_F(TrayTest, theMenuOfTheOlderTrayTakesACapture)
{
    XEmbedTray tray(desktop.server().display());
    const Agent agent(desktop);
    ASSERT_TRUE(waitFor([&tray] { return tray.dockedCount() == 1 && tray.isFirstIconVisible(); }));
    const auto windows = [this] {
        return desktop
            .ask({u"xdotool"_s, u"search"_s, u"--onlyvisible"_s, u"--class"_s, u"lumacap"_s})
            .output.count('\n');
    };
    const auto before = windows();
    const QPoint icon = XEmbedTray::firstIconCentre();
    desktop.ask({u"xdotool"_s, u"mousemove"_s, QString::number(icon.x()), QString::number(icon.y()),
                 u"click"_s, u"3"_s});
    ASSERT_TRUE(waitFor([&] { return windows() > before; })) << "no menu";
    desktop.ask({u"xdotool"_s, u"key"_s, u"Down"_s, u"Return"_s});
    EXPECT_FALSE(clipboardPicture(desktop).isNull());
    EXPECT_TRUE(waitFor([&] { return windows() == before; })) << "the menu stays";
}

} // namespace
} // namespace lumacap::harness
