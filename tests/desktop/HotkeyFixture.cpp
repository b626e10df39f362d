#include "HotkeyFixture.h"

#include "harness/WaitFor.h"

#include <tuple>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

QStringList steps(const QString &step, const std::vector<std::uint8_t> &keys)
{
    QStringList all;
    for (const std::uint8_t key : keys)
        all += {step, QString::number(key)};
    return all;
}

} // namespace

void HotkeyFixture::start()
{
    startDesktop();
    startAgentWith(fullScreenShortcut);
    require("the second shortcut", [this] { return !isFree(display(), selectionShortcut); });
}

void HotkeyFixture::startAgentWith(const Shortcut &shortcut)
{
    screen->lower();
    startAgent();
    clipboard = std::make_unique<ClipboardWatch>(display());
    require("the shortcut", [&] { return !isFree(display(), shortcut); });
}

void HotkeyFixture::pressKeys(const std::vector<std::uint8_t> &modifiers, std::uint8_t code)
{
    input(steps(u"keydown"_s, modifiers) + steps(u"key"_s, {code}) + steps(u"keyup"_s, modifiers));
}

void HotkeyFixture::holdKeys(const std::vector<std::uint8_t> &keys)
{
    input(steps(u"keydown"_s, keys));
}

void HotkeyFixture::releaseKeys(const std::vector<std::uint8_t> &keys)
{
    input(steps(u"keyup"_s, keys));
}

testing::AssertionResult HotkeyFixture::captures(int number)
{
    std::ignore = waitFor([&] { return clipboard->changes() >= number; });
    return clipboard->changes() == number
        ? testing::AssertionSuccess()
        : testing::AssertionFailure() << clipboard->changes() << " captures";
}

void HotkeyFixture::selectByShortcut()
{
    pressSelection();
    ASSERT_TRUE(waitFor([this] { return overlayIsUp(); }));
    press(u"Return"_s);
    ASSERT_TRUE(waitFor([this] { return !overlayIsUp(); }));
}

} // namespace lumacap::harness
