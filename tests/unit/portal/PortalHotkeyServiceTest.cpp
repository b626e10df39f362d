#include "platform/portal/shortcuts/PortalHotkeyService.h"

#include "PrivateBus.h"
#include "StandInPortal.h"
#include "platform/CarbonModifiers.h"
#include "platform/Spawn.h"

#include <QDBusArgument>
#include <QDBusObjectPath>

#include <gmock/gmock.h>

#include <memory>

namespace lumacap::portal {

using namespace Qt::StringLiterals;
using freedesktop::eventually;
using freedesktop::PrivateBus;
using testing::ElementsAre;

namespace {

constexpr std::uint32_t digitOne = 0x12;
constexpr std::uint32_t digitTwo = 0x13;
constexpr std::uint32_t controlShift = carbon::controlKey | carbon::shiftKey;
constexpr HotKey fullScreen{1, digitOne, controlShift};
constexpr HotKey selection{2, digitTwo, controlShift};

const auto path = u"/org/freedesktop/portal/desktop"_s;
const auto create = u"CreateSession"_s;
const auto bindAll = u"BindShortcuts"_s;

QVariantMap optionsOf(const QDBusMessage &call)
{
    return qdbus_cast<QVariantMap>(call.arguments().constLast());
}

/// Where the stand-in has the session of `call`.
QString sessionOf(const QDBusMessage &call)
{
    return path
        + u"/session/%1/%2"_s.arg(call.service().mid(1).replace(u'.', u'_'),
                                  optionsOf(call)[u"session_handle_token"_s].toString());
}

QList<BoundShortcut> shortcutsIn(const QDBusMessage &call)
{
    return qdbus_cast<QList<BoundShortcut>>(call.arguments().at(1));
}

class PortalHotkeys : public testing::Test {
public:
    PortalHotkeys()
    {
        registerBoundShortcuts();
        prepare(*portal);
        portal->appear();
        service->setPressedHandler([this](std::uint32_t id) { pressed.push_back(id); });
    }

    /// Grants all that is asked for but the ids in `refused`.
    void prepare(StandInPortal &standIn)
    {
        standIn.setVersion(shortcutsInterface, 1);
        standIn.setResults(create, [](const QDBusMessage &call) {
            return QVariantMap{{u"session_handle"_s, sessionOf(call)}};
        });
        standIn.setResults(bindAll, [this](const QDBusMessage &call) {
            QList<BoundShortcut> bound = shortcutsIn(call);
            bound.removeIf(
                [this](const BoundShortcut &asked) { return refused.contains(asked.id); });
            return QVariantMap{{u"shortcuts"_s, QVariant::fromValue(bound)}};
        });
    }

    HotKeyRef ask(const HotKey &hotKey)
    {
        return service->registerHotKey(
            hotKey, [this, id = hotKey.id](HotKeyState state) { answers.emplace_back(id, state); });
    }

    bool isAnswered(std::size_t count = 1)
    {
        return eventually([this, count] { return answers.size() >= count; });
    }

    static QCoro::Task<> askWhetherOffered(PortalHotkeyService *asked, std::optional<bool> *told)
    {
        *told = co_await asked->isOffered();
    }

    /// Asks the portal, so that all it has told before has arrived.
    std::optional<bool> isOffered()
    {
        std::optional<bool> answer;
        spawn(askWhetherOffered(service.get(), &answer));
        EXPECT_TRUE(eventually([&answer] { return answer.has_value(); }));
        return answer;
    }

    void activate(const QString &session, const QString &id)
    {
        portal->tell(
            path, shortcutsInterface, u"Activated"_s,
            {QVariant::fromValue(QDBusObjectPath(session)), id, qulonglong{1}, QVariantMap()});
    }

    QString lastSession() { return sessionOf(*portal->lastCall(create)); }
    qsizetype times(const QString &member) { return portal->calls().count(member); }
    bool isCalled(const QString &member, qsizetype count)
    {
        return eventually([&] { return times(member) >= count; });
    }

    using Answers = std::vector<std::pair<std::uint32_t, HotKeyState>>;

    PrivateBus bus;
    std::unique_ptr<StandInPortal> portal = std::make_unique<StandInPortal>(bus.connection());
    std::unique_ptr<PortalHotkeyService> service = std::make_unique<PortalHotkeyService>(
        bus.connection(), u"app.lumacap.Lumacap"_s, ShortcutTexts{{1, u"Capture plein ecran"_s}});
    QStringList refused;
    Answers answers;
    std::vector<std::uint32_t> pressed;
};

TEST_F(PortalHotkeys, areBoundTogetherWithTheirKeysAndWords)
{
    ask(fullScreen);
    ask(selection);
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::Live}, {2, HotKeyState::Live}}));
    EXPECT_EQ(portal->calls(), (QStringList{u"Register"_s, create, bindAll}));
    const auto call = portal->lastCall(bindAll);
    EXPECT_EQ(call->signature(), u"oa(sa{sv})sa{sv}"_s);
    const auto asked = shortcutsIn(*call);
    ASSERT_EQ(asked.size(), 2);
    EXPECT_EQ(asked[0].id, u"shortcut-1"_s);
    EXPECT_EQ(asked[0].facts,
              (QVariantMap{{u"description"_s, u"Capture plein ecran"_s},
                           {u"preferred_trigger"_s, u"CTRL+SHIFT+1"_s}}));
    EXPECT_EQ(asked[1].facts[u"preferred_trigger"_s], u"CTRL+SHIFT+2"_s);
}

TEST_F(PortalHotkeys, areNotLiveWhereThePortalLeavesThemOut)
{
    refused = {u"shortcut-2"_s};
    ask(fullScreen);
    ask(selection);
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::Live}, {2, HotKeyState::NotLive}}));
}

TEST_F(PortalHotkeys, ofTheSameKeysTheEarlierIsLive)
{
    ask(fullScreen);
    ask({2, digitOne, controlShift});
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::Live}, {2, HotKeyState::NotLive}}));
}

TEST_F(PortalHotkeys, withoutANameAreNotAskedFor)
{
    ask({1, 4000, controlShift});
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::NotLive}}));
}

class RefusedPortalHotkeys : public PortalHotkeys,
                             public testing::WithParamInterface<std::pair<const char *, Manner>> {
};

TEST_P(RefusedPortalHotkeys, areNotLive)
{
    portal->setManner(QString::fromLatin1(GetParam().first), GetParam().second);
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::NotLive}}));
}

INSTANTIATE_TEST_SUITE_P(Steps, RefusedPortalHotkeys,
                         testing::Values(std::pair{"CreateSession", Manner::Refuses},
                                         std::pair{"CreateSession", Manner::FailsTheCall},
                                         std::pair{"CreateSession", Manner::AnswersNonsense},
                                         std::pair{"CreateSession", Manner::Vanishes},
                                         std::pair{"BindShortcuts", Manner::Cancels},
                                         std::pair{"BindShortcuts", Manner::Refuses},
                                         std::pair{"BindShortcuts", Manner::NamesNonsense},
                                         std::pair{"BindShortcuts", Manner::Vanishes}));

TEST_F(PortalHotkeys, areNotLiveWhereThePortalListsNonsense)
{
    portal->setResults(bindAll, [](const QDBusMessage & /*call*/) {
        return QVariantMap{{u"shortcuts"_s, u"shortcut-1"_s}};
    });
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::NotLive}}));
}

TEST_F(PortalHotkeys, areNotLiveWithoutAPortal)
{
    portal->vanish();
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::NotLive}}));
}

TEST_F(PortalHotkeys, tellTheirPresses)
{
    ask(fullScreen);
    ask(selection);
    ASSERT_TRUE(isAnswered(2));
    activate(lastSession(), u"shortcut-2"_s);
    activate(path + u"/session/of/another"_s, u"shortcut-1"_s);
    activate(lastSession(), u"nonsense"_s);
    activate(lastSession(), u"shortcut-1"_s);
    ASSERT_TRUE(eventually([this] { return pressed.size() >= 2; }));
    EXPECT_THAT(pressed, ElementsAre(2U, 1U));
}

TEST_F(PortalHotkeys, areNobodyElsesToTell)
{
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    StandInPortal liar(bus.connection());
    liar.tell(path, shortcutsInterface, u"Activated"_s,
              {QVariant::fromValue(QDBusObjectPath(lastSession())), u"shortcut-1"_s, qulonglong{1},
               QVariantMap()});
    portal->tell(path, shortcutsInterface, u"Activated"_s, {u"nonsense"_s});
    activate(lastSession(), u"shortcut-1"_s);
    ASSERT_TRUE(eventually([this] { return !pressed.empty(); }));
    EXPECT_THAT(pressed, ElementsAre(1U));
}

TEST_F(PortalHotkeys, areBoundInANewSessionWhenTheyChange)
{
    const HotKeyRef first = ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    const QString before = lastSession();
    service->unregisterHotKey(first);
    ask({1, digitTwo, controlShift});
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(portal->calls(),
              (QStringList{u"Register"_s, create, bindAll, u"Close"_s, create, bindAll}));
    EXPECT_EQ(portal->lastCall(u"Close"_s)->path(), before);
    EXPECT_NE(lastSession(), before);
    activate(before, u"shortcut-1"_s);
    activate(lastSession(), u"shortcut-1"_s);
    ASSERT_TRUE(eventually([this] { return !pressed.empty(); }));
    EXPECT_THAT(pressed, ElementsAre(1U));
}

TEST_F(PortalHotkeys, leaveNoSessionWhenAllAreGivenUp)
{
    const HotKeyRef ref = ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    service->unregisterHotKey(ref);
    EXPECT_TRUE(isCalled(u"Close"_s, 1));
    EXPECT_EQ(times(create), 1);
}

TEST_F(PortalHotkeys, givenUpBeforeTheirAnswerGetNone)
{
    portal->setManner(bindAll, Manner::KeepsSilent);
    const HotKeyRef ref = ask(fullScreen);
    ASSERT_TRUE(isCalled(bindAll, 1));
    service->unregisterHotKey(ref);
    EXPECT_TRUE(isCalled(u"Close"_s, 2)); // the question and the session
    portal->setManner(bindAll, Manner::Grants);
    ask(selection);
    ASSERT_TRUE(isAnswered());
    EXPECT_EQ(answers, (Answers{{2, HotKeyState::Live}}));
}

TEST_F(PortalHotkeys, leaveTheirKeysToOthersWhileSuspended)
{
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    service->suspend();
    ASSERT_TRUE(isCalled(u"Close"_s, 1));
    ask(selection);
    service->resume();
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(times(create), 2);
    EXPECT_EQ(shortcutsIn(*portal->lastCall(bindAll)).size(), 2);
    activate(lastSession(), u"shortcut-1"_s);
    EXPECT_TRUE(eventually([this] { return !pressed.empty(); }));
    EXPECT_EQ(answers, (Answers{{1, HotKeyState::Live}, {2, HotKeyState::Live}}));
}

TEST_F(PortalHotkeys, areBoundAnewByThePortalThatFollows)
{
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    portal->leaveSoon();
    ASSERT_TRUE(eventually([this] { return portal->uniqueName().isEmpty(); }));
    portal = std::make_unique<StandInPortal>(bus.connection());
    prepare(*portal);
    portal->appear();
    ASSERT_TRUE(isCalled(bindAll, 1));
    ASSERT_TRUE(eventually([this] {
        activate(lastSession(), u"shortcut-1"_s);
        return !pressed.empty();
    }));
    EXPECT_EQ(answers.size(), 1U);
}

TEST_F(PortalHotkeys, takenBackByThePortalAreNotAskedForAgainAtOnce)
{
    ask(fullScreen);
    ASSERT_TRUE(isAnswered());
    portal->tell(lastSession(), u"org.freedesktop.portal.Session"_s, u"Closed"_s, {QVariantMap()});
    activate(lastSession(), u"shortcut-1"_s);
    EXPECT_EQ(isOffered(), true);
    EXPECT_EQ(times(create), 1);
    EXPECT_TRUE(pressed.empty());
    ask(selection);
    ASSERT_TRUE(isAnswered(2));
    EXPECT_EQ(times(create), 2);
    EXPECT_FALSE(portal->calls().contains(u"Close"_s)); // it was closed
}

TEST_F(PortalHotkeys, endWithTheServiceWhateverItWaitsFor)
{
    portal->setManner(bindAll, Manner::KeepsSilent);
    ask(fullScreen);
    ASSERT_TRUE(isCalled(bindAll, 1));
    service.reset();
    EXPECT_TRUE(isCalled(u"Close"_s, 2)); // the question and the session
    EXPECT_TRUE(answers.empty());
}

TEST_F(PortalHotkeys, areOfferedWhereTheDesktopImplementsThem)
{
    EXPECT_EQ(isOffered(), true);
    portal->vanish();
    EXPECT_EQ(isOffered(), false);
    StandInPortal other(bus.connection());
    other.appear();
    EXPECT_EQ(isOffered(), false);
}

} // namespace

} // namespace lumacap::portal
