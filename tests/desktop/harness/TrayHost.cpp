#include "harness/TrayHost.h"

#include "harness/TrayWatcher.h"
#include "harness/WaitFor.h"

#include <QDBusArgument>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusVariant>

#include <algorithm>
#include <atomic>
#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

constexpr auto menuInterface = "com.canonical.dbusmenu"_L1;

struct Address {
    QString service;
    QString path;
};

Address addressOf(const QString &item)
{
    const qsizetype slash = item.indexOf(u'/');
    return {item.first(slash), item.sliced(slash)};
}

QString newConnectionName()
{
    static std::atomic<int> count = 0;
    return u"tray %1"_s.arg(++count);
}

/// "_" marks the access key, "__" stands for itself.
QString withoutAccessMark(const QString &label)
{
    QString plain;
    bool isMarked = false;
    for (const QChar letter : label) {
        isMarked = letter == u'_' && !isMarked;
        if (!isMarked)
            plain += letter;
    }
    return plain;
}

QString shortcutText(const QVariant &value)
{
    QList<QStringList> chords;
    if (value.canConvert<QDBusArgument>())
        value.value<QDBusArgument>() >> chords;
    return chords.isEmpty() ? QString() : chords.first().join(u'+');
}

MenuEntry entryOf(int identifier, const QVariantMap &properties)
{
    MenuEntry entry;
    entry.identifier = identifier;
    if (properties.value(u"type"_s).toString() == "separator"_L1)
        entry.kind = MenuEntry::Kind::Separator;
    entry.label = withoutAccessMark(properties.value(u"label"_s).toString());
    entry.isEnabled = properties.value(u"enabled"_s, true).toBool();
    entry.shortcut = shortcutText(properties.value(u"shortcut"_s));
    return entry;
}

/// Reads one level of the layout "(ia{sv}av)": identifier, properties, children.
std::vector<MenuEntry> childrenOf(const QDBusArgument &layout)
{
    int identifier = 0;
    QVariantMap properties;
    QVariantList children;
    layout.beginStructure();
    layout >> identifier >> properties >> children;
    layout.endStructure();
    std::vector<MenuEntry> entries;
    for (const QVariant &child : std::as_const(children)) {
        const auto node = child.value<QDBusArgument>();
        QVariantList grandchildren;
        node.beginStructure();
        node >> identifier >> properties >> grandchildren;
        node.endStructure();
        entries.push_back(entryOf(identifier, properties));
    }
    return entries;
}

} // namespace

TrayHost::TrayHost(const QByteArray &busAddress)
    : m_watcher(std::make_unique<TrayWatcher>())
    , m_connectionName(newConnectionName())
    , m_bus(QDBusConnection::connectToBus(QString::fromLocal8Bit(busAddress), m_connectionName))
{
    m_watcher->moveToThread(&m_thread);
    m_thread.start();
    bool isThere = false;
    QMetaObject::invokeMethod(
        m_watcher.get(), [this, &isThere] { isThere = m_watcher->appear(m_bus); },
        Qt::BlockingQueuedConnection);
    if (!isThere)
        throw std::runtime_error("no place for a tray");
}

TrayHost::~TrayHost()
{
    m_bus.unregisterService(u"org.kde.StatusNotifierWatcher"_s);
    m_watcher.release()->deleteLater(); // in its own thread, which does so as it ends
    m_thread.quit();
    m_thread.wait();
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void TrayHost::requireItem()
{
    require("an item in the tray", [this] { return itemCount() > 0 && !menu().empty(); });
}

qsizetype TrayHost::itemCount() const
{
    return m_watcher->items().size();
}

QVariant TrayHost::property(const QString &name)
{
    const auto [service, path] = addressOf(m_watcher->items().value(0, u"/"_s));
    auto message = QDBusMessage::createMethodCall(service, path,
                                                  u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    message << u"org.kde.StatusNotifierItem"_s << name;
    const auto reply = m_bus.call(message);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    return reply.arguments().first().value<QDBusVariant>().variant();
}

std::vector<QSize> TrayHost::iconSizes()
{
    std::vector<QSize> sizes;
    const auto pictures = property(u"IconPixmap"_s).value<QDBusArgument>();
    pictures.beginArray();
    while (!pictures.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels;
        pictures.beginStructure();
        pictures >> width >> height >> pixels;
        pictures.endStructure();
        sizes.emplace_back(width, height);
    }
    pictures.endArray();
    return sizes;
}

std::vector<MenuEntry> TrayHost::menu()
{
    const auto service = addressOf(m_watcher->items().value(0, u"/"_s)).service;
    const auto path = property(u"Menu"_s).value<QDBusObjectPath>().path();
    auto aboutToShow =
        QDBusMessage::createMethodCall(service, path, menuInterface, u"AboutToShow"_s);
    aboutToShow << 0;
    m_bus.call(aboutToShow);
    auto message = QDBusMessage::createMethodCall(service, path, menuInterface, u"GetLayout"_s);
    message << 0 << -1 << QStringList();
    const auto reply = m_bus.call(message);
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().size() != 2)
        return {};
    return childrenOf(reply.arguments().at(1).value<QDBusArgument>());
}

bool TrayHost::click(const QString &label)
{
    const auto entries = menu();
    const auto entry = std::ranges::find(entries, label, &MenuEntry::label);
    if (entry == entries.end())
        return false;
    const auto service = addressOf(m_watcher->items().value(0, u"/"_s)).service;
    const auto path = property(u"Menu"_s).value<QDBusObjectPath>().path();
    auto message = QDBusMessage::createMethodCall(service, path, menuInterface, u"Event"_s);
    message << entry->identifier << u"clicked"_s << QVariant::fromValue(QDBusVariant(QString()))
            << 0U;
    return m_bus.call(message).type() == QDBusMessage::ReplyMessage;
}

} // namespace lumacap::harness
