#include "everywhere/EverywhereFixture.h"
#include "harness/WaitFor.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

class EverySelectionTest : public EverywhereFixture {
protected:
    /// What of the first output is white, in pixels, once anything is.
    QRect awaitedWindow()
    {
        QRect white;
        const auto isWhite = [](const QImage &picture, int x, int y) {
            return (picture.pixel(x, y) & 0xffffffU) == 0xffffffU;
        };
        const bool isThere = waitFor([&] {
            const QImage seen = desktop().look(output(0).name);
            white = QRect();
            // Windows are large: every sixteenth pixel meets them, and noise is never white twice.
            for (int y = 0; y < seen.height() - 1; y += 16) {
                for (int x = 0; x < seen.width() - 1; x += 16) {
                    if (isWhite(seen, x, y) && isWhite(seen, x + 1, y) && isWhite(seen, x, y + 1))
                        white |= QRect(x, y, 1, 1);
                }
            }
            return !white.isEmpty();
        });
        return isThere ? white : QRect();
    }
};

TEST_P(EverySelectionTest, aDraggedAreaIsSavedPixelForPixelInFileAndClipboard)
{
    startAgent();
    openOverlay();

    hands().drag({100, 100}, {402, 306});
    endOverlay(evdev::enter);

    const QImage expected = shown({100, 100, 302, 206});
    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
    EXPECT_EQ(differingPixels(expected, clipboardPicture()), 0);
}

TEST_P(EverySelectionTest, theOutputUnderThePointerIsTheOneThatIsFrozen)
{
    startAgent();
    openOverlay(1);
    const QPoint corner = output(1).frame.topLeft();

    hands().drag(corner + QPoint(100, 200), corner + QPoint(500, 500));
    endOverlay(evdev::enter);

    const QImage expected = shown({corner + QPoint(100, 200), QSize(400, 300)}, 1);
    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_P(EverySelectionTest, aClickTakesTheWindowOrNothingWhereNoneIsTold)
{
    desktop().openWindow({.size = {320, 240}});
    startAgent();
    const QRect window = awaitedWindow();
    ASSERT_FALSE(window.isEmpty());
    openOverlay();
    const double scale = static_cast<double>(output(0).pixels.width()) / output(0).frame.width();

    hands().click((window.center().toPointF() / scale).toPoint());
    endOverlay(evdev::enter);

    const QImage seen = savedPicture();
    const bool isListed = desktop().listsWindows();
    ASSERT_EQ(seen.size(), isListed ? (QSizeF(320, 240) * scale).toSize() : output(0).pixels);
    const QImage ofWindow = isListed ? seen : seen.copy(window);
    QImage white(ofWindow.size(), ofWindow.format());
    white.fill(Qt::white);
    EXPECT_EQ(differingPixels(white, ofWindow), 0);
}

TEST_P(EverySelectionTest, withoutASelectionTheWholeScreenIsSaved)
{
    startAgent();
    openOverlay();

    endOverlay(evdev::enter);

    EXPECT_TRUE(equalsOutput(0, savedPicture()));
}

TEST_P(EverySelectionTest, withAutoConfirmTheDragAloneSaves)
{
    startAgent({{u"autoConfirmSelection"_s, u"true"_s}});
    openOverlay();

    hands().drag({100, 100}, {300, 260});

    EXPECT_EQ(differingPixels(shown({100, 100, 200, 160}), savedPicture()), 0);
}

TEST_P(EverySelectionTest, escapeLeavesClipboardAndFolderUntouched)
{
    startAgent();
    openOverlay();

    hands().drag({100, 100}, {300, 260});
    endOverlay(evdev::escape);

    EXPECT_THAT(files(), testing::IsEmpty());
    EXPECT_THAT(desktop().clipboardTypes(), testing::IsEmpty());
}

TEST_P(EverySelectionTest, aFrameIsPutAroundTheSelectionByPreference)
{
    startAgent({{u"defaultShowFrame"_s, u"true"_s}, {u"defaultFrameBackground"_s, u"ocean"_s}});
    openOverlay();

    hands().drag({100, 100}, {300, 260});
    endOverlay(evdev::enter);

    const QImage inside = shown({100, 100, 200, 160});
    const QImage seen = savedPicture();
    const int factor = output(0).pixels.width() >= 1800 ? 2 : 1;
    EXPECT_EQ(seen.size(), inside.size() + QSize(120, 36 + 120) * factor);
}

TEST_P(EverySelectionTest, aSecondSelectionFollowsTheFirst)
{
    startAgent();
    openOverlay();
    endOverlay(evdev::escape);
    openOverlay();

    hands().drag({100, 100}, {300, 260});
    endOverlay(evdev::enter);

    EXPECT_EQ(differingPixels(shown({100, 100, 200, 160}), savedPicture()), 0);
}

INSTANTIATE_TEST_SUITE_P(On, EverySelectionTest, testing::ValuesIn(everyDesktop()),
                         [](const auto &make) { return make.param.name; });

} // namespace
} // namespace lumacap::harness
