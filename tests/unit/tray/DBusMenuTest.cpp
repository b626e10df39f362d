#include "platform/freedesktop/tray/DBusMenu.h"

#include "PrivateBus.h"

#include <QAction>
#include <QDBusMetaType>

#include <gtest/gtest.h>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

const auto menuPath = u"/MenuBar"_s;
const auto menuInterface = u"com.canonical.dbusmenu"_s;
const auto invalidArguments = u"org.freedesktop.DBus.Error.InvalidArgs"_s;

/// The answer's properties with shortcuts read into the type that they were written from.
QVariantMap readable(QVariantMap properties)
{
    if (const auto shortcut = properties.find(u"shortcut"_s); shortcut != properties.end())
        *shortcut = QVariant::fromValue(qdbus_cast<MenuShortcut>(*shortcut));
    return properties;
}

class DBusMenuOnABus : public testing::Test {
public:
    DBusMenuOnABus()
    {
        separator.setSeparator(true);
        preferences.setShortcut(QKeySequence(Qt::META | Qt::Key_Comma));
        update.setEnabled(false);
        own.registerObject(menuPath, &menu, QDBusConnection::ExportScriptableContents);
        menu.setEntries({&capture, &separator, &preferences, &update});
        for (QAction *const action : {&capture, &separator, &preferences, &update})
            QObject::connect(action, &QAction::triggered, &menu,
                             [this, action] { chosen.append(action->text()); });
    }

    QDBusMessage ask(const QString &method, const QVariantList &arguments)
    {
        auto message =
            QDBusMessage::createMethodCall(own.baseService(), menuPath, menuInterface, method);
        message.setArguments(arguments);
        return call(host, message);
    }

    MenuLayout layout(int parent = 0, int depth = -1, const QStringList &names = {})
    {
        return qdbus_cast<MenuLayout>(
            ask(u"GetLayout"_s, {parent, depth, names}).arguments().value(1));
    }

    QDBusMessage send(int id, const QString &event)
    {
        return ask(u"Event"_s, {id, event, QVariant::fromValue(QDBusVariant(u""_s)), QVariant(0U)});
    }

    PrivateBus bus;
    QDBusConnection own = bus.connection();
    QDBusConnection host = bus.connection();
    QAction capture{u"Capture plein ecran  (⌃⇧1)"_s};
    QAction separator;
    QAction preferences{u"Preferences..."_s};
    QAction update{u"Rechercher les mises_a_jour..."_s};
    QStringList chosen;
    DBusMenu menu;
};

TEST_F(DBusMenuOnABus, laysOutTheEntriesFromTopToBottom)
{
    const MenuLayout told = layout();
    EXPECT_EQ(told.id, 0);
    EXPECT_EQ(told.properties, (QVariantMap{{u"children-display"_s, u"submenu"_s}}));
    ASSERT_EQ(told.children.size(), 4);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(told.children[i].id, i + 1);
        EXPECT_TRUE(told.children[i].children.isEmpty());
    }
    const auto standard = [](const QString &label, bool isEnabled) {
        return QVariantMap{{u"type"_s, u"standard"_s},
                           {u"label"_s, label},
                           {u"enabled"_s, isEnabled},
                           {u"visible"_s, true}};
    };
    EXPECT_EQ(told.children[0].properties, standard(u"Capture plein ecran  (⌃⇧1)"_s, true));
    EXPECT_EQ(told.children[1].properties,
              (QVariantMap{{u"type"_s, u"separator"_s}, {u"visible"_s, true}}));
    QVariantMap withShortcut = standard(u"Preferences..."_s, true);
    withShortcut.insert(u"shortcut"_s, QVariant::fromValue(MenuShortcut{{u"Super"_s, u"comma"_s}}));
    EXPECT_EQ(readable(told.children[2].properties), withShortcut);
    EXPECT_EQ(told.children[3].properties, standard(u"Rechercher les mises__a__jour..."_s, false));
}

TEST_F(DBusMenuOnABus, keepsToTheDepthAndThePropertiesAskedFor)
{
    EXPECT_TRUE(layout(0, 0).children.isEmpty());
    const MenuLayout told = layout(0, 1, {u"enabled"_s, u"nonsense"_s});
    EXPECT_TRUE(told.properties.isEmpty());
    ASSERT_EQ(told.children.size(), 4);
    EXPECT_EQ(told.children[3].properties, (QVariantMap{{u"enabled"_s, false}}));
    EXPECT_TRUE(told.children[1].properties.isEmpty());
}

TEST_F(DBusMenuOnABus, laysOutASingleEntry)
{
    const MenuLayout told = layout(4, -1000, {u"enabled"_s});
    EXPECT_EQ(told.id, 4);
    EXPECT_EQ(told.properties, (QVariantMap{{u"enabled"_s, false}}));
    EXPECT_TRUE(told.children.isEmpty());
}

TEST_F(DBusMenuOnABus, leavesUnknownEntriesOutOfAGroup)
{
    const auto group = [this](const QList<int> &ids) {
        return qdbus_cast<QList<MenuEntryProperties>>(
            ask(u"GetGroupProperties"_s, {QVariant::fromValue(ids), QStringList{u"enabled"_s}})
                .arguments()
                .value(0));
    };
    EXPECT_EQ(
        group({4, 77, -5, 1}),
        (QList<MenuEntryProperties>{{4, {{u"enabled"_s, false}}}, {1, {{u"enabled"_s, true}}}}));
    EXPECT_EQ(group({}).size(), 5);
}

TEST_F(DBusMenuOnABus, triggersTheClickedEntryOnce)
{
    EXPECT_EQ(send(3, u"clicked"_s).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(eventually([this] { return !chosen.isEmpty(); }));
    EXPECT_EQ(chosen, QStringList{u"Preferences..."_s});
}

TEST_F(DBusMenuOnABus, triggersAfterTheCallHasReturned)
{
    menu.Event(1, u"clicked"_s, QDBusVariant(0), 0);
    EXPECT_TRUE(chosen.isEmpty());
    EXPECT_TRUE(eventually([this] { return chosen.size() == 1; }));
}

TEST_F(DBusMenuOnABus, triggersNothingForOtherEventsAndEntriesThatCannotBeChosen)
{
    send(1, u"hovered"_s);
    send(1, u"x-vendor-nonsense"_s);
    send(0, u"clicked"_s);
    send(2, u"clicked"_s);
    send(4, u"clicked"_s);
    send(3, u"clicked"_s); // comes after whatever the others would have brought about
    EXPECT_TRUE(eventually([this] { return chosen.contains(u"Preferences..."_s); }));
    EXPECT_EQ(chosen, QStringList{u"Preferences..."_s});
}

TEST_F(DBusMenuOnABus, takesEventsInGroupsAndNamesTheUnknown)
{
    const QList<MenuEvent> events{
        {.id = 1, .name = u"clicked"_s, .data = QDBusVariant(0), .timestamp = 0},
        {.id = 99, .name = u"clicked"_s, .data = QDBusVariant(0), .timestamp = 0}};
    const QDBusMessage answer = ask(u"EventGroup"_s, {QVariant::fromValue(events)});
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(0)), QList<int>{99});
    EXPECT_TRUE(eventually([this] { return chosen.size() == 1; }));
}

TEST_F(DBusMenuOnABus, tellsSeveralChangesOfATurnAtOnceAndThenShowsThem)
{
    const SignalLog updates(host, own.baseService(), menuPath, menuInterface,
                            u"ItemsPropertiesUpdated"_s);
    capture.setText(u"between"_s);
    capture.setText(u"Capture plein ecran  (F5)"_s);
    update.setEnabled(true);
    preferences.setShortcut(QKeySequence());
    ASSERT_TRUE(eventually([&] { return !updates.messages().empty(); }));
    const QVariantList told = updates.messages().front().arguments();
    EXPECT_EQ(qdbus_cast<QList<MenuEntryProperties>>(told.value(0)),
              (QList<MenuEntryProperties>{{1, {{u"label"_s, u"Capture plein ecran  (F5)"_s}}},
                                          {4, {{u"enabled"_s, true}}}}));
    EXPECT_EQ(qdbus_cast<QList<MenuEntryLosses>>(told.value(1)),
              (QList<MenuEntryLosses>{{3, {u"shortcut"_s}}}));
    EXPECT_EQ(layout().children[0].properties.value(u"label"_s), u"Capture plein ecran  (F5)"_s);
    EXPECT_EQ(updates.messages().size(), 1U);
}

TEST_F(DBusMenuOnABus, staysSilentAboutChangesThatNoHostSees)
{
    const SignalLog updates(host, own.baseService(), menuPath, menuInterface,
                            u"ItemsPropertiesUpdated"_s);
    capture.setStatusTip(u"unseen"_s);
    EXPECT_FALSE(layout().children.isEmpty()); // a turn of the loop, and a signal's way to the host
    capture.setVisible(false);
    ASSERT_TRUE(eventually([&] { return !updates.messages().empty(); }));
    EXPECT_EQ(
        qdbus_cast<QList<MenuEntryProperties>>(updates.messages().front().arguments().value(0)),
        (QList<MenuEntryProperties>{{1, {{u"visible"_s, false}, {u"enabled"_s, false}}}}));
}

TEST_F(DBusMenuOnABus, forgetsTheEntriesOfAMenuThatWasReplaced)
{
    const uint before = ask(u"GetLayout"_s, {0, -1, QStringList()}).arguments().value(0).toUInt();
    const SignalLog updates(host, own.baseService(), menuPath, menuInterface, u"LayoutUpdated"_s);
    menu.setEntries({&update, &capture});
    ASSERT_TRUE(eventually([&] { return updates.messages().size() == 1; }));
    EXPECT_EQ(updates.messages().front().arguments(), (QVariantList{before + 1, 0}));
    EXPECT_EQ(send(1, u"clicked"_s).errorName(), invalidArguments);
    ASSERT_EQ(layout().children.size(), 2);
    send(layout().children[1].id, u"clicked"_s);
    EXPECT_TRUE(eventually([this] { return !chosen.isEmpty(); }));
    EXPECT_EQ(chosen, QStringList{capture.text()});
}

TEST_F(DBusMenuOnABus, refusesRubbishAndGoesOn)
{
    for (const int id : {-1, 5, 1 << 30, -(1 << 30)}) {
        EXPECT_EQ(ask(u"GetLayout"_s, {id, -1, QStringList()}).errorName(), invalidArguments);
        EXPECT_EQ(ask(u"GetProperty"_s, {id, u"label"_s}).errorName(), invalidArguments);
        EXPECT_EQ(ask(u"AboutToShow"_s, {id}).errorName(), invalidArguments);
        EXPECT_EQ(send(id, u"clicked"_s).errorName(), invalidArguments);
        const QVariant ids = QVariant::fromValue(QList<int>{id});
        EXPECT_EQ(ask(u"AboutToShowGroup"_s, {ids}).errorName(), invalidArguments);
    }
    EXPECT_EQ(ask(u"GetProperty"_s, {1, u"nonsense"_s}).errorName(), invalidArguments);
    EXPECT_EQ(ask(u"GetLayout"_s, {u"zero"_s}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(ask(u"setEntries"_s, {}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(ask(u"AboutToShow"_s, {0}).arguments(), QVariantList{false});
    EXPECT_EQ(layout().children.size(), 4);
    EXPECT_TRUE(chosen.isEmpty());
}

TEST_F(DBusMenuOnABus, namesTheEntriesOfAGroupThatAreUnknown)
{
    const QDBusMessage answer =
        ask(u"AboutToShowGroup"_s, {QVariant::fromValue(QList<int>{0, 1, 50})});
    EXPECT_TRUE(qdbus_cast<QList<int>>(answer.arguments().value(0)).isEmpty());
    EXPECT_EQ(qdbus_cast<QList<int>>(answer.arguments().value(1)), QList<int>{50});
}

TEST_F(DBusMenuOnABus, answersForASingleProperty)
{
    const QDBusMessage answer = ask(u"GetProperty"_s, {4, u"enabled"_s});
    EXPECT_EQ(answer.arguments().value(0).value<QDBusVariant>().variant(), QVariant(false));
}

} // namespace

} // namespace lumacap::freedesktop
