#include "app/LateHotkeyService.h"

#include "fakes/FakeHotkeyService.h"

#include <QCoroTimer>
#include <QTimer>

#include <gmock/gmock.h>

#include <chrono>

namespace lumacap {

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

constexpr HotKey one{1, 18, 0};
constexpr HotKey two{2, 19, 0};

/// A choice that is made when the test says so.
class LateHotkeys : public testing::Test {
public:
    LateHotkeys() { decision.setSingleShot(true); }

    static QCoro::Task<std::unique_ptr<HotkeyService>> choice(QTimer *decision,
                                                              FakeHotkeyService **made)
    {
        co_await *decision;
        auto service = std::make_unique<FakeHotkeyService>();
        *made = service.get();
        co_return std::move(service);
    }

    void decide()
    {
        decision.start(0ms);
        while (chosen == nullptr)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }

    HotKeyRef ask(const HotKey &hotKey)
    {
        return service->registerHotKey(
            hotKey, [this, id = hotKey.id](HotKeyState state) { answers.emplace_back(id, state); });
    }

    QTimer decision;
    FakeHotkeyService *chosen = nullptr;
    std::unique_ptr<LateHotkeyService> service =
        std::make_unique<LateHotkeyService>(choice(&decision, &chosen));
    std::vector<std::pair<std::uint32_t, HotKeyState>> answers;
};

TEST_F(LateHotkeys, keepWhatIsRegisteredUntilTheServiceIsKnown)
{
    std::vector<std::uint32_t> pressed;
    service->setPressedHandler([&pressed](std::uint32_t id) { pressed.push_back(id); });
    ask(one);
    ask(two);
    EXPECT_TRUE(answers.empty());
    decide();
    EXPECT_THAT(chosen->registered(), ElementsAre(one, two));
    chosen->answerAll(two);
    EXPECT_THAT(answers,
                ElementsAre(std::pair(1U, HotKeyState::Live), std::pair(2U, HotKeyState::NotLive)));
    chosen->onPressed(1);
    EXPECT_THAT(pressed, ElementsAre(1U));
}

TEST_F(LateHotkeys, forgetWhatIsGivenUpBefore)
{
    const HotKeyRef first = ask(one);
    ask(two);
    service->unregisterHotKey(first);
    decide();
    EXPECT_THAT(chosen->registered(), ElementsAre(two));
}

TEST_F(LateHotkeys, areTheServicesAfterwards)
{
    decide();
    const HotKeyRef first = ask(one);
    const HotKeyRef second = ask(two);
    EXPECT_NE(first, second);
    chosen->answerAll(one);
    service->unregisterHotKey(first); // refused, and so not the service's any more
    service->unregisterHotKey(second);
    EXPECT_THAT(chosen->registered(), ElementsAre());
}

TEST_F(LateHotkeys, areSuspendedAlsoBeforeTheServiceIsKnown)
{
    service->suspend();
    decide();
    EXPECT_TRUE(chosen->isSuspended);
    service->resume();
    EXPECT_FALSE(chosen->isSuspended);
    service->suspend();
    EXPECT_TRUE(chosen->isSuspended);
}

TEST_F(LateHotkeys, mayEndBeforeTheServiceIsKnown)
{
    ask(one);
    service.reset();
    decision.start(0ms);
    while (chosen == nullptr)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    EXPECT_TRUE(answers.empty());
}

} // namespace

} // namespace lumacap
