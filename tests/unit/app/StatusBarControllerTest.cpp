#include "app/StatusBarController.h"

#include "fakes/FakeStatusItem.h"
#include "preferences/storage/KeyCombo.h"

#include <QKeySequence>

#include <gmock/gmock.h>

#include <memory>

using namespace Qt::StringLiterals;
using testing::ElementsAre;

namespace lumacap {

namespace {

constexpr KeyCombo controlShiftOne{18, carbon::controlKey | carbon::shiftKey};
constexpr KeyCombo commandF{3, carbon::cmdKey};

struct StatusBarControllerTest : testing::Test {
    QStringList called;
    FakeStatusItem statusItem;
    std::unique_ptr<StatusBarController> controller = std::make_unique<StatusBarController>(
        statusItem, noting(u"full screen"_s), noting(u"selection"_s), noting(u"preferences"_s),
        noting(u"updates"_s), noting(u"quit"_s));

    StatusBarController::Callback noting(const QString &name)
    {
        return [this, name] { called.append(name); };
    }
    QStringList titles() const
    {
        QStringList titles;
        for (const QAction *entry : statusItem.menu)
            titles.append(entry->isSeparator() ? u"-"_s : entry->text());
        return titles;
    }
};

} // namespace

TEST_F(StatusBarControllerTest, showsTheDesignedMenu)
{
    EXPECT_THAT(titles(),
                ElementsAre(u"Capture plein ecran"_s, u"Capture selection..."_s, u"-"_s,
                            u"Preferences..."_s, u"Rechercher les mises a jour..."_s, u"-"_s,
                            u"Quitter Lumacap"_s));
}

TEST_F(StatusBarControllerTest, givesShortcutsToPreferencesAndQuitOnly)
{
    QList<QKeySequence> shortcuts;
    for (const QAction *entry : statusItem.menu)
        shortcuts.append(entry->shortcut());

    EXPECT_THAT(shortcuts,
                ElementsAre(QKeySequence(), QKeySequence(), QKeySequence(),
                            QKeySequence(u"Meta+,"_s), QKeySequence(), QKeySequence(),
                            QKeySequence(u"Meta+Q"_s)));
}

TEST_F(StatusBarControllerTest, callsItsCallbackForEachCommand)
{
    for (QAction *entry : statusItem.menu)
        entry->trigger();

    EXPECT_THAT(
        called,
        ElementsAre(u"full screen"_s, u"selection"_s, u"preferences"_s, u"updates"_s, u"quit"_s));
}

TEST_F(StatusBarControllerTest, putsTheShortcutAfterTwoSpacesAndDropsTheDots)
{
    controller->updateMenuShortcutLabels(controlShiftOne, commandF);

    EXPECT_EQ(titles().at(0), u"Capture plein ecran  (⌃⇧1)"_s);
    EXPECT_EQ(titles().at(1), u"Capture selection  (⌘F)"_s);
}

TEST_F(StatusBarControllerTest, givesTheSameTitlesWhenTheLabelsAreUpdatedTwice)
{
    controller->updateMenuShortcutLabels(controlShiftOne, commandF);
    const QStringList once = titles();
    controller->updateMenuShortcutLabels(controlShiftOne, commandF);

    EXPECT_EQ(titles(), once);
}

TEST_F(StatusBarControllerTest, showsTheIconUnderTheProgramsName)
{
    EXPECT_EQ(statusItem.iconName, u"Lumacap"_s);
    EXPECT_FALSE(statusItem.icon.isNull());
}

TEST_F(StatusBarControllerTest, takesItsEntriesBackWhenItGoes)
{
    controller.reset();

    EXPECT_TRUE(statusItem.menu.isEmpty());
}

} // namespace lumacap
