#include "SelectionFixture.h"
#include "harness/PlainWindow.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"

#include <QFile>

#include <ostream>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// Two outputs of an ordinary server, the main one on the left and a little higher.
DesktopOptions twoOutputs()
{
    return {.server = {.kind = ServerKind::RealOutputs,
                       .monitors = {{u"DUMMY0"_s, {0, 0, 640, 480}, Role::Primary},
                                    {u"DUMMY1"_s, {640, 100, 800, 600}}}},
            .windowManager = WindowManager::Xfwm4};
}

struct OutputSelectionTest : SelectionFixture { };

TEST_F(OutputSelectionTest, theMainOutputIsCaptured)
{
    start(twoOutputs());
    openOverlay();
    const QImage expected = screen->expected({101, 33, 250, 207});

    drag({101, 33}, {351, 240});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(OutputSelectionTest, theOutputUnderThePointerIsCapturedAlone)
{
    start(twoOutputs());
    screen->placePointer({1000, 300});
    openOverlay();
    const QImage expected = screen->expected({640, 100, 800, 600});

    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_F(OutputSelectionTest, aDragThatBeginsInTheUpperLeftCornerHoldsItsPixel)
{
    start(twoOutputs());
    screen->placePointer({1000, 300});
    openOverlay();
    const QImage expected = screen->expected({640, 100, 60, 50});

    drag({640, 100}, {700, 150});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

/// What may happen to the output that is being captured, as xrandr is told it.
struct OutputChange {
    const char *name;
    QStringList words;
};

std::ostream &operator<<(std::ostream &stream, const OutputChange &change)
{
    return stream << change.name;
}

struct ChangedOutputTest : OutputSelectionTest, testing::WithParamInterface<OutputChange> { };

TEST_P(ChangedOutputTest, endsTheSelectionAndLeavesNothingButTheAgent)
{
    start(twoOutputs());
    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    const QImage before = clipboardPicture(*desktop);
    ASSERT_TRUE(waitFor([this] { return files().size() == 1; }));
    const QStringList filesBefore = files();
    screen->placePointer({1000, 300});
    openOverlay();
    drag({700, 200}, {900, 400});

    desktop->server().randr({u"--addmode"_s, u"DUMMY1"_s, u"modeDUMMY0"_s});
    desktop->server().randr(QStringList{u"--output"_s, u"DUMMY1"_s} + GetParam().words);

    ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    press(u"Return"_s); // which is nobody's now
    EXPECT_TRUE(agent->activatePlainly());
    EXPECT_EQ(files(), filesBefore);
    EXPECT_EQ(differingPixels(before, clipboardPicture(*desktop)), 0);
    screen->placePointer({40, 30});
    openOverlay();
}

INSTANTIATE_TEST_SUITE_P(, ChangedOutputTest,
                         testing::Values(OutputChange{"unplugged", {u"--off"_s}},
                                         OutputChange{"resized", {u"--mode"_s, u"modeDUMMY0"_s}},
                                         OutputChange{"moved", {u"--pos"_s, u"640x0"_s}}),
                         [](const auto &instance) { return instance.param.name; });

/// How a desktop is told to scale. A variable of the environment, or Xft.dpi where there is none.
struct Scaling {
    const char *name;
    QByteArray variable;
    QByteArray value;
};

std::ostream &operator<<(std::ostream &stream, const Scaling &scaling)
{
    return stream << scaling.name;
}

struct ScaledSelectionTest : SelectionFixture, testing::WithParamInterface<Scaling> {
    /// The right monitor's size divides by none of the scales. Its lower half is free of the
    /// toolbar at all of them.
    void start()
    {
        startDesktop({.server = {.size = {3200, 1200},
                                 .monitors = {{u"LEFT"_s, {0, 0, 1600, 1200}, Role::Primary},
                                              {u"RIGHT"_s, {1600, 0, 1597, 1199}}}}});
        if (GetParam().variable.isEmpty()) {
            const QString merge = u"echo Xft.dpi: %1 | xrdb -nocpp -merge"_s;
            ASSERT_EQ(desktop->ask({u"sh"_s, u"-c"_s, merge.arg(GetParam().value.toInt())}).ending,
                      Ending{});
        } else {
            desktop->set(GetParam().variable, GetParam().value);
        }
        startAgent();
    }
};

TEST_P(ScaledSelectionTest, aDragOverAnyPixelsIsThosePixels)
{
    start();
    for (const QRect &area : {QRect(101, 703, 201, 151), QRect(1699, 677, 302, 205)}) {
        screen->placePointer(area.topLeft() - QPoint(60, 60));
        openOverlay();
        const QImage expected = screen->expected(area);

        drag(area.topLeft(), area.topLeft() + QPoint(area.width(), area.height()));
        press(u"Return"_s);

        EXPECT_EQ(differingPixels(expected, savedPicture()), 0) << area.x();
        ASSERT_TRUE(QFile::remove(files().value(0)));
    }
}

TEST_P(ScaledSelectionTest, aClickedWindowIsItsPixels)
{
    start();
    screen->lower();
    const QRect area(1703, 751, 233, 118);
    const PlainWindow window(desktop->server().display(), area);
    window.renounceDecoration();
    window.show();
    window.requireManaged();
    const QImage expected = shownOn(desktop->server().display(), area);
    screen->placePointer({1640, 30});
    openOverlay();

    click({1800, 800});
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expected, savedPicture()), 0);
}

TEST_P(ScaledSelectionTest, theWholeScreenIsItsPixels)
{
    start();
    screen->placePointer({1640, 30});
    openOverlay();

    press(u"Return"_s);

    EXPECT_EQ(differingPixels(screen->expected({1600, 0, 1597, 1199}), savedPicture()), 0);
}

INSTANTIATE_TEST_SUITE_P(
    Scales, ScaledSelectionTest,
    testing::Values(Scaling{"oneAndAQuarter", {}, "120"}, Scaling{"oneAndAHalf", {}, "144"},
                    Scaling{"two", {}, "192"}, Scaling{"three", "QT_SCALE_FACTOR", "3"},
                    Scaling{"twoOnTheRightAlone", "QT_SCREEN_SCALE_FACTORS", "LEFT=1;RIGHT=2"},
                    Scaling{"twoOnTheLeftAlone", "QT_SCREEN_SCALE_FACTORS", "LEFT=2;RIGHT=1"}),
    [](const auto &instance) { return instance.param.name; });

} // namespace
} // namespace lumacap::harness
