#include "platform/gnome/MainMonitor.h"

#include "PrivateBus.h"

#include <QDBusArgument>
#include <QDBusContext>
#include <QDBusMessage>
#include <QDBusMetaType>

#include <gmock/gmock.h>

namespace lumacap::gnome {

using namespace Qt::StringLiterals;

namespace {

struct MonitorName {
    QString connector;
};

struct MonitorMode {
    QString id;
};

struct Monitor {
    MonitorName name;
    QList<MonitorMode> modes;
};

struct Area {
    bool isPrimary = false;
    QList<MonitorName> monitors;
};

QDBusArgument &operator<<(QDBusArgument &argument, const MonitorName &name)
{
    argument.beginStructure();
    argument << name.connector << u"vendor"_s << u"product"_s << u"serial"_s;
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const MonitorMode &mode)
{
    argument.beginStructure();
    argument << mode.id << 1920 << 1080 << 60.0 << 1.0 << QList<double>{1.0, 2.0} << QVariantMap();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Monitor &monitor)
{
    argument.beginStructure();
    argument << monitor.name << monitor.modes << QVariantMap();
    argument.endStructure();
    return argument;
}

QDBusArgument &operator<<(QDBusArgument &argument, const Area &area)
{
    argument.beginStructure();
    argument << 0 << 0 << 1.0 << uint{0} << area.isPrimary << area.monitors
             << QVariantMap{{u"a"_s, 1}};
    argument.endStructure();
    return argument;
}

// Never read here, but the toolkit registers both ways at once.
template <class T>
const QDBusArgument &operator>>(const QDBusArgument &argument, T & /*value*/)
{
    return argument;
}

/// Answers as the shell does, with these areas.
class StandInConfiguration : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.gnome.Mutter.DisplayConfig")

public:
    explicit StandInConfiguration(QList<Area> areas)
        : m_areas(std::move(areas))
    {
        qDBusRegisterMetaType<MonitorName>();
        qDBusRegisterMetaType<QList<MonitorName>>();
        qDBusRegisterMetaType<MonitorMode>();
        qDBusRegisterMetaType<QList<MonitorMode>>();
        qDBusRegisterMetaType<Monitor>();
        qDBusRegisterMetaType<QList<Monitor>>();
        qDBusRegisterMetaType<Area>();
        qDBusRegisterMetaType<QList<Area>>();
    }

public Q_SLOTS:
    void GetCurrentState()
    {
        setDelayedReply(true);
        auto reply = message().createReply();
        const QList<Monitor> monitors{{{u"DP-1"_s}, {{u"1920x1080"_s}}}};
        reply << uint{1} << QVariant::fromValue(monitors) << QVariant::fromValue(m_areas)
              << QVariantMap{{u"layout-mode"_s, 1}};
        connection().send(reply);
    }

private:
    QList<Area> m_areas;
};

/// What a shell with these areas answers, as it comes over the bus.
QDBusMessage stateWith(const QList<Area> &areas)
{
    freedesktop::PrivateBus bus;
    StandInConfiguration configuration(areas);
    auto shell = bus.connection();
    shell.registerObject(u"/state"_s, &configuration, QDBusConnection::ExportAllSlots);
    return freedesktop::call(bus.connection(),
                             QDBusMessage::createMethodCall(shell.baseService(), u"/state"_s,
                                                            QString(), u"GetCurrentState"_s));
}

} // namespace

TEST(PrimaryConnector, isTheOneOfThePrimaryArea)
{
    EXPECT_EQ(primaryConnector(stateWith({{false, {{u"DP-1"_s}}}, {true, {{u"HDMI-2"_s}}}})),
              u"HDMI-2"_s);
}

TEST(PrimaryConnector, isTheFirstOfMonitorsThatShowTheSame)
{
    EXPECT_EQ(primaryConnector(stateWith({{true, {{u"DP-1"_s}, {u"DP-2"_s}}}})), u"DP-1"_s);
}

TEST(PrimaryConnector, isNoneWhereNoneIsPrimary)
{
    EXPECT_EQ(primaryConnector(stateWith({})), std::nullopt);
    EXPECT_EQ(primaryConnector(stateWith({{false, {{u"DP-1"_s}}}, {true, {}}})), std::nullopt);
}

TEST(PrimaryConnector, isNoneInAnotherAnswer)
{
    EXPECT_EQ(primaryConnector(QDBusMessage()), std::nullopt);
    EXPECT_EQ(primaryConnector(QDBusMessage::createError(u"a.b"_s, u"no"_s)), std::nullopt);
}

} // namespace lumacap::gnome

#include "MainMonitorTest.moc"
