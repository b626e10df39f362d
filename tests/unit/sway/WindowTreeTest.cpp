#include "platform/wlroots/sway/WindowTree.h"

#include <gmock/gmock.h>

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

/// A tree that sway told of terminals named A to E on two outputs of 1920 × 1080 points, side by
/// side. Its title bars are 25 points high.
QJsonObject recorded(const QString &name)
{
    QFile file(QStringLiteral(LUMACAP_TREES "/%1.json").arg(name));
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("no such tree");
    return QJsonDocument::fromJson(file.readAll()).object();
}

/// "A 0,25 960x1055" for each window.
std::vector<std::string> linesOf(const std::vector<TreeWindow> &windows)
{
    std::vector<std::string> lines;
    for (const TreeWindow &window : windows) {
        const QRect frame = window.frame.toRect();
        lines.push_back(u"%1 %2,%3 %4x%5"_s.arg(window.title)
                            .arg(frame.x())
                            .arg(frame.y())
                            .arg(frame.width())
                            .arg(frame.height())
                            .toStdString());
    }
    return lines;
}

std::vector<std::string> seenIn(const QString &name)
{
    return linesOf(windowsOf(recorded(name)));
}

TEST(WindowTree, tiledWindowsHaveTheirTitleBars)
{
    EXPECT_THAT(seenIn(u"split"_s), ElementsAre("B 960,0 960x1080", "A 0,0 960x1080"));
}

TEST(WindowTree, aTabbedContainerShowsOneWindowUnderTheRowOfTabs)
{
    EXPECT_THAT(seenIn(u"tabbed"_s), ElementsAre("C 960,0 960x1080", "A 0,0 960x1080"));
}

TEST(WindowTree, aStackedContainerShowsOneWindowUnderAllTitleBars)
{
    EXPECT_THAT(seenIn(u"stacked"_s), ElementsAre("C 960,0 960x1080", "A 0,0 960x1080"));
}

TEST(WindowTree, windowsSideBySideInAStackHaveTheirOwnTitleBarsOnly)
{
    EXPECT_THAT(seenIn(u"nested"_s),
                ElementsAre("D 1440,50 480x1030", "C 960,50 480x1030", "A 0,0 960x1080"));
}

TEST(WindowTree, floatingWindowsAreInFrontTheLastRaisedFirst)
{
    EXPECT_THAT(seenIn(u"floating"_s),
                ElementsAre("C 500,300 400x300", "D 300,200 400x300", "B 960,0 960x1080",
                            "A 0,0 960x1080"));
    EXPECT_THAT(seenIn(u"raised"_s),
                ElementsAre("D 300,200 400x300", "C 500,300 400x300", "B 960,0 960x1080",
                            "A 0,0 960x1080"));
}

TEST(WindowTree, aFullScreenWindowIsAloneOnItsWorkspace)
{
    EXPECT_THAT(seenIn(u"fullscreen"_s), ElementsAre("C 0,0 1920x1080"));
    EXPECT_THAT(seenIn(u"fullscreenTiled"_s), ElementsAre("A 0,0 1920x1080"));
}

TEST(WindowTree, whatFloatsIsInFrontOfTheOtherOutputsWindowsToo)
{
    EXPECT_THAT(seenIn(u"outputs"_s),
                ElementsAre("D 1700,200 400x300", "C 500,300 400x300", "E 1920,0 1920x1080",
                            "B 960,0 960x1080", "A 0,0 960x1080"));
}

TEST(WindowTree, aFullScreenWindowIsInFrontOfWhatReachesOverFromTheNextOutput)
{
    EXPECT_THAT(seenIn(u"outputsFullscreen"_s),
                ElementsAre("E 1920,0 1920x1080", "D 1700,200 400x300", "C 500,300 400x300",
                            "B 960,0 960x1080", "A 0,0 960x1080"));
}

TEST(WindowTree, aWindowOverAllOutputsIsAlone)
{
    EXPECT_THAT(seenIn(u"global"_s), ElementsAre("E 0,0 3840x1080"));
}

TEST(WindowTree, otherWorkspacesAndTheScratchpadAreLeftOut)
{
    EXPECT_THAT(seenIn(u"hidden"_s), ElementsAre("E 1920,0 1920x1080"));
}

TEST(WindowTree, aWindowWithoutBorderHasNoTitleBar)
{
    EXPECT_THAT(seenIn(u"csd"_s), ElementsAre("E 1920,0 1920x1080"));
}

TEST(WindowTree, tellsWhoseAWindowIs)
{
    const QJsonObject tree = recorded(u"split"_s);
    const std::vector<TreeWindow> windows = windowsOf(tree);
    ASSERT_EQ(windows.size(), 2);
    EXPECT_EQ(windows.back().applicationId, u"A"_s);
    EXPECT_GT(windows.back().processId, 1);
    EXPECT_NE(windows.front().id, windows.back().id);
}

TEST(WindowTree, aWindowOfTheXServerHasAClass)
{
    const auto tree = QJsonDocument::fromJson(R"({"nodes": [{"type": "output", "nodes": [
        {"type": "workspace", "layout": "splith", "floating_nodes": [], "nodes": [
            {"id": 7, "visible": true, "app_id": null, "name": null, "pid": 12, "nodes": [],
             "window_properties": {"class": "XTerm", "instance": "xterm"},
             "rect": {"x": 1, "y": 2, "width": 3, "height": 4}}]}]}]})");
    EXPECT_THAT(windowsOf(tree.object()),
                ElementsAre(TreeWindow{.id = 7,
                                       .processId = 12,
                                       .frame = {1, 2, 3, 4},
                                       .title = {},
                                       .applicationId = {},
                                       .className = u"XTerm"_s,
                                       .classInstance = u"xterm"_s}));
}

TEST(WindowTree, nonsenseHasNoWindows)
{
    EXPECT_THAT(windowsOf({}), IsEmpty());
    for (
        const char *json :
        {R"({"nodes": 3})", R"({"nodes": [null, 1, "x"]})", R"({"nodes": [{"nodes": [[]]}]})",
         R"({"nodes": [{"nodes": [{"nodes": ["visible"], "floating_nodes": {"visible": true}}]}]})"})
        EXPECT_THAT(windowsOf(QJsonDocument::fromJson(json).object()), IsEmpty()) << json;
}

TEST(WindowTree, aWindowWithoutPlaceOrProcessIsStillAWindow)
{
    const auto tree = QJsonDocument::fromJson(
        R"({"nodes": [{"nodes": [{"nodes": [{"visible": true, "pid": -1, "id": 3}]}]}]})");
    const std::vector<TreeWindow> windows = windowsOf(tree.object());
    ASSERT_EQ(windows.size(), 1);
    EXPECT_EQ(windows.front().processId, std::nullopt);
    EXPECT_EQ(windows.front().frame, QRectF());
}

} // namespace

} // namespace lumacap::sway
