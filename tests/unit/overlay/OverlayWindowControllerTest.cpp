#include "overlay/OverlayWindowController.h"

#include "Pointer.h"
#include "capture/CaptureEngine.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeScreenCapture.h"
#include "fakes/FakeScreens.h"
#include "fakes/FakeSoundPlayer.h"
#include "fakes/FakeWindowList.h"
#include "overlay/KeyableWindow.h"
#include "overlay/OverlayView.h"
#include "platform/OverlaySurface.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

/// Shows what it is to cover a screen with, in its size, and remembers which. Writes the end into a
/// journal.
class FakeOverlaySurface final : public OverlaySurface {
public:
    explicit FakeOverlaySurface(QStringList &journal)
        : m_journal(journal)
    {
    }

    void cover(QWidget &widget, const Screen &screen,
               std::function<void()> onScreenChanged) override
    {
        widgets.push_back(&widget);
        screens.push_back(screen);
        screenChanged = std::move(onScreenChanged);
        widget.resize(static_cast<int>(screen.frame.width() * screen.backingScaleFactor),
                      static_cast<int>(screen.frame.height() * screen.backingScaleFactor));
        widget.show();
    }
    void uncover(QWidget &widget) override
    {
        m_journal.append(u"uncover"_s);
        std::erase(widgets, &widget);
    }

    std::vector<QWidget *> widgets;
    std::vector<Screen> screens;
    std::function<void()> screenChanged;

private:
    QStringList &m_journal;
};

class OverlayWindowControllerTest : public testing::Test {
protected:
    OverlayWindowControllerTest()
    {
        m_screens.all = {{DisplayId{1}, {{0, 0}, {320, 200}}, 1},
                         {DisplayId{2}, {{320, 0}, {160, 100}}, 2}};
        m_screens.pointer = Point<Global>{10, 10};
        m_capture.listed =
            std::vector<DisplayInfo>{{DisplayId{1}, 320, 200}, {DisplayId{2}, 160, 100}};
        EXPECT_TRUE(m_defaults.set(u"saveDirectory"_s, m_folder.path()));
        EXPECT_TRUE(m_defaults.set(u"saveToFile"_s, true));
    }

    /// Asks for the overlay and waits until it is there.
    OverlayView *shown()
    {
        m_controller.showOverlay();
        if (!QTest::qWaitFor([this] { return !m_surface.widgets.empty(); }))
            return nullptr;
        return m_surface.widgets.front()->findChild<OverlayView *>();
    }

    QImage saved() const
    {
        const QStringList names = QDir(m_folder.path()).entryList(QDir::Files);
        return names.isEmpty() ? QImage() : QImage(m_folder.filePath(names.first()));
    }

    QTemporaryDir m_folder;
    FakeDefaultsStore m_defaults;
    FakeLoginItem m_loginItem;
    PreferencesStorage m_preferences{m_defaults, m_loginItem};
    QStringList m_journal;
    FakePasteboard m_pasteboard{m_journal};
    FakeSoundPlayer m_soundPlayer{m_journal};
    FakeScreens m_screens;
    FakeWindowList m_windows;
    FakeScreenCapture m_capture;
    FakeOverlaySurface m_surface{m_journal};
    ImageSaver m_otherSaver{m_pasteboard, m_soundPlayer, m_preferences};
    CaptureEngine m_engine{m_capture, m_screens, m_otherSaver};
    OverlayWindowController m_controller{
        {m_screens, m_windows, m_surface, m_pasteboard, m_soundPlayer, m_preferences}, m_engine};
};

TEST_F(OverlayWindowControllerTest, coversTheScreenUnderThePointerAndNoOther)
{
    m_screens.pointer = Point<Global>{400, 50};

    ASSERT_NE(shown(), nullptr);

    ASSERT_EQ(m_surface.screens.size(), 1U);
    EXPECT_EQ(m_surface.screens.front(), m_screens.all.at(1));
    ASSERT_EQ(m_capture.requests.size(), 1U);
    EXPECT_EQ(m_capture.requests.front().display, DisplayId{2});
}

TEST_F(OverlayWindowControllerTest, aPointerOutsideEveryScreenTakesTheMainOne)
{
    m_screens.pointer = Point<Global>{480, 200}; // on the right and top edges
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(m_surface.screens.front(), m_screens.all.front());
}

TEST_F(OverlayWindowControllerTest, withoutAPointerTheMainScreenIsTaken)
{
    m_screens.pointer.reset();
    ASSERT_NE(shown(), nullptr);
    EXPECT_EQ(m_surface.screens.front(), m_screens.all.front());
}

TEST_F(OverlayWindowControllerTest, withoutScreensNothingHappens)
{
    m_screens.all.clear();

    m_controller.showOverlay();

    EXPECT_FALSE(QTest::qWaitFor([this] { return !m_surface.widgets.empty(); }, 100));
    EXPECT_TRUE(m_capture.requests.empty());
}

TEST_F(OverlayWindowControllerTest, aFailedFreezeIsALineAndShowsNothing)
{
    m_capture.refusal = Failure{u"refused"_s};
    testing::internal::CaptureStdout();

    m_controller.showOverlay();
    EXPECT_TRUE(QTest::qWaitFor([this] {
        return m_windows.questions >= 0 && !m_windows.isFollowing && !m_capture.requests.empty();
    }));

    EXPECT_THAT(testing::internal::GetCapturedStdout(),
                testing::HasSubstr("Failed to capture freeze image\n"));
    EXPECT_TRUE(m_surface.widgets.empty());
    m_capture.refusal.reset();
    EXPECT_NE(shown(), nullptr) << "the next capture works";
}

TEST_F(OverlayWindowControllerTest, aSecondRequestWhileTheOverlayIsUpDoesNothing)
{
    ASSERT_NE(shown(), nullptr);

    m_controller.showOverlay();

    EXPECT_FALSE(QTest::qWaitFor([this] { return m_surface.screens.size() > 1; }, 100));
    EXPECT_EQ(m_capture.requests.size(), 1U);
}

TEST_F(OverlayWindowControllerTest, aSecondRequestDuringTheFreezeDoesNothing)
{
    m_controller.showOverlay();
    m_controller.showOverlay();

    EXPECT_FALSE(QTest::qWaitFor([this] { return m_surface.screens.size() > 1; }, 100));
    EXPECT_EQ(m_surface.screens.size(), 1U);
    EXPECT_EQ(m_capture.requests.size(), 1U);
}

TEST_F(OverlayWindowControllerTest, aDismissalDuringTheFreezeLeavesNoOverlay)
{
    m_controller.showOverlay();
    ASSERT_TRUE(m_surface.widgets.empty()) << "the freeze is not over yet";

    m_controller.dismissAll();

    EXPECT_TRUE(
        QTest::qWaitFor([this] { return !m_capture.requests.empty() && !m_windows.isFollowing; }));
    EXPECT_FALSE(QTest::qWaitFor([this] { return !m_surface.widgets.empty(); }, 100));
    EXPECT_NE(shown(), nullptr) << "the next capture works";
}

class ConfirmKeyTest : public OverlayWindowControllerTest,
                       public testing::WithParamInterface<Qt::Key> { };

TEST_P(ConfirmKeyTest, confirmsAtOnceAndSavesTheSelection)
{
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);
    Pointer pointer(*view);
    pointer.drag(20, 30, 120, 80);

    pointer.key(GetParam());

    EXPECT_TRUE(m_surface.widgets.empty());
    EXPECT_EQ(saved().size(), QSize(100, 50));
    EXPECT_EQ(m_journal, (QStringList{u"clear"_s, u"write"_s, u"uncover"_s, u"sound"_s}));
    EXPECT_FALSE(m_windows.isFollowing);
}

INSTANTIATE_TEST_SUITE_P(Keys, ConfirmKeyTest, testing::Values(Qt::Key_Return, Qt::Key_Enter));

TEST_F(OverlayWindowControllerTest, aSecondReturnBeforeTheWindowHasGoneSavesNothingMore)
{
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);
    Pointer pointer(*view);

    pointer.key(Qt::Key_Return);
    pointer.key(Qt::Key_Return);

    EXPECT_EQ(m_journal, (QStringList{u"clear"_s, u"write"_s, u"uncover"_s, u"sound"_s}));
}

TEST_F(OverlayWindowControllerTest, aConfirmWithoutASelectionSavesTheWholeScreen)
{
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);

    Pointer(*view).key(Qt::Key_Return);

    EXPECT_EQ(saved().size(), QSize(320, 200));
}

TEST_F(OverlayWindowControllerTest, aScreenOfScaleTwoIsRenderedAndFramedAtTwo)
{
    m_screens.pointer = Point<Global>{400, 50};
    ASSERT_TRUE(m_defaults.set(u"defaultShowFrame"_s, true));
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);

    Pointer(*view).key(Qt::Key_Return);

    EXPECT_EQ(saved().size(), QSize(2 * (160 + 120), 2 * (100 + 36 + 120)));
}

TEST_F(OverlayWindowControllerTest, aSelectionOfNothingSavesNothingAndEnds)
{
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);
    Pointer pointer(*view);
    pointer.press(20, 30);
    pointer.move(30, 30);
    pointer.move(20, 30);
    pointer.release(20, 30);

    pointer.key(Qt::Key_Return);

    EXPECT_TRUE(m_surface.widgets.empty());
    EXPECT_TRUE(saved().isNull());
    EXPECT_EQ(m_journal, QStringList{u"uncover"_s});
}

TEST_F(OverlayWindowControllerTest, escapeEndsWithoutSaving)
{
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);
    Pointer pointer(*view);
    pointer.drag(20, 30, 120, 80);

    pointer.key(Qt::Key_Escape);

    EXPECT_TRUE(m_surface.widgets.empty());
    EXPECT_TRUE(saved().isNull());
    EXPECT_EQ(m_journal, QStringList{u"uncover"_s});
    EXPECT_FALSE(m_windows.isFollowing);
    EXPECT_NE(shown(), nullptr) << "the next capture begins anew";
}

TEST_F(OverlayWindowControllerTest, otherKeysReachTheView)
{
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);

    Pointer(*view).key(Qt::Key_A);

    EXPECT_FALSE(m_surface.widgets.empty());
}

TEST_F(OverlayWindowControllerTest, aScreenThatChangesEndsTheCapture)
{
    ASSERT_NE(shown(), nullptr);

    m_surface.screenChanged();

    EXPECT_TRUE(m_surface.widgets.empty());
    EXPECT_EQ(m_journal, QStringList{u"uncover"_s});
    EXPECT_NE(shown(), nullptr);
}

TEST_F(OverlayWindowControllerTest, withAutoConfirmADragSavesAtOnce)
{
    ASSERT_TRUE(m_defaults.set(u"autoConfirmSelection"_s, true));
    OverlayView *const view = shown();
    ASSERT_NE(view, nullptr);

    Pointer(*view).drag(20, 30, 120, 80);

    EXPECT_TRUE(m_surface.widgets.empty());
    EXPECT_EQ(saved().size(), QSize(100, 50));
}

} // namespace
} // namespace lumacap::tests
