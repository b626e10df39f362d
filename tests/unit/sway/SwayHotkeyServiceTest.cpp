#include "platform/wlroots/sway/hotkeys/SwayHotkeyService.h"
#include "StandInSway.h"
#include "platform/CarbonModifiers.h"

#include <gmock/gmock.h>

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::uint32_t three = 20; // macOS codes
constexpr std::uint32_t four = 21;
constexpr std::uint32_t noKey = 999;
constexpr std::uint32_t controlShift = carbon::controlKey | carbon::shiftKey;

/// Sway as the service sees it, with what a test wants different.
class Sway {
public:
    Sway()
        : m_socket([this](const Message &question) { answer(question); })
    {
    }

    QString path() const { return m_socket.path(); }
    void say(Event event, const QByteArray &facts)
    {
        m_socket.say(static_cast<std::uint32_t>(event), facts);
    }
    /// What it was told to do, oldest first.
    std::vector<std::string> commands() const
    {
        std::vector<std::string> commands;
        for (const Message &question : m_socket.asked()) {
            if (question.type == static_cast<std::uint32_t>(Request::RunCommand))
                commands.push_back(question.payload.toStdString());
        }
        return commands;
    }

    QByteArray config;
    QByteArray mode = "default";
    bool tellsConfig = true;
    bool obeys = true;

private:
    void answer(const Message &question)
    {
        switch (Request{question.type}) {
        case Request::GetConfig:
            m_socket.say(
                question.type,
                tellsConfig
                    ? QJsonDocument(QJsonObject{{u"config"_s, QString::fromUtf8(config)}}).toJson()
                    : QByteArray("no"));
            break;
        case Request::GetVersion:
            m_socket.say(question.type, R"({"loaded_config_file_name": "/nowhere/config"})");
            break;
        case Request::GetBindingState:
            m_socket.say(question.type, R"({"name": ")" + mode + R"("})");
            break;
        default:
            m_socket.say(question.type,
                         obeys ? R"([{"success": true}])" : R"([{"success": false}])");
        }
    }

    StandInSway m_socket;
};

/// Shortcuts in it, and what was told of them.
class Shortcuts : public testing::Test {
protected:
    void open()
    {
        m_service = std::make_unique<SwayHotkeyService>(nullptr, m_sway.path());
        m_service->setPressedHandler([this](std::uint32_t id) { m_told.push_back(id); });
    }
    HotKeyRef add(std::uint32_t id, std::uint32_t keyCode, std::uint32_t modifiers = controlShift)
    {
        return m_service->registerHotKey({id, keyCode, modifiers}, [this, id](HotKeyState state) {
            m_answers.emplace_back(id, state);
        });
    }
    static bool comes(const std::function<bool()> &condition)
    {
        return QTest::qWaitFor(condition, 20000);
    }
    bool areAnswered(std::size_t count)
    {
        return comes([&] { return m_answers.size() >= count; });
    }
    static QByteArray commandOf(int ref)
    {
        return "nop lumacap " + QByteArray::number(QCoreApplication::applicationPid()) + ' '
            + QByteArray::number(ref);
    }
    void press(const QByteArray &command)
    {
        m_sway.say(Event::Binding,
                   R"({"change": "run", "binding": {"command": ")" + command + R"("}})");
    }

    Sway m_sway;
    std::unique_ptr<SwayHotkeyService> m_service;
    std::vector<std::pair<std::uint32_t, HotKeyState>> m_answers;
    std::vector<std::uint32_t> m_told;
};

TEST_F(Shortcuts, areBoundByTheKeyAndToldOncePressed)
{
    open();
    add(7, three);
    ASSERT_TRUE(areAnswered(1));
    EXPECT_THAT(m_answers, ElementsAre(std::pair(7U, HotKeyState::Live)));
    EXPECT_THAT(m_sway.commands(),
                ElementsAre("bindcode --no-repeat --inhibited Ctrl+Shift+12 "
                            + commandOf(1).toStdString()));
    press("nop of another");
    press(commandOf(2));
    press(commandOf(1));
    ASSERT_TRUE(comes([&] { return !m_told.empty(); }));
    EXPECT_THAT(m_told, ElementsAre(7));
}

TEST_F(Shortcuts, areNeverAnsweredWithinTheCall)
{
    open();
    add(1, noKey);
    EXPECT_THAT(m_answers, IsEmpty());
    ASSERT_TRUE(areAnswered(1));
    EXPECT_THAT(m_answers, ElementsAre(std::pair(1U, HotKeyState::NotLive)));
    add(2, noKey);
    EXPECT_EQ(m_answers.size(), 1);
    EXPECT_TRUE(areAnswered(2));
}

TEST_F(Shortcuts, leaveThePersonsOwnAlone)
{
    m_sway.config = "bindsym Ctrl+Shift+3 exec x\nbindcode Ctrl+Shift+13 exec y\n";
    open();
    add(1, three);
    add(2, four);
    ASSERT_TRUE(areAnswered(2));
    EXPECT_THAT(
        m_answers,
        ElementsAre(std::pair(1U, HotKeyState::NotLive), std::pair(2U, HotKeyState::NotLive)));
    EXPECT_THAT(m_sway.commands(), IsEmpty());
}

TEST_F(Shortcuts, areNotLiveWhereTheConfigurationIsNotTold)
{
    m_sway.tellsConfig = false;
    open();
    add(1, three);
    ASSERT_TRUE(areAnswered(1));
    EXPECT_THAT(m_answers, ElementsAre(std::pair(1U, HotKeyState::NotLive)));
    EXPECT_THAT(m_sway.commands(), IsEmpty());
}

TEST_F(Shortcuts, areNotLiveWhereNobodyListens)
{
    m_service = std::make_unique<SwayHotkeyService>(nullptr, u"/nowhere/at/all"_s);
    add(1, three);
    EXPECT_THAT(m_answers, IsEmpty());
    ASSERT_TRUE(areAnswered(1));
    EXPECT_THAT(m_answers, ElementsAre(std::pair(1U, HotKeyState::NotLive)));
}

TEST_F(Shortcuts, areNotLiveWhereTheCompositorRefuses)
{
    m_sway.obeys = false;
    open();
    add(1, three);
    ASSERT_TRUE(areAnswered(1));
    EXPECT_THAT(m_answers, ElementsAre(std::pair(1U, HotKeyState::NotLive)));
}

TEST_F(Shortcuts, ofTwoWithTheSameKeysTheEarlierIsLive)
{
    open();
    const HotKeyRef first = add(1, three);
    add(2, three);
    ASSERT_TRUE(areAnswered(2));
    EXPECT_THAT(m_answers, Contains(std::pair(1U, HotKeyState::Live)));
    EXPECT_THAT(m_answers, Contains(std::pair(2U, HotKeyState::NotLive)));
    m_service->unregisterHotKey(first);
    add(3, three);
    ASSERT_TRUE(areAnswered(3));
    EXPECT_THAT(m_answers.back(), std::pair(3U, HotKeyState::Live));
}

TEST_F(Shortcuts, thatAreGivenUpAreUnboundAndNotAnswered)
{
    open();
    const HotKeyRef early = add(1, three);
    m_service->unregisterHotKey(early);
    const HotKeyRef late = add(2, four);
    ASSERT_TRUE(areAnswered(1));
    EXPECT_THAT(m_answers, ElementsAre(std::pair(2U, HotKeyState::Live)));
    m_service->unregisterHotKey(late);
    ASSERT_TRUE(comes([&] { return m_sway.commands().size() == 2; }));
    EXPECT_EQ(m_sway.commands().back(), "unbindcode --no-repeat --inhibited Ctrl+Shift+13");
}

TEST_F(Shortcuts, areBoundAnewAfterTheConfigurationWasRead)
{
    open();
    add(1, three);
    add(2, four);
    ASSERT_TRUE(areAnswered(2));
    m_sway.config = "bindsym Ctrl+Shift+4 exec x\n";
    m_sway.say(Event::Workspace, R"({"change": "reload", "old": null, "current": null})");
    ASSERT_TRUE(comes([&] { return m_sway.commands().size() == 3; }));
    EXPECT_THAT(m_sway.commands().back(),
                StartsWith("bindcode --no-repeat --inhibited "
                           "Ctrl+Shift+12 "));
    m_sway.config.clear();
    m_sway.say(Event::Workspace, R"({"change": "reload", "old": null, "current": null})");
    ASSERT_TRUE(comes([&] { return m_sway.commands().size() == 5; }));
    EXPECT_THAT(m_sway.commands().back(),
                StartsWith("bindcode --no-repeat --inhibited "
                           "Ctrl+Shift+13 "));
    EXPECT_EQ(m_answers.size(), 2);
}

TEST_F(Shortcuts, areUnboundWhileSuspendedAndAnsweredAfterwards)
{
    open();
    add(1, three);
    ASSERT_TRUE(areAnswered(1));
    m_service->suspend();
    add(2, four);
    ASSERT_TRUE(comes([&] { return m_sway.commands().size() == 2; }));
    EXPECT_THAT(m_sway.commands().back(), StartsWith("unbindcode "));
    EXPECT_EQ(m_answers.size(), 1);
    m_service->resume();
    ASSERT_TRUE(areAnswered(2));
    EXPECT_EQ(m_sway.commands().size(), 4);
}

TEST_F(Shortcuts, goIntoTheUsualModeWhateverTheModeIs)
{
    m_sway.mode = R"(my \"resize\")";
    open();
    const HotKeyRef ref = add(1, three);
    ASSERT_TRUE(areAnswered(1));
    EXPECT_EQ(m_sway.commands().back(),
              "mode default; bindcode --no-repeat --inhibited "
              "Ctrl+Shift+12 "
                  + commandOf(1).toStdString() + R"(; mode "my \"resize\"")");
    m_sway.say(Event::Mode, R"({"change": "default", "pango_markup": false})");
    press(commandOf(1)); // comes after the mode
    ASSERT_TRUE(comes([&] { return !m_told.empty(); }));
    m_service->unregisterHotKey(ref);
    ASSERT_TRUE(comes([&] { return m_sway.commands().size() == 2; }));
    EXPECT_EQ(m_sway.commands().back(), "unbindcode --no-repeat --inhibited Ctrl+Shift+12");
}

} // namespace

} // namespace lumacap::sway
