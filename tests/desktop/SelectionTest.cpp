#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/PaintedScreen.h"
#include "harness/Settings.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

#include <memory>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

DesktopOptions twoSmallMonitors()
{
    return {.server = {.size = {1440, 600},
                       .monitors = {{u"LEFT"_s, {0, 0, 800, 600}, Role::Primary},
                                    {u"RIGHT"_s, {800, 0, 640, 600}}}}};
}

/// A desktop showing noise, an agent on it, and a person at the mouse and the keyboard.
struct SelectionTest : testing::Test {
    void start(const DesktopOptions &options = twoSmallMonitors())
    {
        desktop = std::make_unique<PrivateDesktop>(options);
        screen = std::make_unique<PaintedScreen>(desktop->server().display(),
                                                 noisePicture(options.server.size));
        screen->placePointer({40, 30});
        set({});
        agent = std::make_unique<Agent>(*desktop);
        agent->requireReady();
    }

    void set(Settings settings)
    {
        settings[u"saveToFile"_s] = u"true"_s;
        settings[u"saveDirectory"_s] = desktop->folder(u"pictures"_s);
        writeSettings(*desktop, settings);
    }

    void input(const QStringList &steps) { desktop->ask(QStringList{u"xdotool"_s} + steps); }

    bool overlayIsUp()
    {
        return !desktop
                    ->ask({u"xdotool"_s, u"search"_s, u"--onlyvisible"_s, u"--name"_s,
                           u"^Lumacap$"_s})
                    .output.isEmpty();
    }

    void openOverlay()
    {
        ASSERT_TRUE(agent->activate(u"selection"_s));
        ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    }

    void drag(QPoint from, QPoint to)
    {
        const QPoint middle = (from + to) / 2;
        input({u"mousemove"_s, QString::number(from.x()), QString::number(from.y()), u"mousedown"_s,
               u"1"_s, u"mousemove"_s, QString::number(middle.x()), QString::number(middle.y()),
               u"mousemove"_s, QString::number(to.x()), QString::number(to.y()), u"mouseup"_s,
               u"1"_s});
    }

    QStringList files() const { return capturesIn(desktop->folder(u"pictures"_s)); }

    /// The one file that is there, waited for.
    QImage savedPicture()
    {
        if (!waitFor([this] { return files().size() == 1 && !overlayIsUp(); }))
            return {};
        return pictureIn(*desktop, files().first());
    }

    std::unique_ptr<PrivateDesktop> desktop;
    std::unique_ptr<PaintedScreen> screen;
    std::unique_ptr<Agent> agent;
};

struct ConfirmTest : SelectionTest, testing::WithParamInterface<const char *> { };

TEST_P(ConfirmTest, savesTheDraggedAreaPixelForPixelInFileAndClipboard)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({20, 10, 301, 207});

    drag({20, 10}, {321, 217});
    input({u"key"_s, QLatin1StringView(GetParam())});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
    EXPECT_EQ(differingPixels(expected, clipboardPicture(*desktop)), 0);
}

INSTANTIATE_TEST_SUITE_P(Keys, ConfirmTest, testing::Values("Return", "KP_Enter"));

TEST_F(SelectionTest, onlyTheScreenUnderThePointerIsFrozen)
{
    start();
    screen->placePointer({1000, 300});
    openOverlay();
    const QImage expected = screen->expected({900, 100, 250, 300});

    drag({900, 100}, {1150, 400});
    input({u"key"_s, u"Return"_s});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(SelectionTest, whatChangesOnTheScreenAfterTheRequestIsNotInThePicture)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});

    screen->paint(noisePicture({1440, 600}, 9));
    drag({100, 100}, {300, 250});
    input({u"key"_s, u"Return"_s});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(SelectionTest, withoutASelectionTheWholeScreenIsSaved)
{
    start();
    openOverlay();

    input({u"key"_s, u"Return"_s});

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
    input({u"key"_s, u"Escape"_s});

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
    input({u"key"_s, u"Return"_s});

    const QImage picture = savedPicture();
    ASSERT_EQ(picture.size(), QSize(200 + 120, 150 + 36 + 120));
    // All but the round corners and the row that the title bar's line touches.
    EXPECT_EQ(differingPixels(expected.copy(10, 1, 180, 139), picture.copy(70, 97, 180, 139)), 0);
}

INSTANTIATE_TEST_SUITE_P(Backgrounds, FrameTest,
                         testing::Values("dominantColor", "darkSlate", "light", "ocean", "sunset",
                                         "newspaper"));

TEST_F(SelectionTest, aSecondRequestWhileTheOverlayIsUpDoesNothing)
{
    start();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 200, 150});
    drag({100, 100}, {300, 250});

    ASSERT_TRUE(agent->activate(u"selection"_s));
    input({u"key"_s, u"Return"_s});

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
    input({u"key"_s, u"Escape"_s});
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
    input({u"key"_s, u"Escape"_s});
    ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    openOverlay();

    input({u"key"_s, u"Return"_s});

    EXPECT_EQ(savedPicture().size(), QSize(800, 600));
}

TEST_F(SelectionTest, quitWhileTheOverlayIsUpEndsTheAgent)
{
    start();
    openOverlay();

    ASSERT_TRUE(agent->activate(u"quit"_s));

    EXPECT_EQ(agent->process().waitForEnd(std::chrono::seconds(20)), Ending{.code = 0});
}

TEST_F(SelectionTest, atScaleTwoADragIsNativePixels)
{
    desktop = std::make_unique<PrivateDesktop>(twoSmallMonitors());
    desktop->set("QT_SCALE_FACTOR", "2");
    screen =
        std::make_unique<PaintedScreen>(desktop->server().display(), noisePicture({1440, 600}));
    screen->placePointer({40, 30});
    set({});
    agent = std::make_unique<Agent>(*desktop);
    agent->requireReady();
    openOverlay();
    const QImage expected = screen->expected({100, 100, 201, 151});

    drag({100, 100}, {301, 251});
    input({u"key"_s, u"Return"_s});

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

} // namespace
} // namespace lumacap::harness
