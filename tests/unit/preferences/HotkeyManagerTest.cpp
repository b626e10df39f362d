#include "preferences/HotkeyManager.h"

#include "fakes/FakeHotkeyService.h"
#include "preferences/storage/KeyCombo.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Key;

namespace lumacap {

namespace {

constexpr std::uint32_t fullScreen = 1;
constexpr std::uint32_t selection = 2;
constexpr KeyCombo one{18, carbon::controlKey | carbon::shiftKey};
constexpr KeyCombo two{19, carbon::controlKey | carbon::shiftKey};

HotKey keyOf(std::uint32_t id, const KeyCombo &combo)
{
    return {id, combo.keyCode, combo.modifiers};
}

struct HotkeyManagerTest : testing::Test {
    HotkeyManager::Handler noting(const char *name)
    {
        return [this, name] { called.emplace_back(name); };
    }
    /// A press as the desktop tells it, and the turns of the loop after it.
    void press(std::uint32_t id) const
    {
        service.onPressed(id);
        QCoreApplication::processEvents();
    }

    std::vector<std::string> called;
    FakeHotkeyService service;
    std::shared_ptr<HotkeyManager> manager = HotkeyManager::make(service);
};

} // namespace

TEST_F(HotkeyManagerTest, isMadeWithoutShortcuts)
{
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
    EXPECT_THAT(manager->handlers(), IsEmpty());
    EXPECT_THAT(service.registrations, IsEmpty());
    EXPECT_EQ(HotkeyManager::current(), manager);
}

TEST_F(HotkeyManagerTest, handsKeyAndModifiersOnUnchanged)
{
    manager->registerHotKey(fullScreen, {0xFFFFFFFF, 0x12345678}, noting("full"));
    EXPECT_THAT(service.registered(), ElementsAre(HotKey{fullScreen, 0xFFFFFFFF, 0x12345678}));
}

TEST_F(HotkeyManagerTest, aShortcutIsLiveOnceTheDesktopSaysSo)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
    EXPECT_THAT(manager->handlers(), ElementsAre(Key(fullScreen)));

    service.answerAll();
    EXPECT_THAT(manager->hotKeyRefs(),
                ElementsAre(std::pair(fullScreen, service.registrations.front().ref)));
}

TEST_F(HotkeyManagerTest, aPressRunsItsHandlerOnALaterTurnOfTheLoop)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    manager->registerHotKey(selection, two, noting("selection"));
    service.answerAll();

    service.onPressed(selection);
    EXPECT_THAT(called, IsEmpty());
    QCoreApplication::processEvents();
    EXPECT_THAT(called, ElementsAre("selection"));
    press(fullScreen);
    EXPECT_THAT(called, ElementsAre("selection", "full"));
}

TEST_F(HotkeyManagerTest, registeringANumberTwiceLeavesTheSecondComboAndHandler)
{
    manager->registerHotKey(fullScreen, one, noting("first"));
    service.answerAll();
    manager->registerHotKey(fullScreen, two, noting("second"));
    service.answerAll();

    EXPECT_THAT(service.registered(), ElementsAre(keyOf(fullScreen, two)));
    EXPECT_THAT(manager->hotKeyRefs(), ElementsAre(Key(fullScreen)));
    EXPECT_THAT(manager->handlers(), ElementsAre(Key(fullScreen)));
    press(fullScreen);
    EXPECT_THAT(called, ElementsAre("second"));
}

TEST_F(HotkeyManagerTest, registeringAgainBeforeTheAnswerLeavesTheSecondAlone)
{
    manager->registerHotKey(fullScreen, one, noting("first"));
    manager->registerHotKey(fullScreen, two, noting("second"));
    EXPECT_THAT(service.registered(), ElementsAre(keyOf(fullScreen, two)));

    service.answerAll();
    EXPECT_THAT(manager->hotKeyRefs(),
                ElementsAre(std::pair(fullScreen, service.registrations.front().ref)));
}

TEST_F(HotkeyManagerTest, aRefusedShortcutKeepsItsHandlerButIsNotLive)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    service.answerAll(keyOf(fullScreen, one));
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
    EXPECT_THAT(manager->handlers(), ElementsAre(Key(fullScreen)));

    manager->unregisterAll();
    EXPECT_THAT(manager->handlers(), ElementsAre(Key(fullScreen)));
}

TEST_F(HotkeyManagerTest, aRefusedShortcutLeavesTheOtherLive)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    manager->registerHotKey(selection, two, noting("selection"));
    service.answerAll(keyOf(fullScreen, one));
    EXPECT_THAT(manager->hotKeyRefs(), ElementsAre(Key(selection)));
    press(selection);
    EXPECT_THAT(called, ElementsAre("selection"));
}

TEST_F(HotkeyManagerTest, theNextRegistrationReplacesTheHandlerOfARefusedOne)
{
    manager->registerHotKey(fullScreen, one, noting("refused"));
    service.answerAll(keyOf(fullScreen, one));
    manager->unregisterAll();
    manager->registerHotKey(fullScreen, one, noting("granted"));
    service.answerAll();

    EXPECT_THAT(manager->hotKeyRefs(), ElementsAre(Key(fullScreen)));
    press(fullScreen);
    EXPECT_THAT(called, ElementsAre("granted"));
}

TEST_F(HotkeyManagerTest, unregisteringDropsLiveShortcutsWithTheirHandlers)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    manager->registerHotKey(selection, two, noting("selection"));
    service.answerAll();
    manager->unregisterAll();

    EXPECT_THAT(service.registrations, IsEmpty());
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
    EXPECT_THAT(manager->handlers(), IsEmpty());
    press(fullScreen);
    EXPECT_THAT(called, IsEmpty());
}

TEST_F(HotkeyManagerTest, unregisteringCancelsAnswersUnderWay)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    manager->unregisterAll();
    EXPECT_THAT(service.registrations, IsEmpty());
    EXPECT_THAT(manager->handlers(), IsEmpty());

    service.answerAll();
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
}

TEST_F(HotkeyManagerTest, unregisteringWithoutShortcutsDoesNothing)
{
    manager->unregisterAll();
    manager->unregisterAll();
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
}

TEST_F(HotkeyManagerTest, anAnswerAfterTheManagersEndIsNobodys)
{
    FakeHotkeyService other;
    HotkeyManager::make(other)->registerHotKey(fullScreen, one, noting("full"));
    manager = HotkeyManager::make(service); // the first one goes here
    other.answerAll();
    EXPECT_THAT(manager->hotKeyRefs(), IsEmpty());
}

TEST_F(HotkeyManagerTest, aPressWithoutIdentityLeadsToNumberZeroWhichNobodyHas)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    service.answerAll();
    press(0);
    EXPECT_THAT(called, IsEmpty());
}

TEST_F(HotkeyManagerTest, aPressOfAnUnknownNumberIsIgnored)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    service.answerAll();
    press(77);
    manager->handleHotKeyEvent(0xFFFFFFFF);
    EXPECT_THAT(called, IsEmpty());
}

TEST_F(HotkeyManagerTest, anEmptyEventIsNotHandled)
{
    EXPECT_EQ(HotkeyManager::hotKeyHandler(std::nullopt), HotKeyEventStatus::NotHandled);
    EXPECT_EQ(static_cast<int>(HotKeyEventStatus::NotHandled), -9874);
    EXPECT_EQ(HotkeyManager::hotKeyHandler(fullScreen), HotKeyEventStatus::Handled);
    QCoreApplication::processEvents();
    EXPECT_THAT(called, IsEmpty());
}

TEST_F(HotkeyManagerTest, aSecondManagerTakesOverTheDispatchAndTheFirstStaysLive)
{
    manager->registerHotKey(fullScreen, one, noting("first"));
    service.answerAll();
    FakeHotkeyService other;
    const auto second = HotkeyManager::make(other);
    second->registerHotKey(fullScreen, two, noting("second"));
    other.answerAll();

    EXPECT_THAT(service.registered(), ElementsAre(keyOf(fullScreen, one)));
    EXPECT_THAT(manager->hotKeyRefs(), ElementsAre(Key(fullScreen)));
    press(fullScreen); // of the first one's shortcut
    EXPECT_THAT(called, ElementsAre("second"));
    manager = HotkeyManager::make(service); // so that no handler outlives the test
}

TEST_F(HotkeyManagerTest, aHandlerMayRegisterAnotherInItsOwnPlace)
{
    manager->registerHotKey(fullScreen, one, [this] {
        manager->unregisterAll();
        manager->registerHotKey(fullScreen, two, noting("second"));
        called.emplace_back("first");
    });
    service.answerAll();
    press(fullScreen);
    service.answerAll();
    press(fullScreen);
    EXPECT_THAT(called, ElementsAre("first", "second"));
}

TEST_F(HotkeyManagerTest, aPressThatWasOnItsWayWhenItsShortcutWentIsIgnored)
{
    manager->registerHotKey(fullScreen, one, noting("full"));
    service.answerAll();
    service.onPressed(fullScreen);
    manager->unregisterAll();
    QCoreApplication::processEvents();
    EXPECT_THAT(called, IsEmpty());
}

} // namespace lumacap
