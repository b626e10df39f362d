#include "platform/gnome/ScreenCast.h"

#include "PrivateBus.h"
#include "StandInShell.h"

#include <QCoroTask>

#include <gmock/gmock.h>

namespace lumacap::gnome {

using namespace Qt::StringLiterals;
using freedesktop::eventually;
using freedesktop::PrivateBus;
using testing::ElementsAre;

namespace {

/// Begins a cast of the monitor "DP-1" and, when that has come to something, ends it.
Result<std::uint32_t> cast(const QDBusConnection &bus)
{
    ScreenCast screenCast(bus);
    return QCoro::waitFor(screenCast.start(u"DP-1"_s, CastPointer::Painted));
}

} // namespace

TEST(ScreenCast, tellsTheNodeAndEndsTheSession)
{
    PrivateBus bus;
    const StandInShell shell(bus.connection(), Behaviour::Willing);

    EXPECT_EQ(cast(bus.connection()), Result<std::uint32_t>(42));

    EXPECT_TRUE(eventually([&shell] { return shell.calls().endsWith(u"Stop"_s); }));
    EXPECT_THAT(shell.calls(),
                ElementsAre(u"CreateSession"_s, u"RecordMonitor DP-1 1"_s, u"Start"_s, u"Stop"_s));
}

TEST(ScreenCast, failsWithoutAShell)
{
    PrivateBus bus;

    EXPECT_FALSE(cast(bus.connection()));
}

TEST(ScreenCast, failsWhereSessionsAreRefused)
{
    PrivateBus bus;
    const StandInShell shell(bus.connection(), Behaviour::RefusesSessions);

    EXPECT_FALSE(cast(bus.connection()));
}

TEST(ScreenCast, failsWhereTheAnswerIsNoSession)
{
    PrivateBus bus;
    const StandInShell shell(bus.connection(), Behaviour::SaysNonsense);

    EXPECT_FALSE(cast(bus.connection()));
}

class FailedCast : public testing::TestWithParam<Behaviour> { };

TEST_P(FailedCast, endsItsSession)
{
    PrivateBus bus;
    const StandInShell shell(bus.connection(), GetParam());

    EXPECT_FALSE(cast(bus.connection()));

    EXPECT_TRUE(eventually([&shell] { return shell.calls().endsWith(u"Stop"_s); }));
}

INSTANTIATE_TEST_SUITE_P(ScreenCast, FailedCast,
                         testing::Values(Behaviour::RefusesTheMonitor, Behaviour::RefusesToStart,
                                         Behaviour::BringsNoNode));

TEST(ScreenCast, endsASessionThatComesWhenNobodyWaitsForItAnyMore)
{
    PrivateBus bus;
    StandInShell shell(bus.connection(), Behaviour::AnswersSessionsLate);
    EXPECT_FALSE(cast(bus.connection()));
    EXPECT_THAT(shell.calls(), ElementsAre(u"CreateSession"_s));

    shell.answerLateSession();

    EXPECT_TRUE(eventually([&shell] { return shell.calls().endsWith(u"Stop"_s); }));
    EXPECT_THAT(shell.calls(), ElementsAre(u"CreateSession"_s, u"Stop"_s));
}

} // namespace lumacap::gnome
