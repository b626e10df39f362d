#include "platform/freedesktop/tray/TrayStatusItem.h"

#include "PrivateBus.h"
#include "StandInWatcher.h"

#include <QAction>
#include <QImage>
#include <QPixmap>

#include <gtest/gtest.h>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

const auto itemPath = u"/StatusNotifierItem"_s;
const auto itemInterface = u"org.kde.StatusNotifierItem"_s;

QIcon iconOf(Qt::GlobalColor colour)
{
    QImage image(64, 64, QImage::Format_ARGB32);
    image.fill(colour);
    QIcon icon;
    icon.addPixmap(QPixmap::fromImage(image));
    return icon;
}

class TrayStatusItemOnABus : public testing::Test {
public:
    QDBusMessage ask(const QString &method, const QVariantList &arguments,
                     const QString &interface = itemInterface)
    {
        auto message =
            QDBusMessage::createMethodCall(own.baseService(), itemPath, interface, method);
        message.setArguments(arguments);
        return call(host, message);
    }

    QVariantMap properties()
    {
        const QDBusMessage answer =
            ask(u"GetAll"_s, {itemInterface}, u"org.freedesktop.DBus.Properties"_s);
        return qdbus_cast<QVariantMap>(answer.arguments().value(0));
    }

    PrivateBus bus;
    QDBusConnection own = bus.connection();
    QDBusConnection host = bus.connection();
    TrayStatusItem item{own, OwnWindows::Refused};
};

TEST_F(TrayStatusItemOnABus, tellsAHostWhatItIs)
{
    QVariantMap told = properties();
    const auto toolTip = qdbus_cast<ItemToolTip>(told.take(u"ToolTip"_s));
    EXPECT_EQ(toolTip.title, u"Lumacap"_s);
    EXPECT_EQ(told.take(u"Menu"_s).value<QDBusObjectPath>().path(), u"/MenuBar"_s);
    for (const auto &name : {u"IconPixmap"_s, u"OverlayIconPixmap"_s, u"AttentionIconPixmap"_s})
        EXPECT_TRUE(qdbus_cast<IconPixmapList>(told.take(name)).isEmpty());
    EXPECT_EQ(told,
              (QVariantMap{{u"Category"_s, u"ApplicationStatus"_s},
                           {u"Id"_s, u"app.lumacap.Lumacap"_s},
                           {u"Title"_s, u"Lumacap"_s},
                           {u"Status"_s, u"Active"_s},
                           {u"WindowId"_s, 0},
                           {u"IconThemePath"_s, QString()},
                           {u"IconName"_s, QString()},
                           {u"IconAccessibleDesc"_s, QString()},
                           {u"OverlayIconName"_s, QString()},
                           {u"AttentionIconName"_s, QString()},
                           {u"AttentionMovieName"_s, QString()},
                           {u"ItemIsMenu"_s, true}}));
}

TEST_F(TrayStatusItemOnABus, tellsAHostOfANewImage)
{
    const SignalLog news(host, own.baseService(), itemPath, itemInterface, u"NewIcon"_s);
    item.setImage(iconOf(Qt::red), u"camera"_s);
    EXPECT_TRUE(eventually([&] { return news.messages().size() == 1; }));
    const QVariantMap told = properties();
    EXPECT_EQ(told.value(u"IconAccessibleDesc"_s), u"camera"_s);
    EXPECT_EQ(qdbus_cast<IconPixmapList>(told.value(u"IconPixmap"_s)),
              iconPixmaps(iconOf(Qt::red)));
}

TEST_F(TrayStatusItemOnABus, isRegisteredWithItsMenuInPlace)
{
    QAction entry(u"Quitter Lumacap"_s);
    item.setMenu({&entry});
    StandInWatcher watcher(bus.connection());
    watcher.appear();
    ASSERT_TRUE(eventually([&] { return watcher.asked() == QStringList{own.baseService()}; }));
    auto message = QDBusMessage::createMethodCall(watcher.asked().first(), u"/MenuBar"_s,
                                                  u"com.canonical.dbusmenu"_s, u"GetLayout"_s);
    message.setArguments({0, -1, QStringList()});
    const QDBusMessage answer = call(host, message);
    const auto layout = qdbus_cast<MenuLayout>(answer.arguments().value(1));
    ASSERT_EQ(layout.children.size(), 1);
    EXPECT_EQ(layout.children.first().properties.value(u"label"_s), u"Quitter Lumacap"_s);
}

TEST_F(TrayStatusItemOnABus, answersClicksThatItCannotActOn)
{
    QAction entry(u"x"_s);
    item.setMenu({&entry});
    for (const auto &method : {u"Activate"_s, u"SecondaryActivate"_s, u"ContextMenu"_s})
        EXPECT_EQ(ask(method, {-1, 100000}).type(), QDBusMessage::ReplyMessage);
    EXPECT_EQ(ask(u"Scroll"_s, {120, u"sideways"_s}).type(), QDBusMessage::ReplyMessage);
}

TEST_F(TrayStatusItemOnABus, offersNoOperationOutsideTheProtocol)
{
    EXPECT_EQ(ask(u"menuWanted"_s, {}).type(), QDBusMessage::ErrorMessage);
    EXPECT_EQ(ask(u"deleteLater"_s, {}).type(), QDBusMessage::ErrorMessage);
}

TEST(TrayStatusItem, takesItsImageAndMenuWithoutABus)
{
    int chosen = 0;
    QAction entry(u"x"_s);
    QObject::connect(&entry, &QAction::triggered, &entry, [&chosen] { ++chosen; });
    {
        TrayStatusItem item(QDBusConnection(u"no such bus"_s), OwnWindows::Refused);
        item.setImage(iconOf(Qt::red), u"camera"_s);
        item.setMenu({&entry});
    }
    entry.trigger();
    EXPECT_EQ(chosen, 1);
}

} // namespace

} // namespace lumacap::freedesktop
