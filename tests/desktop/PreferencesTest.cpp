#include "PreferencesFixture.h"
#include "harness/PlainWindow.h"
#include "harness/Rest.h"
#include "harness/TestedBuild.h"
#include "harness/TrayHost.h"
#include "harness/WaitFor.h"

#include <QFile>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

/// The preferences window, by the mouse.
struct PreferencesTest : PreferencesFixture { };

struct SwitchKey {
    const char *label;
    const char *key;
};

TEST_F(PreferencesTest, eachSwitchWritesItsKey)
{
    startWith();
    openWindow();
    for (const SwitchKey &one :
         {SwitchKey{"Validation auto", "autoConfirmSelection"},
          SwitchKey{"Cadre fenetre", "defaultShowFrame"},
          SwitchKey{"Presse-papier", "copyToClipboard"}, SwitchKey{"Fichier", "saveToFile"}}) {
        const QString label = QString::fromLatin1(one.label);
        const QString key = QString::fromLatin1(one.key);
        EXPECT_EQ(stored(key), std::nullopt);
        const bool before = isChecked(label);
        EXPECT_EQ(before, key == u"copyToClipboard"_s);
        use(label);
        EXPECT_TRUE(comesToBeStored(key, before ? u"false"_s : u"true"_s)) << one.key;
        EXPECT_EQ(isChecked(label), !before);
    }
}

TEST_F(PreferencesTest, backgroundsAppearWithTheFrameAndEachIsWritten)
{
    startWith();
    openWindow();
    EXPECT_FALSE(controls().shows(u"Sombre"_s));
    use(u"Cadre fenetre"_s);
    ASSERT_TRUE(comes(u"Sombre"_s));
    for (const SwitchKey &one :
         {SwitchKey{"Sombre", "darkSlate"}, SwitchKey{"Clair", "light"},
          SwitchKey{"Océan", "ocean"}, SwitchKey{"Couchant", "sunset"},
          SwitchKey{"Journal", "newspaper"}, SwitchKey{"Auto", "dominantColor"}}) {
        use(QString::fromUtf8(one.label));
        EXPECT_TRUE(comesToBeStored(u"defaultFrameBackground"_s, QString::fromLatin1(one.key)));
    }
    use(u"Couchant"_s);
    use(u"Cadre fenetre"_s);
    EXPECT_TRUE(goes(u"Sombre"_s));
    EXPECT_TRUE(comesToBeStored(u"defaultShowFrame"_s, u"false"_s));
    EXPECT_EQ(stored(u"defaultFrameBackground"_s), u"sunset"_s);
}

TEST_F(PreferencesTest, folderAndFormatAppearWithTheFileAndFormatsAreWritten)
{
    startWith();
    openWindow();
    EXPECT_FALSE(controls().shows(u"Choisir..."_s));
    use(u"Fichier"_s);
    ASSERT_TRUE(comes(u"Choisir..."_s));
    for (const auto &format : {u"TIFF"_s, u"PNG"_s, u"JPEG"_s}) {
        use(format);
        EXPECT_TRUE(comesToBeStored(u"imageFormat"_s, format.toLower()));
    }
    use(u"Fichier"_s);
    EXPECT_TRUE(goes(u"Choisir..."_s));
    EXPECT_TRUE(goes(u"JPEG"_s));
    EXPECT_EQ(stored(u"imageFormat"_s), u"jpeg"_s);
}

TEST_F(PreferencesTest, whatIsSetCountsAtOnce)
{
    startWith({{u"saveDirectory"_s, u"/nowhere"_s}});
    openWindow();
    use(u"Presse-papier"_s);
    ASSERT_TRUE(comesToBeStored(u"copyToClipboard"_s, u"false"_s));
    pressFullScreen();
    EXPECT_FALSE(waitFor([this] { return clipboard->changes() > 0; }, 500ms));
}

TEST_F(PreferencesTest, reopeningShowsWhatWasChangedOutside)
{
    startWith();
    openWindow();
    EXPECT_FALSE(isChecked(u"Fichier"_s));
    closeWindow();
    writeSettings(*desktop,
                  {{u"saveToFile"_s, u"true"_s},
                   {u"imageFormat"_s, u"tiff"_s},
                   {u"saveDirectory"_s, u"/srv/Captures of the year"_s},
                   {u"selectionHotkey"_s, storedHotkey(49, 0x0900)}});
    openWindow();
    EXPECT_TRUE(comesToBeChecked(u"Fichier"_s));
    EXPECT_TRUE(isChecked(u"TIFF"_s));
    EXPECT_TRUE(controls().shows(u"Captures of the year"_s));
    EXPECT_TRUE(controls().shows(u"⌥⌘Space"_s));
}

TEST_F(PreferencesTest, theLoginSwitchMakesAndRemovesTheAutostartEntry)
{
    startWith();
    openWindow();
    EXPECT_FALSE(QFile::exists(autostartEntry()));
    use(u"Lancer au demarrage"_s);
    EXPECT_TRUE(waitFor([this] { return QFile::exists(autostartEntry()); }));
    closeWindow();
    openWindow();
    EXPECT_TRUE(isChecked(u"Lancer au demarrage"_s));
    use(u"Lancer au demarrage"_s);
    EXPECT_TRUE(waitFor([this] { return !QFile::exists(autostartEntry()); }));
}

TEST_F(PreferencesTest, aLoginItemThatIsRefusedIsOneLineAndTheSwitchStays)
{
    startWith();
    QFile inTheWay(desktop->folder(u"config"_s) + u"/autostart"_s);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    openWindow();
    use(u"Lancer au demarrage"_s);
    EXPECT_TRUE(waitFor([this] { return agent->process().output().contains('\n'); }));
    const QByteArray said = agent->process().output();
    EXPECT_TRUE(said.startsWith("Launch at login error: ")) << said.toStdString();
    EXPECT_EQ(said.count('\n'), 1);
    EXPECT_TRUE(isChecked(u"Lancer au demarrage"_s));
}

TEST_F(PreferencesTest, aSettingsFileThatCannotBeWrittenLeavesTheSwitchAsItWasTurned)
{
    startWith();
    openWindow();
    const QString folder = desktop->folder(u"config/Lumacap"_s);
    ASSERT_EQ(desktop->ask({u"mv"_s, folder, folder + u".away"_s}).ending, Ending{});
    QFile inTheWay(folder);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    use(u"Validation auto"_s);
    EXPECT_TRUE(comesToBeChecked(u"Validation auto"_s));
    EXPECT_TRUE(agent->activatePlainly());
    EXPECT_TRUE(agent->process().output().isEmpty());
}

TEST_F(PreferencesTest, everythingIsReachedOnAScreenThatIsTooLow)
{
    screenSize = {640, 480};
    startWith({{u"saveToFile"_s, u"true"_s}, {u"defaultShowFrame"_s, u"true"_s}});
    openWindow();
    use(u"TIFF"_s);
    EXPECT_TRUE(comesToBeStored(u"imageFormat"_s, u"tiff"_s));
    use(u"Lancer au demarrage"_s);
    EXPECT_TRUE(waitFor([this] { return QFile::exists(autostartEntry()); }));
}

TEST_F(PreferencesTest, closingTheWindowLeavesTheAgentAtRest)
{
    startWith();
    openWindow();
    use(u"Cadre fenetre"_s);
    ASSERT_TRUE(comes(u"Sombre"_s));
    EXPECT_TRUE(comesToRest(agent->process().pid(), 1s)) << "an open window";
    closeWindow();
    EXPECT_TRUE(comesToRest(agent->process().pid(), 2s));
    EXPECT_FALSE(agent->process().ending());
    pressFullScreen();
    EXPECT_TRUE(captures(1));
}

TEST_F(PreferencesTest, theCommandLineOpensTheWindowAsTheFirstProcessToo)
{
    startBareDesktop();
    agent = std::make_unique<Agent>(*desktop, QStringList{u"preferences"_s});
    agent->requireReady();
    EXPECT_TRUE(waitFor([this] { return isInFront(); }));
}

TEST_F(PreferencesTest, theMenuOpensTheWindow)
{
    startWith();
    TrayHost tray(desktop->bus().address());
    tray.requireItem();
    ASSERT_TRUE(tray.click(u"Preferences..."_s));
    EXPECT_TRUE(waitFor([this] { return isInFront(); }));
}

TEST_F(PreferencesTest, theFolderDialogSpeaksTheLanguageOfItsUser)
{
    startWith({{u"saveToFile"_s, u"true"_s}});
    agent.reset();
    desktop->set("LC_ALL", "fr_FR.UTF-8");
    startAgentWith(fullScreenShortcut);
    openWindow();
    use(u"Choisir..."_s);
    EXPECT_TRUE(comes(u"Annuler"_s));
    press(u"Escape"_s);
    EXPECT_TRUE(goes(u"Annuler"_s));
}

TEST_F(PreferencesTest, theAgentEndsThoughTheFolderDialogIsOpen)
{
    startWith({{u"saveToFile"_s, u"true"_s}});
    openWindow();
    use(u"Choisir..."_s);
    ASSERT_TRUE(waitFor([this] { return !isInFront(); }));
    agent->activateSoon(u"quit"_s);
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), Ending{});
}

TEST_F(PreferencesTest, theWindowLeavesLittleMemoryBehind)
{
    const std::int64_t tolerance = (2LL << 20) + keptBySanitizer();
    startWith();
    const pid_t process = agent->process().pid();
    openWindow();
    closeWindow();
    ASSERT_TRUE(comesToRest(process, 500ms));
    const std::int64_t before = memoryOf(process);
    for (int time = 0; time < 8; ++time) {
        openWindow();
        closeWindow();
    }
    ASSERT_TRUE(comesToRest(process, 500ms));
    EXPECT_LT(memoryOf(process) - before, tolerance);
    RecordProperty("grown", std::to_string(memoryOf(process) - before));
}

class FrontTest : public PreferencesFixture, public testing::WithParamInterface<WindowManager> { };

TEST_P(FrontTest, askedForTwiceTheSameWindowComesToTheFront)
{
    startWith({}, GetParam());
    openWindow();
    const auto before = windows();
    const auto terminal = PlainWindow::shown(display(), {300, 200, 400, 300});
    terminal.requireManaged();
    terminal.ask("_NET_ACTIVE_WINDOW", {2, 0, 0});
    ASSERT_TRUE(waitFor([this] { return !isInFront(); }));
    openWindow();
    EXPECT_EQ(windows(), before);
    EXPECT_FALSE(terminal.isFrontmost());
}

INSTANTIATE_TEST_SUITE_P(Managers, FrontTest,
                         testing::Values(WindowManager::Openbox, WindowManager::Xfwm4));

} // namespace
} // namespace lumacap::harness
