#include "SelectionFixture.h"
#include "harness/PlainWindow.h"
#include "harness/ShownPicture.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <QFile>

#include <array>
#include <vector>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

struct SelectionTest : SelectionFixture { };

struct ConfirmTest : SelectionTest, testing::WithParamInterface<const char *> { };

TEST_P(ConfirmTest, savesTheDraggedAreaPixelForPixelInFileAndClipboard)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({20, 10, 301, 207});

    drag({20, 10}, {321, 217});
    press(QLatin1StringView(GetParam()));

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
    EXPECT_EQ(differingPixels(expected, clipboardPicture(*desktop)), 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, ConfirmTest, testing::Values("Return", "KP_Enter"));

TEST_F(SelectionTest, onlyTheScreenUnderThePointerIsFrozen)
{
    start();
    screen->placePointer({1000, 300});
    openOverlay();
    const QImage expected = screen->expected({900, 200, 250, 300});

    drag({900, 200}, {1150, 500});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(SelectionTest, whatChangesOnTheScreenAfterTheRequestIsNotInThePicture)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});

    screen->paint(noisePicture({1440, 600}, 9));
    drag({100, 100}, {300, 250});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(SelectionTest, withoutASelectionTheWholeScreenIsSaved)
{
    start();
    openOverlay();

    press(u"Return"_s);

    EXPECT_EQ(differingPixels(screen->expected({0, 0, 800, 600}), savedPicture()), 0);
}

TEST_F(SelectionTest, escapeLeavesClipboardAndFolderUntouched)
{
    start();
    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    const QImage before = clipboardPicture(*desktop);
    ASSERT_TRUE(waitFor([this] { return files().size() == 1; }));
    const QStringList filesBefore = files();
    openOverlay();

    drag({100, 100}, {300, 250});
    press(u"Escape"_s);

    ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    EXPECT_EQ(files(), filesBefore);
    EXPECT_EQ(differingPixels(before, clipboardPicture(*desktop)), 0);
}

TEST_F(SelectionTest, withAutoConfirmTheDragAloneSaves)
{
    start();
    set({{u"autoConfirmSelection"_s, u"true"_s}});
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});

    drag({100, 100}, {300, 250});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

struct FrameTest : SelectionTest, testing::WithParamInterface<const char *> { };

TEST_P(FrameTest, isPutAroundTheSelectionByPreference)
{
    start();
    set({{u"defaultShowFrame"_s, u"true"_s},
         {u"defaultFrameBackground"_s, QLatin1StringView(GetParam())}});
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});

    drag({100, 100}, {300, 250});
    press(u"Return"_s);

    const QImage picture = savedPicture();
    ASSERT_EQ(picture.size(), QSize(200 + 120, 150 + 36 + 120));
    // All but the round corners and the row that the title bar's line touches.
    EXPECT_EQ(differingPixels(expected.copy(10, 1, 180, 139), picture.copy(70, 97, 180, 139)), 0);
}

constexpr std::array backgrounds{"dominantColor", "darkSlate", "light",
                                 "ocean",         "sunset",    "newspaper"};

INSTANTIATE_TEST_SUITE_P(Backgrounds, FrameTest, testing::ValuesIn(backgrounds));

TEST_F(SelectionTest, eachBackgroundOfTheFrameIsAnother)
{
    start();
    std::vector<QImage> seen;
    for (const char *const background : backgrounds) {
        set({{u"defaultShowFrame"_s, u"true"_s},
             {u"defaultFrameBackground"_s, QLatin1StringView(background)}});
        openOverlay();
        drag({100, 100}, {300, 250});
        press(u"Return"_s);
        const QImage margin = savedPicture().copy(0, 0, 320, 40);
        for (const QImage &other : seen)
            EXPECT_GT(differingPixels(other, margin, 2), 320 * 40 / 2) << background;
        seen.push_back(margin);
        ASSERT_TRUE(QFile::remove(files().value(0)));
    }
}

TEST_F(SelectionTest, aSecondRequestWhileTheOverlayIsUpDoesNothing)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});
    drag({100, 100}, {300, 250});

    ASSERT_TRUE(agent->activate(u"selection"_s));
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0) << "the selection is still there";
    EXPECT_FALSE(overlayIsUp());
}

TEST_F(SelectionTest, theFullScreenCommandStillCapturesWhileTheOverlayIsUp)
{
    start();
    openOverlay();

    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    ASSERT_TRUE(waitFor([this] { return files().size() == 1; }));

    EXPECT_TRUE(overlayIsUp());
    EXPECT_EQ(pictureIn(*desktop, files().first()).size(), QSize(800, 600));
    press(u"Escape"_s);
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
}

TEST_F(SelectionTest, theMenuEntryOpensTheOverlay)
{
    desktop = std::make_unique<PrivateDesktop>(twoSmallMonitors());
    TrayHost tray(desktop->bus().address());
    agent = std::make_unique<Agent>(*desktop);
    tray.requireItem();

    ASSERT_TRUE(tray.click(u"Capture selection  (⌃⇧2)"_s));

    EXPECT_TRUE(waitFor([this] { return overlayIsUp(); }));
}

TEST_F(SelectionTest, theNextCaptureStartsWithoutTheLastSelection)
{
    start();
    openOverlay();
    drag({100, 100}, {300, 250});
    press(u"Escape"_s);
    ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    openOverlay();

    press(u"Return"_s);

    EXPECT_EQ(savedPicture().size(), QSize(800, 600));
}

TEST_F(SelectionTest, quitWhileTheOverlayIsUpEndsTheAgent)
{
    start();
    openOverlay();

    ASSERT_TRUE(agent->activate(u"quit"_s));

    EXPECT_EQ(agent->process().waitForEnd(std::chrono::seconds(20)), Ending{.code = 0});
}

TEST_F(SelectionTest, atScaleTwoAWindowIsSelectedOnTheScreensLastPixel)
{
    startDesktop();
    screen->lower();
    const QRect area(700, 500, 100, 100);
    const PlainWindow window(desktop->server().display(), area);
    window.renounceDecoration();
    window.show();
    window.requireManaged();
    const QImage expected = shownOn(desktop->server().display(), area);
    desktop->set("QT_SCALE_FACTOR", "2");
    startAgent();
    openOverlay();

    click({799, 599});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(SelectionTest, atScaleTwoADragIsNativePixels)
{
    startDesktop();
    desktop->set("QT_SCALE_FACTOR", "2");
    startAgent();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 201, 151});

    drag({100, 100}, {301, 251});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

} // namespace
} // namespace lumacap::harness
