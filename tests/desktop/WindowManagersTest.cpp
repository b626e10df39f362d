#include "WindowListFixture.h"

#include <string>

namespace lumacap::harness {
namespace {

// What a request to change a state begins with.
constexpr std::uint32_t adding = 1;
constexpr std::uint32_t removing = 0;

struct ManagedWindows : WindowListFixture, testing::WithParamInterface<WindowManager> {
    void SetUp() override { start({.windowManager = GetParam()}); }

    static void activate(const PlainWindow &window)
    {
        constexpr std::uint32_t fromAPager = 2;
        window.ask("_NET_ACTIVE_WINDOW", {fromAPager, 0, 0, 0, 0});
    }
    static void changeState(const PlainWindow &window, std::uint32_t change, const char *state)
    {
        window.ask("_NET_WM_STATE", {change, window.connection().atom(state), 0, 1, 0});
    }
};

TEST_P(ManagedWindows, areListedFrontmostFirstAndFollowARaise)
{
    const PlainWindow &one = addShown("one", {100, 100, 200, 100});
    addShown("two", {150, 120, 200, 100});
    const PlainWindow &three = addShown("three", {200, 140, 200, 100});
    activate(three);
    follow();
    expectTitles({"three", "two", "one"});

    activate(one);
    expectTitles({"one", "three", "two"});
}

TEST_P(ManagedWindows, areListedWithTheirDecoration)
{
    const PlainWindow &window = addShown("decorated", {100, 100, 200, 100});
    follow();
    expectTitles({"decorated"});

    const QRectF frame = list->window("decorated").frame;
    EXPECT_EQ(frame, QRectF(window.outermostFrame()));
    EXPECT_GT(frame.height(), 100);
    EXPECT_EQ(list->window("decorated").number, window.id());
}

TEST_P(ManagedWindows, areFollowedAsTheyMoveAndGrow)
{
    const PlainWindow &window = addShown("moving", {100, 100, 200, 100});
    follow();
    expectTitles({"moving"});
    const QRectF before = list->window("moving").frame;

    window.place({300, 250, 320, 160});
    EXPECT_TRUE(waitFor([&] {
        const QRectF frame = list->window("moving").frame;
        return frame.size() == before.size() + QSizeF(120, 60)
            && frame == QRectF(window.outermostFrame());
    })) << list->window("moving");
}

TEST_P(ManagedWindows, areNotListedWhileMinimised)
{
    addShown("stays", {100, 100, 200, 100});
    const PlainWindow &goes = addShown("goes", {150, 120, 200, 100});
    activate(goes);
    follow();
    expectTitles({"goes", "stays"});

    constexpr std::uint32_t iconic = 3;
    goes.ask("WM_CHANGE_STATE", {iconic, 0, 0, 0, 0});
    expectTitles({"stays"});
    activate(goes);
    expectTitles({"goes", "stays"});
}

TEST_P(ManagedWindows, areNotListedWhileRolledUp)
{
    addShown("stays", {100, 100, 200, 100});
    const PlainWindow &rolls = addShown("rolls", {150, 120, 200, 100});
    activate(rolls);
    follow();
    expectTitles({"rolls", "stays"});

    changeState(rolls, adding, "_NET_WM_STATE_SHADED");
    expectTitles({"stays"});
    changeState(rolls, removing, "_NET_WM_STATE_SHADED");
    expectTitles({"rolls", "stays"});
}

TEST_P(ManagedWindows, areNotListedOnAnotherDesktop)
{
    addShown("here", {100, 100, 200, 100});
    const PlainWindow &there = addShown("there", {150, 120, 200, 100});
    const PlainWindow &everywhere = addShown("everywhere", {200, 140, 200, 100});
    follow();
    activate(everywhere);
    expectTitles({"everywhere", "there", "here"});

    there.ask("_NET_WM_DESKTOP", {1, 2, 0, 0, 0});
    everywhere.ask("_NET_WM_DESKTOP", {0xffffffff, 2, 0, 0, 0});
    expectTitles({"everywhere", "here"});

    there.switchToDesktop(1);
    EXPECT_TRUE(waitFor([this] {
        const auto titles = list->titles();
        return titles.size() == 2 && titles.front() != "here" && titles.back() != "here";
    })) << testing::PrintToString(list->titles());
}

TEST_P(ManagedWindows, areOnTheLayerTheirManagerKeepsThemOn)
{
    const PlainWindow &window = addShown("layered", {100, 100, 200, 100});
    follow();
    expectLayer("layered", [](int layer) { return layer == 0; });

    changeState(window, adding, "_NET_WM_STATE_ABOVE");
    expectLayer("layered", [](int layer) { return layer == 3; });
    changeState(window, removing, "_NET_WM_STATE_ABOVE");
    expectLayer("layered", [](int layer) { return layer == 0; });
    changeState(window, adding, "_NET_WM_STATE_BELOW");
    expectLayer("layered", [](int layer) { return layer < 0; });
}

TEST_P(ManagedWindows, areOnTheLayerOfTheirType)
{
    const std::vector<std::pair<const char *, const char *>> types{
        {"dialog", "_NET_WM_WINDOW_TYPE_DIALOG"},
        {"utility", "_NET_WM_WINDOW_TYPE_UTILITY"},
        {"dock", "_NET_WM_WINDOW_TYPE_DOCK"},
        {"desktop", "_NET_WM_WINDOW_TYPE_DESKTOP"}};
    for (const auto &[title, type] : types) {
        const PlainWindow &window = add(title, {100, 100, 200, 100});
        window.setAtoms("_NET_WM_WINDOW_TYPE", {type});
        window.show();
    }
    follow();

    expectLayer("dialog", [](int layer) { return layer == 0; });
    expectLayer("utility", [](int layer) { return layer == 3; });
    expectLayer("dock", [](int layer) { return layer > 3; });
    expectLayer("desktop", [](int layer) { return layer < 0; });
}

TEST_P(ManagedWindows, menusAreListedAboveTheThirdLayerWhereTheyStand)
{
    const PlainWindow &window = addShown("window", {100, 100, 200, 100});
    addShown("menu", {120, 110, 80, 200}, Placement::ByItself);
    follow();
    expectTitles({"menu", "window"});

    expectLayer("menu", [](int layer) { return layer > 3; });
    expectFrame("menu", {120, 110, 80, 200});
    EXPECT_EQ(list->window("window").layer, 0);
    activate(window);
    windows.back()->destroy();
    expectTitles({"window"});
}

TEST_P(ManagedWindows, areFollowedAsTheyComeAndGoAndChangeTheirTitle)
{
    follow();
    expectTitles({});
    const PlainWindow &window = addShown("first", {100, 100, 200, 100});
    expectTitles({"first"});
    window.setTitle("second");
    expectTitles({"second"});
    window.destroy();
    expectTitles({});
}

TEST_P(ManagedWindows, thatComeAndGoByTheHundredLeaveTheListWhole)
{
    addShown("stays", {100, 100, 200, 100});
    follow();
    expectTitles({"stays"});

    // Each has a connection of its own to the end, so that no id is given twice: managers mistake
    // the one for the other.
    for (int i = 0; i < 100; ++i) {
        const PlainWindow &window = add("goes", {200, 200, 100, 50});
        if (i % 2 == 0)
            window.show();
        window.destroy();
    }
    addShown("comes", {300, 300, 200, 100}, Placement::ByItself);
    expectTitles({"comes", "stays"});
    EXPECT_EQ(list->process().ending(), std::nullopt);
}

INSTANTIATE_TEST_SUITE_P(, ManagedWindows,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4),
                         [](const auto &each) {
                             return std::string(each.param == WindowManager::Openbox ? "openbox"
                                                                                     : "xfwm4");
                         });

TEST_F(WindowListFixture, aShadowThatTheProgramPaintsIsNoPartOfItsWindow)
{
    start({.windowManager = WindowManager::Xfwm4});
    const PlainWindow &window = add("shadowed", {100, 100, 240, 140});
    window.setNumbers("_GTK_FRAME_EXTENTS", {10, 12, 8, 14});
    window.renounceDecoration();
    window.show();
    follow();

    expectTitles({"shadowed"});
    const QRectF frame = list->window("shadowed").frame;
    EXPECT_EQ(frame, QRectF(window.outermostFrame().marginsRemoved({10, 8, 12, 14})));
    EXPECT_EQ(frame.size(), QSizeF(218, 118));
}

} // namespace
} // namespace lumacap::harness
