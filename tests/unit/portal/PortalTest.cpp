#include "platform/portal/Portal.h"

#include "PrivateBus.h"
#include "StandInPortal.h"
#include "platform/Spawn.h"

#include <gtest/gtest.h>

#include <memory>

namespace lumacap::portal {

using namespace Qt::StringLiterals;
using freedesktop::eventually;
using freedesktop::PrivateBus;

namespace {

const auto interface = u"org.freedesktop.portal.Screenshot"_s;

class PortalOnABus : public testing::Test {
public:
    static QCoro::Task<> reachInto(Portal *portal, std::optional<Result<PortalAddress>> *address)
    {
        *address = co_await portal->reach();
    }

    static QCoro::Task<> versionInto(Portal *portal, QString name,
                                     std::optional<std::optional<uint>> *version)
    {
        *version = co_await portal->versionOf(name);
    }

    std::optional<uint> versionOf(const QString &name)
    {
        std::optional<std::optional<uint>> version;
        spawn(versionInto(portal.get(), name, &version));
        EXPECT_TRUE(eventually([&version] { return version.has_value(); }));
        return version.value_or(std::nullopt);
    }

    std::optional<Result<PortalAddress>> reach()
    {
        std::optional<Result<PortalAddress>> address;
        spawn(reachInto(portal.get(), &address));
        EXPECT_TRUE(eventually([&address] { return address.has_value(); }));
        return address;
    }

    PrivateBus bus;
    QDBusConnection theirs = bus.connection();
    StandInPortal standIn{theirs};
    std::unique_ptr<Portal> portal =
        std::make_unique<Portal>(bus.connection(), u"app.lumacap.Lumacap"_s);
};

TEST_F(PortalOnABus, tellsThePortalOnceWhoAsks)
{
    standIn.appear();
    for (int time = 0; time < 2; ++time) {
        const auto address = reach();
        ASSERT_TRUE(address && address->has_value());
        EXPECT_EQ((*address)->owner, theirs.baseService());
    }
    ASSERT_TRUE(eventually([this] { return !standIn.calls().isEmpty(); }));
    EXPECT_EQ(versionOf(u"no.such.Interface"_s), std::nullopt); // all before it has arrived
    EXPECT_EQ(standIn.calls(), QStringList{u"Register"_s});
    EXPECT_EQ(standIn.lastCall(u"Register"_s)->arguments().value(0), u"app.lumacap.Lumacap"_s);
    EXPECT_EQ(standIn.lastCall(u"Register"_s)->signature(), u"sa{sv}"_s);
}

TEST_F(PortalOnABus, introducesItselfToEachPortalAnew)
{
    standIn.appear();
    ASSERT_TRUE(reach());
    standIn.vanish();
    StandInPortal next(bus.connection());
    next.appear();
    const auto address = reach();
    ASSERT_TRUE(address && address->has_value());
    EXPECT_TRUE(eventually([&next] { return next.calls() == QStringList{u"Register"_s}; }));
}

TEST_F(PortalOnABus, failsWhereThereIsNoPortal)
{
    const auto address = reach();
    ASSERT_TRUE(address && !address->has_value());
    EXPECT_EQ(address->error().description, u"the desktop's portal does not start"_s);
    EXPECT_EQ(versionOf(interface), std::nullopt);
}

TEST_F(PortalOnABus, failsWhereThereIsNoBus)
{
    portal = std::make_unique<Portal>(QDBusConnection(u"none such"_s), u"app.lumacap.Lumacap"_s);
    const auto address = reach();
    ASSERT_TRUE(address && !address->has_value());
    EXPECT_EQ(address->error().description, u"there is no session bus"_s);
}

TEST_F(PortalOnABus, tellsTheVersionsOfTheInterfacesThatAreThere)
{
    standIn.setVersion(interface, 2);
    standIn.appear();
    EXPECT_EQ(versionOf(interface), 2U);
    EXPECT_EQ(versionOf(u"org.freedesktop.portal.GlobalShortcuts"_s), std::nullopt);
}

} // namespace

} // namespace lumacap::portal
