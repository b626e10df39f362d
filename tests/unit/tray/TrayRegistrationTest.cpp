#include "platform/freedesktop/tray/TrayRegistration.h"

#include "PrivateBus.h"
#include "StandInWatcher.h"

#include <gtest/gtest.h>

#include <memory>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

/// The connection's own name as often as it registered.
QStringList times(int count, const QDBusConnection &connection)
{
    QStringList names(count, connection.baseService());
    return names;
}

class TrayRegistrationOnABus : public testing::Test {
public:
    bool comesTo(const TrayRegistration &registration, TrayPlace place)
    {
        return eventually([&] { return registration.place() == place; });
    }

    PrivateBus bus;
    QDBusConnection own = bus.connection();
    StandInWatcher watcher{bus.connection()};
};

TEST_F(TrayRegistrationOnABus, goesToTheWatcherThatIsThere)
{
    watcher.appear();
    const TrayRegistration registration(own);
    EXPECT_EQ(registration.place(), TrayPlace::Unknown);
    EXPECT_TRUE(comesTo(registration, TrayPlace::Hosted));
    EXPECT_EQ(watcher.asked(), times(1, own));
}

TEST_F(TrayRegistrationOnABus, goesToAWatcherThatStartsLater)
{
    const TrayRegistration registration(own);
    ASSERT_TRUE(comesTo(registration, TrayPlace::Homeless));
    watcher.appear();
    EXPECT_TRUE(comesTo(registration, TrayPlace::Hosted));
    EXPECT_EQ(watcher.asked(), times(1, own));
}

TEST_F(TrayRegistrationOnABus, goesBackToAWatcherThatRestarts)
{
    watcher.appear();
    const TrayRegistration registration(own);
    ASSERT_TRUE(comesTo(registration, TrayPlace::Hosted));
    watcher.vanish();
    ASSERT_TRUE(comesTo(registration, TrayPlace::Homeless));
    watcher.appear();
    EXPECT_TRUE(comesTo(registration, TrayPlace::Hosted));
    EXPECT_EQ(watcher.asked(), times(2, own));
}

TEST_F(TrayRegistrationOnABus, movesToAWatcherOfAnotherProcess)
{
    watcher.appear();
    const TrayRegistration registration(own);
    ASSERT_TRUE(comesTo(registration, TrayPlace::Hosted));
    watcher.vanish();
    StandInWatcher other(bus.connection());
    other.appear();
    EXPECT_TRUE(eventually([&] { return other.asked() == times(1, own); }));
    EXPECT_TRUE(comesTo(registration, TrayPlace::Hosted));
    EXPECT_EQ(watcher.asked(), times(1, own));
}

TEST_F(TrayRegistrationOnABus, asksAgainWhereAWatcherIsNotReadyYet)
{
    watcher.setManner(Manner::Refuses);
    watcher.appear();
    const TrayRegistration registration(own);
    ASSERT_TRUE(eventually([&] { return watcher.asked().size() == 2; }));
    EXPECT_EQ(registration.place(), TrayPlace::Unknown);
    watcher.setManner(Manner::Accepts);
    EXPECT_TRUE(comesTo(registration, TrayPlace::Hosted));
}

TEST_F(TrayRegistrationOnABus, isHomelessWhereAWatcherRefusesForGood)
{
    watcher.setManner(Manner::Refuses);
    watcher.appear();
    const TrayRegistration registration(own);
    EXPECT_TRUE(comesTo(registration, TrayPlace::Homeless));
    EXPECT_EQ(watcher.asked(), times(5, own));
}

TEST_F(TrayRegistrationOnABus, isHomelessWhileTheWatcherHasNoHost)
{
    watcher.setHost(Host::Absent);
    watcher.appear();
    const TrayRegistration registration(own);
    ASSERT_TRUE(comesTo(registration, TrayPlace::Homeless));
    watcher.setHost(Host::Present);
    ASSERT_TRUE(comesTo(registration, TrayPlace::Hosted));
    watcher.setHost(Host::Absent);
    EXPECT_TRUE(comesTo(registration, TrayPlace::Homeless));
    EXPECT_EQ(watcher.asked(), times(1, own));
}

TEST_F(TrayRegistrationOnABus, leavesTheEventLoopTurningWhileAWatcherIsSilent)
{
    watcher.setManner(Manner::KeepsSilent);
    watcher.appear();
    const TrayRegistration registration(own);
    ASSERT_TRUE(eventually([&] { return watcher.asked() == times(1, own); }));
    EXPECT_EQ(registration.place(), TrayPlace::Unknown);
    watcher.vanish();
    EXPECT_TRUE(comesTo(registration, TrayPlace::Homeless));
}

TEST_F(TrayRegistrationOnABus, endsWhileAWatcherIsSilent)
{
    watcher.setManner(Manner::KeepsSilent);
    watcher.appear();
    auto registration = std::make_unique<TrayRegistration>(own);
    ASSERT_TRUE(eventually([&] { return watcher.asked() == times(1, own); }));
    registration.reset();
    watcher.vanish();
    watcher.setManner(Manner::Accepts);
    watcher.appear();
    const TrayRegistration next(own);
    EXPECT_TRUE(comesTo(next, TrayPlace::Hosted));
    EXPECT_EQ(watcher.asked(), times(2, own));
}

TEST(TrayRegistration, isHomelessWithoutABus)
{
    const TrayRegistration registration(QDBusConnection(u"no such bus"_s));
    EXPECT_EQ(registration.place(), TrayPlace::Homeless);
}

} // namespace

} // namespace lumacap::freedesktop
