#include "app/Command.h"

#include <gtest/gtest.h>

namespace lumacap {

TEST(Command, isFoundByExactlyItsName)
{
    EXPECT_EQ(commandNamed(u"full-screen"), Command::FullScreen);
    EXPECT_EQ(commandNamed(u"selection"), Command::Selection);
    EXPECT_EQ(commandNamed(u"preferences"), Command::Preferences);
    EXPECT_EQ(commandNamed(u"check-for-updates"), Command::CheckForUpdates);
    EXPECT_EQ(commandNamed(u"quit"), Command::Quit);
    EXPECT_EQ(commandNamed(u"Quit"), std::nullopt);
    EXPECT_EQ(commandNamed(u""), std::nullopt);
}

} // namespace lumacap
