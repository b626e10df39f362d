#include "SelectionFixture.h"
#include "harness/PopUps.h"
#include "harness/WaitFor.h"

#include <chrono>
#include <csignal>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// How a selection ends.
struct SelectionEndTest : SelectionFixture { };

TEST_F(SelectionEndTest, theOverlayGoesBeforeThePictureIsSaved)
{
    // Big enough that to write it takes many times as long as to look whether the overlay is up.
    start({.server = {.size = {3840, 2160}}});
    const XConnection connection(desktop->server().display());
    const auto withoutOverlay = popUps(connection);
    openOverlay();
    ASSERT_NE(popUps(connection), withoutOverlay);

    press(u"Return"_s);

    // First goes the picture to the clipboard, then into the file.
    ASSERT_TRUE(waitFor([&] { return connection.selectionOwner("CLIPBOARD") != 0; }));
    EXPECT_EQ(popUps(connection), withoutOverlay);
    EXPECT_EQ(savedPicture().size(), QSize(3840, 2160));
}

TEST_F(SelectionEndTest, anAgentThatIsTerminatedTakesItsOverlayAlong)
{
    start();
    const XConnection connection(desktop->server().display());
    const auto withoutOverlay = popUps(connection);
    openOverlay();
    drag({100, 100}, {300, 250});

    agent->process().send(SIGTERM);

    EXPECT_EQ(agent->process().waitForEnd(20s), Ending{.code = 0});
    EXPECT_TRUE(waitFor([&] { return popUps(connection) == withoutOverlay; }));
    EXPECT_EQ(entriesOf(desktop->folder(u"pictures"_s)), QStringList());
}

TEST_F(SelectionEndTest, aSecondRequestDuringTheFreezeOpensNoSecondOverlay)
{
    start();
    const XConnection connection(desktop->server().display());
    const auto without = popUps(connection).size();

    agent->activateSoon(u"selection"_s);
    agent->activateSoon(u"selection"_s);
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    ASSERT_TRUE(agent->activatePlainly());

    EXPECT_EQ(popUps(connection).size(), without + 1);
    press(u"Escape"_s);
    ASSERT_TRUE(waitFor([&] { return popUps(connection).size() == without; }));
    ASSERT_TRUE(agent->activatePlainly());
    EXPECT_EQ(popUps(connection).size(), without);
}

TEST_F(SelectionEndTest, returnDuringTheFirstDragSavesTheWholeScreen)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({0, 0, 800, 600});

    input({u"mousemove"_s, u"100"_s, u"100"_s, u"mousedown"_s, u"1"_s, u"mousemove"_s, u"300"_s,
           u"250"_s, u"key"_s, u"Return"_s});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
    input({u"mouseup"_s, u"1"_s});
    ASSERT_NO_FATAL_FAILURE(openOverlay());
    press(u"Escape"_s);
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
}

TEST_F(SelectionEndTest, returnDuringALaterDragSavesWhatWasSelectedBefore)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({400, 300, 120, 90});
    drag({400, 300}, {520, 390});

    input({u"mousemove"_s, u"100"_s, u"100"_s, u"mousedown"_s, u"1"_s, u"mousemove"_s, u"300"_s,
           u"250"_s, u"key"_s, u"Return"_s, u"mouseup"_s, u"1"_s});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(SelectionEndTest, escapeDuringADragSavesNothing)
{
    start();
    openOverlay();

    input({u"mousemove"_s, u"100"_s, u"100"_s, u"mousedown"_s, u"1"_s, u"mousemove"_s, u"300"_s,
           u"250"_s, u"key"_s, u"Escape"_s});
    ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    input({u"mouseup"_s, u"1"_s});

    ASSERT_NO_FATAL_FAILURE(openOverlay());
    EXPECT_EQ(entriesOf(desktop->folder(u"pictures"_s)), QStringList());
    EXPECT_EQ(desktop->selectionOwner("CLIPBOARD"), 0U);
}

} // namespace
} // namespace lumacap::harness
