#include "harness/Agent.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/TestedBuild.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <QCoreApplication>
#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QFile>

#include <csignal>
#include <memory>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

// Of the probe: the number of the physical key, and the modifiers held with it.
const QString controlShiftThree = u"20:4608"_s;
const QString controlOne = u"18:4096"_s;
const QString controlA = u"0:4096"_s;

/// Counts what the service tells of pressed keys.
class Repetitions final : public QObject {
    Q_OBJECT

public:
    explicit Repetitions(QDBusConnection bus)
    {
        bus.connect(u"org.kde.kglobalaccel"_s, {}, u"org.kde.kglobalaccel.Component"_s,
                    u"globalShortcutPressed"_s, this, SLOT(onPressed()));
    }
    int count()
    {
        QCoreApplication::processEvents();
        return m_count;
    }

private Q_SLOTS:
    void onPressed() { ++m_count; }

private:
    int m_count = 0;
};

struct KWinHotkeyTest : testing::Test {
    void start(const QStringList &shortcuts, const QByteArray &layouts = "us")
    {
        startDesktop(layouts);
        run(shortcuts);
    }
    void startDesktop(const QByteArray &layouts = "us")
    {
        // KWin reads its layouts as it starts.
        QFile file(config.filePath(u"kxkbrc"_s));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("[Layout]\nUse=true\nLayoutList=" + layouts + '\n');
        file.close();
        desktop = std::make_unique<KWinDesktop>(KWinOptions{
            .size = {960, 600}, .environment = {{"XDG_CONFIG_HOME", config.path().toLocal8Bit()}}});
    }
    void run(const QStringList &shortcuts)
    {
        probe = &desktop->start(u"hotkeys"_s,
                                QStringList{testedProgram(QStringLiteral(LUMACAP_HOTKEY_PROBE))}
                                    + shortcuts);
    }
    /// Whether the probe has said `line` this often, once it has.
    bool says(const QByteArray &line, qsizetype times = 1) const
    {
        return waitFor([&] { return count(line) >= times; }) && count(line) == times;
    }
    qsizetype count(const QByteArray &line) const
    {
        return probe->output().split('\n').count(line);
    }
    void press(const std::vector<std::uint32_t> &keys) { desktop->input().press(keys); }

    QDBusMessage ask(const QString &path, const QString &interface, const QString &method,
                     const QVariantList &arguments = {},
                     const QString &service = u"org.kde.kglobalaccel"_s)
    {
        auto call = QDBusMessage::createMethodCall(service, path, interface, method);
        call.setArguments(arguments);
        return desktop->connection().call(call);
    }
    /// Another program takes keys.
    void take(int key)
    {
        qDBusRegisterMetaType<QList<int>>();
        const QStringList action{u"another"_s, u"action"_s, u"Another"_s, u"Action"_s};
        ask(u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s, u"doRegister"_s, {action});
        ask(u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s, u"setShortcut"_s,
            {action, QVariant::fromValue(QList<int>{key}), 6U});
    }
    QStringList actionsOf(const QString &component)
    {
        return QDBusReply<QStringList>(ask(u"/component/"_s + component,
                                           u"org.kde.kglobalaccel.Component"_s, u"shortcutNames"_s))
            .value();
    }

    /// Whether the settings name the program at all.
    bool isKnown(const QString &component)
    {
        const QDBusReply<QList<QDBusObjectPath>> all =
            ask(u"/kglobalaccel"_s, u"org.kde.KGlobalAccel"_s, u"allComponents"_s);
        return all.value().contains(QDBusObjectPath(u"/component/"_s + component));
    }
    QString titleOf(const QString &component)
    {
        return QDBusReply<QVariant>(ask(u"/component/"_s + component,
                                        u"org.freedesktop.DBus.Properties"_s, u"Get"_s,
                                        {u"org.kde.kglobalaccel.Component"_s, u"friendlyName"_s}))
            .value()
            .toString();
    }

    QTemporaryDir config;
    std::unique_ptr<KWinDesktop> desktop;
    Process *probe = nullptr;
};

TEST_F(KWinHotkeyTest, eachPressIsToldOnce)
{
    start({controlShiftThree, controlOne});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    for (int time = 0; time < 3; ++time)
        press({evdev::control, evdev::shift, evdev::three});
    press({evdev::control, evdev::three}); // without Shift it is another
    press({evdev::shift, evdev::three});
    press({evdev::control, evdev::one});
    EXPECT_TRUE(says("pressed 2"));
    EXPECT_EQ(count("pressed 1"), 3);
}

TEST_F(KWinHotkeyTest, keysThatAreHeldArePressedOnce)
{
    start({controlOne, controlA});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    Repetitions repetitions(desktop->connection());
    desktop->input().key(evdev::control, Way::Down);
    desktop->input().key(evdev::one, Way::Down);
    require("repetitions", [&] { return repetitions.count() >= 3; });
    desktop->input().key(evdev::one, Way::Up);
    desktop->input().key(evdev::control, Way::Up);
    press({evdev::control, evdev::letterA});
    EXPECT_TRUE(says("pressed 2"));
    EXPECT_EQ(count("pressed 1"), 1);
    press({evdev::control, evdev::one});
    EXPECT_TRUE(says("pressed 1", 2));
}

TEST_F(KWinHotkeyTest, aLockDoesNotMatter)
{
    start({controlShiftThree, controlA});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    for (const std::uint32_t lock : {evdev::capsLock, evdev::numLock}) {
        press({lock});
        press({evdev::control, evdev::shift, evdev::three});
        press({evdev::control, evdev::letterA});
        press({lock});
    }
    EXPECT_TRUE(says("pressed 1", 2));
    EXPECT_TRUE(says("pressed 2", 2));
}

TEST_F(KWinHotkeyTest, theSettingsShowThemUnderTheProgramsName)
{
    start({controlShiftThree});
    ASSERT_TRUE(says("live 1"));
    EXPECT_EQ(titleOf(u"app_lumacap_Lumacap"_s), u"Lumacap"_s);
    EXPECT_EQ(actionsOf(u"app_lumacap_Lumacap"_s), QStringList{u"full-screen"_s});
}

TEST_F(KWinHotkeyTest, anAgentThatEndsLeavesNone)
{
    startDesktop();
    Agent agent(*desktop);
    agent.requireReady();
    EXPECT_TRUE(waitFor([&] { return actionsOf(u"app_lumacap_Lumacap"_s).size() == 2; }));
    EXPECT_TRUE(isKnown(u"app_lumacap_Lumacap"_s));
    ASSERT_TRUE(agent.activate(u"quit"_s));
    EXPECT_EQ(agent.process().waitForEnd(std::chrono::seconds(20)), Ending{});
    EXPECT_TRUE(waitFor([&] { return actionsOf(u"app_lumacap_Lumacap"_s).isEmpty(); }));
    EXPECT_TRUE(waitFor([&] { return !isKnown(u"app_lumacap_Lumacap"_s); }));
}

TEST_F(KWinHotkeyTest, whatAnotherProgramHasStaysItsOwn)
{
    startDesktop();
    take((Qt::CTRL | Qt::Key_NumberSign).toCombined());
    run({controlShiftThree, controlOne});
    EXPECT_TRUE(says("refused 1"));
    EXPECT_TRUE(says("live 2"));
    EXPECT_EQ(actionsOf(u"another"_s), QStringList{u"action"_s});
    EXPECT_TRUE(waitFor(
        [&] { return actionsOf(u"app_lumacap_Lumacap"_s) == QStringList{u"selection"_s}; }));
}

TEST_F(KWinHotkeyTest, ofTwoWithTheSameKeysTheEarlierIsLive)
{
    start({controlOne, controlOne});
    EXPECT_TRUE(says("live 1"));
    EXPECT_TRUE(says("refused 2"));
    press({evdev::control, evdev::one});
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(KWinHotkeyTest, suspendedKeysGoToWhoeverHasTheKeyboard)
{
    start({controlOne});
    ASSERT_TRUE(says("live 1"));
    const Process &window = desktop->startWindow({});
    require("the keyboard", [&window] { return window.output().contains("focus\n"); });
    probe->send(SIGUSR1);
    ASSERT_TRUE(says("suspended"));
    EXPECT_TRUE(waitFor([&] {
        press({evdev::control, evdev::one});
        return window.output().contains("key 2\n");
    }));
    const qsizetype pressed = count("pressed 1"); // before KWin knew
    probe->send(SIGUSR1);
    ASSERT_TRUE(says("resumed"));
    EXPECT_TRUE(waitFor([&] {
        press({evdev::control, evdev::one});
        return count("pressed 1") > pressed;
    }));
}

TEST_F(KWinHotkeyTest, aShortcutThatIsRegisteredAgainIsLive)
{
    start({controlShiftThree, controlOne});
    ASSERT_TRUE(says("live 1") && says("live 2"));
    probe->send(SIGUSR2);
    EXPECT_TRUE(says("live 1", 2) && says("live 2", 2));
    press({evdev::control, evdev::shift, evdev::three});
    EXPECT_TRUE(says("pressed 1"));
}

TEST_F(KWinHotkeyTest, theKeyStaysWhereItIsWhenTheLayoutChanges)
{
    start({controlShiftThree, controlA}, "us,fr");
    ASSERT_TRUE(says("live 1") && says("live 2"));
    const QDBusMessage changed = ask(u"/Layouts"_s, u"org.kde.KeyboardLayouts"_s, u"setLayout"_s,
                                     {1U}, u"org.kde.keyboard"_s);
    ASSERT_EQ(changed.type(), QDBusMessage::ReplyMessage) << changed.errorMessage().toStdString();
    EXPECT_TRUE(waitFor([&] {
        press({evdev::control, evdev::letterA});
        return count("pressed 2") > 0;
    }));
    press({evdev::control, evdev::shift, evdev::three});
    EXPECT_TRUE(waitFor([&] { return count("pressed 1") > 0; }));
}

} // namespace
} // namespace lumacap::harness

#include "KWinHotkeyTest.moc"
