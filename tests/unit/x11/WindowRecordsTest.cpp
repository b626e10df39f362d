#include "platform/x11/windows/WindowRecords.h"

#include "platform/x11/Monitors.h"
#include "platform/x11/windows/RootState.h"
#include "platform/x11/windows/WindowAtoms.h"
#include "platform/x11/windows/WindowFacts.h"

#include <gtest/gtest.h>

namespace lumacap::x11 {

namespace {

/// Atoms that differ; the server's are as good.
constexpr WindowAtoms atoms{.stateHidden = 101,
                            .stateShaded = 102,
                            .stateAbove = 103,
                            .stateBelow = 104,
                            .typeDesktop = 201,
                            .typeDock = 202,
                            .typeToolbar = 203,
                            .typeMenu = 204,
                            .typeUtility = 205,
                            .typeSplash = 206,
                            .typeDialog = 207,
                            .typeDropdownMenu = 208,
                            .typePopupMenu = 209,
                            .typeTooltip = 210,
                            .typeNotification = 211,
                            .typeCombo = 212,
                            .typeDragged = 213,
                            .typeNormal = 214};
constexpr std::uint32_t unknownType = 999;

/// A window of 200 × 100 pixels at 50, 60, in no frame.
WindowFacts bare()
{
    WindowFacts facts;
    facts.window = {.id = 7, .topLevel = 7};
    facts.inside = QRect(50, 60, 200, 100);
    facts.frame = facts.inside;
    return facts;
}

/// The same in a frame that adds 5 pixels at the sides and below, 20 above.
WindowFacts framed()
{
    WindowFacts facts = bare();
    facts.window.topLevel = 8;
    facts.frame = QRect(45, 40, 210, 125);
    return facts;
}

WindowFacts ofTypes(const std::vector<std::uint32_t> &types)
{
    WindowFacts facts = bare();
    facts.types = types;
    return facts;
}

RootState managed()
{
    RootState root;
    root.clients.emplace();
    return root;
}

} // namespace

TEST(WindowLayer, ordinaryWindowsAndDialogsAreOnTheLowest)
{
    for (const auto &types : std::vector<std::vector<std::uint32_t>>{
             {}, {unknownType}, {atoms.typeNormal}, {atoms.typeDialog}, {atoms.typeSplash}})
        EXPECT_EQ(layerOf(ofTypes(types), atoms), 0);
}

TEST(WindowLayer, whatIsKeptAboveIsOnTheThird)
{
    WindowFacts facts = bare();
    facts.states = {atoms.stateAbove};
    EXPECT_EQ(layerOf(facts, atoms), 3);
    EXPECT_EQ(layerOf(ofTypes({atoms.typeUtility}), atoms), 3);
    EXPECT_EQ(layerOf(ofTypes({atoms.typeToolbar}), atoms), 3);
}

TEST(WindowLayer, panelsAndPopUpsAreAboveTheThird)
{
    for (const std::uint32_t type :
         {atoms.typeDock, atoms.typeMenu, atoms.typeDropdownMenu, atoms.typePopupMenu,
          atoms.typeTooltip, atoms.typeNotification, atoms.typeCombo, atoms.typeDragged})
        EXPECT_GT(layerOf(ofTypes({type}), atoms), 3) << type;
}

TEST(WindowLayer, windowsThatPlaceThemselvesAreAboveTheThird)
{
    for (const auto &types : std::vector<std::vector<std::uint32_t>>{
             {}, {atoms.typeNormal}, {atoms.typeUtility}, {atoms.typeMenu}}) {
        WindowFacts facts = ofTypes(types);
        facts.window.placing = Placing::ByItself;
        EXPECT_GT(layerOf(facts, atoms), 3);
    }
}

TEST(WindowLayer, theDesktopAndWhatIsKeptBelowAreBeneathAll)
{
    EXPECT_LT(layerOf(ofTypes({atoms.typeDesktop}), atoms), 0);
    WindowFacts facts = bare();
    facts.states = {atoms.stateBelow};
    EXPECT_LT(layerOf(facts, atoms), 0);
    facts = ofTypes({atoms.typeDesktop});
    facts.window.placing = Placing::ByItself;
    EXPECT_LT(layerOf(facts, atoms), 0);
    facts = ofTypes({atoms.typeDesktop});
    facts.states = {atoms.stateAbove};
    EXPECT_LT(layerOf(facts, atoms), 0);
}

TEST(WindowLayer, theFirstKnownTypeCounts)
{
    EXPECT_EQ(layerOf(ofTypes({unknownType, atoms.typeUtility, atoms.typeNormal}), atoms), 3);
    EXPECT_EQ(layerOf(ofTypes({atoms.typeNormal, atoms.typeDock}), atoms), 0);
}

TEST(WindowLayer, aPanelKeptAboveStaysAboveTheThird)
{
    WindowFacts facts = ofTypes({atoms.typeDock});
    facts.states = {atoms.stateAbove};
    EXPECT_GT(layerOf(facts, atoms), 3);
}

TEST(ShownWindow, isNeitherMinimisedNorRolledUp)
{
    EXPECT_TRUE(isShown(bare(), atoms, managed()));
    for (const std::uint32_t state : {atoms.stateHidden, atoms.stateShaded}) {
        WindowFacts facts = bare();
        facts.states = {atoms.stateAbove, state};
        EXPECT_FALSE(isShown(facts, atoms, managed()));
    }
}

TEST(ShownWindow, isOnTheVisibleDesktopWhereOneIsKnown)
{
    RootState root = managed();
    root.visibleDesktop = 2;
    WindowFacts facts = bare();
    EXPECT_TRUE(isShown(facts, atoms, root));
    facts.desktop = 2;
    EXPECT_TRUE(isShown(facts, atoms, root));
    facts.desktop = 0xffffffff; // on all of them
    EXPECT_TRUE(isShown(facts, atoms, root));
    facts.desktop = 1;
    EXPECT_FALSE(isShown(facts, atoms, root));

    root.visibleDesktop = std::nullopt;
    EXPECT_TRUE(isShown(facts, atoms, root));
}

TEST(VisibleFrame, ofABareWindowIsTheWindowWithItsBorder)
{
    WindowFacts facts = bare();
    EXPECT_EQ(visibleFrame(facts, {}), QRect(50, 60, 200, 100));
    facts.border = 3;
    EXPECT_EQ(visibleFrame(facts, {}), QRect(47, 57, 206, 106));
}

TEST(VisibleFrame, hasTheDecorationThatTheManagerTells)
{
    WindowFacts facts = framed();
    facts.decoration = QMargins(1, 20, 1, 1);
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(49, 40, 202, 121));
}

TEST(VisibleFrame, isTheFramesWhereTheManagerTellsNone)
{
    EXPECT_EQ(visibleFrame(framed(), managed()), QRect(45, 40, 210, 125));
    EXPECT_EQ(visibleFrame(framed(), {}), QRect(45, 40, 210, 125));
}

TEST(VisibleFrame, hasNoDecorationOfAManagerThatHasGone)
{
    WindowFacts facts = bare();
    facts.decoration = QMargins(5, 20, 5, 5);
    EXPECT_EQ(visibleFrame(facts, {}), QRect(50, 60, 200, 100));
}

TEST(VisibleFrame, ofAMenuHasNoDecoration)
{
    WindowFacts facts = bare();
    facts.window.placing = Placing::ByItself;
    facts.decoration = QMargins(5, 20, 5, 5);
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(50, 60, 200, 100));
}

TEST(VisibleFrame, countsABorderThatIsTheDecorationOnce)
{
    WindowFacts facts = bare();
    facts.border = 2;
    facts.decoration = QMargins(2, 2, 2, 2);
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(48, 58, 204, 104));
    facts.decoration = QMargins();
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(48, 58, 204, 104));
}

TEST(VisibleFrame, hasNoShadow)
{
    WindowFacts facts = bare();
    facts.shadow = QMargins(10, 8, 10, 12);
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(60, 68, 180, 80));
    facts.decoration = QMargins();
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(60, 68, 180, 80));
    facts.window.topLevel = 8; // in a frame of the window's own size
    facts.decoration = std::nullopt;
    EXPECT_EQ(visibleFrame(facts, managed()), QRect(60, 68, 180, 80));
}

TEST(TopLeftFrame, countsFromTheMainMonitorsUpperLeftInItsPoints)
{
    EXPECT_EQ(topLeftFrame({100, 50, 40, 30}, {0, 0, 1920, 1080}, 1),
              (Rect<TopLeftGlobal>{{100, 50}, {40, 30}}));
    EXPECT_EQ(topLeftFrame({1281, 205, 41, 30}, {1280, 200, 3840, 2160}, 2),
              (Rect<TopLeftGlobal>{{0.5, 2.5}, {20.5, 15}}));
    EXPECT_EQ(topLeftFrame({0, 0, 40, 30}, {1280, 200, 1920, 1080}, 1),
              (Rect<TopLeftGlobal>{{-1280, -200}, {40, 30}}));
}

TEST(TopLeftFrame, isThePlaceThatScreensHaveTheirFramesIn)
{
    for (const double factor : {1.0, 2.0}) {
        const QRect main(1280, 200, 3840, 2160);
        const QRect second(0, 30, 1280, 1024);
        const double height = globalFrame(main, main, factor).height();
        EXPECT_EQ(toGlobal(topLeftFrame(main, main, factor), height),
                  globalFrame(main, main, factor));
        EXPECT_EQ(toGlobal(topLeftFrame(second, main, factor), height),
                  globalFrame(second, main, factor));
    }
}

} // namespace lumacap::x11
