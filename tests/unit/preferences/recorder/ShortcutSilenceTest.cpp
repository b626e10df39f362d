#include "preferences/recorder/ShortcutSilence.h"

#include "fakes/FakeHotkeyService.h"

#include <QObject>

#include <gmock/gmock.h>

namespace lumacap::tests {
namespace {

struct ShortcutSilenceTest : testing::Test {
    FakeHotkeyService service;
    QObject first;
    QObject second;
};

TEST_F(ShortcutSilenceTest, endsWithTheLastRecorder)
{
    ShortcutSilence silence(service);
    EXPECT_FALSE(service.isSuspended);
    silence.begin(&first);
    silence.begin(&first);
    silence.begin(&second);
    EXPECT_TRUE(service.isSuspended);
    silence.end(&first);
    EXPECT_TRUE(service.isSuspended);
    silence.end(&second);
    EXPECT_FALSE(service.isSuspended);
}

TEST_F(ShortcutSilenceTest, isNotEndedByWhoeverDidNotBegin)
{
    ShortcutSilence silence(service);
    silence.begin(&first);
    silence.end(&second);
    EXPECT_TRUE(service.isSuspended);
}

TEST_F(ShortcutSilenceTest, endsWithItsObject)
{
    {
        ShortcutSilence silence(service);
        silence.begin(&first);
    }
    EXPECT_FALSE(service.isSuspended);
}

} // namespace
} // namespace lumacap::tests
