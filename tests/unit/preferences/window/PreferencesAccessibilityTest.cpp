#include "Preferences.h"

#include <QAccessible>

#include <map>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class PreferencesAccessibilityTest : public PreferencesTest {
protected:
    PreferencesAccessibilityTest()
    {
        std::ignore = m_defaults.set(u"defaultShowFrame"_s, true);
        std::ignore = m_defaults.set(u"saveToFile"_s, true);
        std::ignore = m_defaults.set(u"saveDirectory"_s, u"/srv/Pictures"_s);
        show();
        collect(*QAccessible::queryAccessibleInterface(m_controller->window()));
    }

    /// The first of that name and role.
    QAccessibleInterface *find(const QString &name, QAccessible::Role role) const
    {
        for (QAccessibleInterface *const one : m_all) {
            if (one->text(QAccessible::Name) == name && one->role() == role)
                return one;
        }
        ADD_FAILURE() << "nothing is called " << name.toStdString();
        return nullptr;
    }
    QAccessible::State stateOf(const QString &name, QAccessible::Role role) const
    {
        QAccessibleInterface *const found = find(name, role);
        return found == nullptr ? QAccessible::State() : found->state();
    }

    QList<QAccessibleInterface *> m_all;

private:
    void collect(const QAccessibleInterface &parent)
    {
        for (int index = 0; index < parent.childCount(); ++index) {
            m_all.append(parent.child(index));
            collect(*parent.child(index));
        }
    }
};

TEST_F(PreferencesAccessibilityTest, everyControlSaysWhatItIs)
{
    const std::vector<std::pair<QString, QAccessible::Role>> controls{
        {u"General"_s, QAccessible::Grouping},
        {u"Lancer au demarrage"_s, QAccessible::CheckBox},
        {u"Raccourcis clavier"_s, QAccessible::Grouping},
        {u"Plein ecran"_s, QAccessible::Button},
        {u"Selection"_s, QAccessible::Button},
        {u"Capture"_s, QAccessible::Grouping},
        {u"Validation auto"_s, QAccessible::CheckBox},
        {u"Cadre fenetre"_s, QAccessible::CheckBox},
        {u"Theme de fond"_s, QAccessible::Grouping},
        {u"Auto"_s, QAccessible::RadioButton},
        {u"Sombre"_s, QAccessible::RadioButton},
        {u"Clair"_s, QAccessible::RadioButton},
        {u"Océan"_s, QAccessible::RadioButton},
        {u"Couchant"_s, QAccessible::RadioButton},
        {u"Journal"_s, QAccessible::RadioButton},
        {u"Sortie"_s, QAccessible::Grouping},
        {u"Presse-papier"_s, QAccessible::CheckBox},
        {u"Fichier"_s, QAccessible::CheckBox},
        {u"Choisir..."_s, QAccessible::Button},
        {u"Format"_s, QAccessible::Grouping},
        {u"PNG"_s, QAccessible::RadioButton},
        {u"JPEG"_s, QAccessible::RadioButton},
        {u"TIFF"_s, QAccessible::RadioButton},
    };
    for (const auto &[name, role] : controls)
        find(name, role);
}

TEST_F(PreferencesAccessibilityTest, textsAreRead)
{
    for (const QString &text :
         {u"⌃⇧1"_s, u"⌃⇧2"_s,
          u"Capture directement apres la selection de zone, sans cliquer Valider."_s,
          u"Theme de fond"_s, u"Pictures"_s, u"Format"_s, u"Lumacap v1.2.3"_s})
        find(text, QAccessible::StaticText);
}

TEST_F(PreferencesAccessibilityTest, whateverTakesTheFocusHasARoleAndAName)
{
    int controls = 0;
    for (const QAccessibleInterface *const one : m_all) {
        if (!one->state().focusable)
            continue;
        ++controls;
        EXPECT_FALSE(one->text(QAccessible::Name).isEmpty());
        EXPECT_NE(one->role(), QAccessible::Client);
    }
    EXPECT_EQ(controls, 10);
}

TEST_F(PreferencesAccessibilityTest, statesAreThoseOfTheSettings)
{
    EXPECT_TRUE(stateOf(u"Presse-papier"_s, QAccessible::CheckBox).checked);
    EXPECT_FALSE(stateOf(u"Validation auto"_s, QAccessible::CheckBox).checked);
    EXPECT_TRUE(stateOf(u"Validation auto"_s, QAccessible::CheckBox).checkable);
    EXPECT_TRUE(stateOf(u"PNG"_s, QAccessible::RadioButton).checked);
    EXPECT_FALSE(stateOf(u"TIFF"_s, QAccessible::RadioButton).checked);
    EXPECT_FALSE(stateOf(u"Plein ecran"_s, QAccessible::Button).checkable);
    click(switchOf("saveToFile"));
    EXPECT_TRUE(stateOf(u"PNG"_s, QAccessible::RadioButton).invisible);
}

TEST_F(PreferencesAccessibilityTest, pressingThroughTheInterfaceIsAClick)
{
    const auto press = [this](const QString &name, QAccessible::Role role) {
        find(name, role)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    };
    press(u"Validation auto"_s, QAccessible::CheckBox);
    EXPECT_TRUE(m_defaults.boolean(u"autoConfirmSelection"_s));
    press(u"Océan"_s, QAccessible::RadioButton);
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"ocean"_s);
    press(u"Plein ecran"_s, QAccessible::Button);
    EXPECT_TRUE(recorder("fullScreenHotkey").isRecording());
    find(u"Appuyez sur un raccourci..."_s, QAccessible::StaticText);
}

} // namespace
} // namespace lumacap::tests
