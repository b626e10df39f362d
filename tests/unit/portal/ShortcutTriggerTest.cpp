#include "platform/portal/shortcuts/ShortcutTrigger.h"

#include "platform/CarbonModifiers.h"
#include "platform/VirtualKeys.h"

#include <gtest/gtest.h>

#include <set>

namespace lumacap::portal {

using namespace Qt::StringLiterals;

namespace {

TEST(ShortcutTrigger, namesModifiersThenTheKey)
{
    EXPECT_EQ(triggerOf({1, 0x12, carbon::controlKey | carbon::shiftKey}), u"CTRL+SHIFT+1"_s);
    EXPECT_EQ(
        triggerOf(
            {1, 0x00, carbon::cmdKey | carbon::optionKey | carbon::shiftKey | carbon::controlKey}),
        u"CTRL+ALT+SHIFT+LOGO+a"_s);
    EXPECT_EQ(triggerOf({1, virtualkey::print, 0}), u"Print"_s);
}

TEST(ShortcutTrigger, knowsNoKeyThatIsAModifierOrNone)
{
    EXPECT_EQ(triggerOf({1, 0x38, carbon::controlKey}), std::nullopt); // Shift
    EXPECT_EQ(triggerOf({1, 4000, carbon::controlKey}), std::nullopt);
}

TEST(ShortcutTrigger, namesNoTwoKeysAlike)
{
    std::set<QString> names;
    for (std::uint32_t code = 0; code < 256; ++code) {
        const auto trigger = triggerOf({1, code, 0});
        if (trigger) {
            EXPECT_TRUE(names.insert(*trigger).second) << qPrintable(*trigger);
        }
    }
    EXPECT_GT(names.size(), 90U);
}

} // namespace

} // namespace lumacap::portal
