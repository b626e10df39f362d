#include "platform/kwin/windows/WindowFacts.h"

#include "platform/ApplicationNames.h"

#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace lumacap::kwin {

namespace {

/// Knows one application.
class KnownApplication final : public ApplicationNames {
public:
    std::optional<QString> nameOf(const QStringList &identifiers) const override
    {
        return identifiers.contains(u"org.kde.dolphin"_s) ? std::optional(u"Files"_s)
                                                          : std::nullopt;
    }
};

/// A window as the script tells it.
QJsonObject told()
{
    return {{u"id"_s, u"{0000002a-bc0a-4dc1-bc91-8777a7b28215}"_s},
            {u"pid"_s, 4711},
            {u"title"_s, u"Home"_s},
            {u"desktopFile"_s, u"org.kde.dolphin"_s},
            {u"className"_s, u"dolphin"_s},
            {u"instance"_s, u"dolphin"_s},
            {u"frame"_s, QJsonArray{100.5, 200, 300, 400.25}},
            {u"kind"_s, u"normal"_s},
            {u"layer"_s, 2},
            {u"above"_s, false},
            {u"below"_s, false},
            {u"fullScreen"_s, false}};
}

QJsonObject toldWith(const QString &key, const QJsonValue &value)
{
    QJsonObject changed = told();
    changed[key] = value;
    return changed;
}

QByteArray json(const QJsonArray &windows)
{
    return QJsonDocument(windows).toJson();
}

const WindowFacts ordinary{.number = 42,
                           .processId = 4711,
                           .title = u"Home"_s,
                           .desktopFile = u"org.kde.dolphin"_s,
                           .className = u"dolphin"_s,
                           .instance = u"dolphin"_s,
                           .frame = {100.5, 200, 300, 400.25},
                           .kind = u"normal"_s,
                           .layer = 2};

/// A screen, and one to its left.
std::vector<wayland::Output> outputs()
{
    return {{u"DP-1"_s, {1920, 1080}, {0, 0, 1920, 1080}},
            {u"DP-2"_s, {1000, 1000}, {-1000, 0, 1000, 1000}}};
}

int layer(const char *kind, int layerOfKWin = 2)
{
    WindowFacts facts = ordinary;
    facts.kind = QLatin1StringView(kind);
    facts.layer = layerOfKWin;
    return layerOf(facts);
}

} // namespace

TEST(WindowFactsTest, aWindowIsReadAsTheScriptTellsIt)
{
    EXPECT_THAT(windowFacts(json({told()})), ElementsAre(ordinary));
}

TEST(WindowFactsTest, rubbishIsNoWindow)
{
    for (const char *const rubbish : {"", "undefined", "{}", "[", "[1, \"two\", null, [], {}]"})
        EXPECT_THAT(windowFacts(rubbish), IsEmpty()) << rubbish;
    const QJsonArray noWindows{toldWith(u"id"_s, u"seven"_s),
                               toldWith(u"id"_s, {}),
                               toldWith(u"frame"_s, {}),
                               toldWith(u"frame"_s, QJsonArray{1, 2, 3}),
                               toldWith(u"frame"_s, QJsonArray{1, 2, 0, 4}),
                               toldWith(u"frame"_s, QJsonArray{1, 2, -3, 4}),
                               toldWith(u"frame"_s, QJsonArray{1, 2, u"wide"_s, 4})};
    EXPECT_THAT(windowFacts(json(noWindows)), IsEmpty());
}

TEST(WindowFactsTest, oneBadWindowSpoilsNoOther)
{
    EXPECT_THAT(windowFacts(json({toldWith(u"id"_s, {}), told()})), ElementsAre(ordinary));
}

TEST(WindowFactsTest, aFactThatIsMissingIsLeftOpen)
{
    const auto facts = windowFacts(
        json({QJsonObject{{u"id"_s, told()[u"id"_s]}, {u"frame"_s, told()[u"frame"_s]}}}));
    ASSERT_THAT(facts, SizeIs(1));
    const auto records = windowRecords(facts, outputs(), KnownApplication());
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_FALSE(records[0].ownerPID);
    EXPECT_EQ(records[0].ownerName, QString());
}

TEST(WindowFactsTest, theKindGivesTheLayer)
{
    EXPECT_EQ(layer("normal"), 0);
    EXPECT_EQ(layer("dialog"), 0);
    EXPECT_EQ(layer("utility"), 3);
    EXPECT_GT(layer("dock"), 3);
    EXPECT_GT(layer("dock", 1), 3); // windows can cover this panel
    EXPECT_GT(layer("notification"), 3);
    EXPECT_GT(layer("popupWindow"), 3);
    EXPECT_GT(layer("a kind of Plasma 7"), 3);
    EXPECT_LT(layer("desktopWindow"), 0);
}

TEST(WindowFactsTest, anOrdinaryWindowIsWhereItIsKept)
{
    WindowFacts facts = ordinary;
    facts.isKeptAbove = true;
    facts.layer = 4;
    EXPECT_EQ(layerOf(facts), 3);
    facts = ordinary;
    facts.isKeptBelow = true;
    EXPECT_LT(layerOf(facts), 0);
    facts = ordinary;
    facts.isFullScreen = true;
    facts.layer = 6;
    EXPECT_EQ(layerOf(facts), 0);
}

TEST(WindowFactsTest, aSurfaceWithoutAKindIsWhereItsLayerIs)
{
    EXPECT_LT(layer("normal", 0), 0);
    EXPECT_GT(layer("normal", 5), 3);
}

TEST(WindowFactsTest, recordsAreFrontmostFirstInTheSpaceOfLists)
{
    WindowFacts lower = ordinary;
    lower.number = 7;
    lower.frame = {-500, 10, 100, 100};
    const auto records = windowRecords({lower, ordinary}, outputs(), KnownApplication());
    ASSERT_THAT(records, SizeIs(2));
    EXPECT_EQ(records[0].windowNumber, 42);
    EXPECT_EQ(records[0].bounds, (Rect<TopLeftGlobal>{{100.5, 200}, {300, 400.25}}));
    EXPECT_EQ(records[0].windowName, u"Home"_s);
    EXPECT_EQ(records[0].ownerPID, 4711);
    EXPECT_EQ(records[0].layer, 0);
    EXPECT_EQ(records[1].bounds, (Rect<TopLeftGlobal>{{-500, 10}, {100, 100}}));
}

TEST(WindowFactsTest, theOwnerIsTheApplicationAsItsPersonKnowsIt)
{
    WindowFacts unknown = ordinary;
    unknown.desktopFile = u"com.example.unknown"_s;
    const auto records = windowRecords({unknown, ordinary}, outputs(), KnownApplication());
    ASSERT_THAT(records, SizeIs(2));
    EXPECT_EQ(records[0].ownerName, u"Files"_s);
    EXPECT_EQ(records[1].ownerName, u"dolphin"_s);
}

TEST(WindowFactsTest, aWindowOffAllScreensIsLeftOut)
{
    WindowFacts away = ordinary;
    away.frame = {5000, 0, 100, 100};
    EXPECT_THAT(windowRecords({away}, outputs(), KnownApplication()), IsEmpty());
}

TEST(WindowFactsTest, ourOwnCoverIsLeftOutAndOurWindowIsNot)
{
    WindowFacts cover = ordinary;
    cover.processId = QCoreApplication::applicationPid();
    cover.layer = 9;
    WindowFacts window = cover;
    window.layer = 2;
    window.number = 3;
    const auto records = windowRecords({window, cover}, outputs(), KnownApplication());
    ASSERT_THAT(records, SizeIs(1));
    EXPECT_EQ(records[0].windowNumber, 3);
}

} // namespace lumacap::kwin
