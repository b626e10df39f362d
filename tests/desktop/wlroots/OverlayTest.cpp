#include "SwayAgentFixture.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// A program of the tests that covers a screen with noise; see OverlayProbe.cpp.
struct OverlayTest : SwayAgentFixture, testing::WithParamInterface<const char *> {
    void SetUp() override
    {
        startDesktop({.outputs = {{{800, 600}, 1, {0, 0}}, {{1000, 700}, 1, {800, 0}}}});
        desktop->set("LUMACAP_OVERLAY_SURFACE", GetParam());
    }

    Process &run(const QStringList &words)
    {
        return desktop->start(
            u"probe"_s, QStringList{testedProgram(QStringLiteral(LUMACAP_OVERLAY_PROBE))} + words);
    }
    Process &coverRight()
    {
        Process &process = run({u"cover"_s, u"1"_s});
        // What sway shows may still be what an earlier one left.
        require("the cover", [&process] { return process.output().contains("covered\n"); });
        const QImage picture = noisePicture({1000, 700});
        const QRect pointer(0, 0, 100, 100);
        require("the covered screen", [&] {
            return differingOutside(pointer, picture, desktop->look(u"HEADLESS-2"_s)) == 0;
        });
        return process;
    }
    static bool says(const Process &process, const QByteArray &line)
    {
        return waitFor([&] { return process.output().contains(line + '\n'); });
    }
};

TEST_P(OverlayTest, coversItsOutputWithPanelsAndLeavesTheOtherUntouched)
{
    desktop->start(u"panel"_s, {u"waybar"_s});
    ASSERT_TRUE(waitFor([this] { return !showsPlainly(u"HEADLESS-2"_s); }));

    coverRight();

    EXPECT_TRUE(waitFor([this] { return !showsPlainly(); })); // the panel of the other one
}

TEST_P(OverlayTest, getsPressesAndKeysAtOnce)
{
    desktop->command(u"focus output HEADLESS-2"_s);
    desktop->input().moveTo({802, 2});
    const Process &process = coverRight();
    ASSERT_TRUE(says(process, "active"));

    desktop->input().click({1100, 300});
    desktop->input().press({evdev::letterA});

    EXPECT_TRUE(says(process, "press 300 300"));
    EXPECT_TRUE(says(process, "release 300 300"));
    EXPECT_TRUE(says(process, "key A"));
}

TEST_P(OverlayTest, givesItsChildrenTheirEvents)
{
    const Process &process = coverRight();

    desktop->input().click({815, 20});

    EXPECT_TRUE(says(process, "press in child 5 10"));
}

TEST_P(OverlayTest, givesTheKeyboardBack)
{
    desktop->command(u"focus output HEADLESS-2"_s);
    desktop->input().moveTo({802, 2});
    const Process &window = desktop->startWindow({.size = {200, 100}});
    ASSERT_TRUE(says(window, "focus"));
    const Process &process = coverRight();
    ASSERT_TRUE(says(process, "active"));
    desktop->input().press({evdev::escape});
    ASSERT_TRUE(says(process, "uncovered"));
    ASSERT_TRUE(waitFor([&window] { return window.output().count("\nfocus\n") == 1; }));

    desktop->input().press({evdev::letterF});

    EXPECT_TRUE(says(window, "key 33"));
}

TEST_P(OverlayTest, tellsWhenItsOutputChangesItsScaleSizeOrPlace)
{
    for (const QString &change : {u"scale 2"_s, u"resolution 900x600"_s, u"position 800 50"_s}) {
        desktop->command(u"output HEADLESS-2 resolution 1000x700 position 800 0 scale 1"_s);
        const Process &process = coverRight();

        desktop->command(u"output HEADLESS-2 "_s + change);

        EXPECT_TRUE(says(process, "changed")) << change.toStdString();
        EXPECT_EQ(process.output().count("changed"), 1);
        desktop->stop(process);
    }
}

TEST_P(OverlayTest, isNotDisturbedByOtherOutputs)
{
    desktop->command(u"focus output HEADLESS-2"_s);
    desktop->input().moveTo({802, 2});
    const Process &process = coverRight();
    ASSERT_TRUE(says(process, "active"));

    desktop->command(u"create_output"_s);
    desktop->command(u"output HEADLESS-3 position 0 2000 scale 2"_s);
    ASSERT_EQ(desktop->outputs().size(), 3U);
    desktop->input().press({evdev::letterA});

    EXPECT_TRUE(says(process, "key A"));
    EXPECT_FALSE(process.output().contains("changed"));
}

TEST_P(OverlayTest, leavesNothingBehindHoweverOften)
{
    const Process &window = desktop->startWindow({.size = {200, 100}});
    ASSERT_TRUE(says(window, "focus"));

    const Process &process = run({u"cycle"_s, u"1"_s, u"30"_s});

    ASSERT_TRUE(says(process, "done"));
    EXPECT_TRUE(waitFor([this] { return showsPlainly(u"HEADLESS-2"_s); }));
    desktop->command(u"[app_id=\"org.example.Window\"] focus"_s);
    const auto keys = window.output().count("key 33");
    desktop->input().press({evdev::letterF});
    EXPECT_TRUE(waitFor([&] { return window.output().count("key 33") > keys; }));
    EXPECT_EQ(process.errors(), QByteArray());
    EXPECT_FALSE(desktop->answer(u"get_tree"_s).contains("overlay_probe"));
}

TEST_P(OverlayTest, aDestroyedWidgetIsUncovered)
{
    desktop->command(u"focus output HEADLESS-2"_s);
    desktop->input().moveTo({802, 2});
    const Process &process = run({u"destroy"_s, u"1"_s});
    ASSERT_TRUE(says(process, "active"));

    desktop->input().press({evdev::escape});

    EXPECT_TRUE(says(process, "destroyed"));
    EXPECT_TRUE(waitFor([this] { return showsPlainly(u"HEADLESS-2"_s); }));
    EXPECT_EQ(process.errors(), QByteArray());
}

INSTANTIATE_TEST_SUITE_P(By, OverlayTest, testing::Values("layer-shell", "full-screen"),
                         [](const auto &row) {
                             return row.param == std::string("layer-shell") ? "LayerShell"
                                                                            : "FullScreenWindow";
                         });

} // namespace
} // namespace lumacap::harness
