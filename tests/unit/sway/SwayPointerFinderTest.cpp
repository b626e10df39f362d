#include "platform/wlroots/sway/SwayPointerFinder.h"
#include "StandInSway.h"
#include "platform/Spawn.h"

#include <gmock/gmock.h>

#include <QJsonDocument>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

constexpr const char *twoOutputs = R"([
    {"name": "A", "focused": false, "rect": {"x": 0, "y": 0, "width": 1920, "height": 1080}},
    {"name": "B", "focused": true, "rect": {"x": 1920, "y": -100, "width": 800, "height": 600}}])";

/// Another finder, which answers as it is told.
class Exact final : public wayland::PointerFinder {
public:
    explicit Exact(std::optional<QPointF> answer)
        : m_answer(answer)
    {
    }
    QCoro::Task<std::optional<QPointF>> find() override { co_return m_answer; }

private:
    std::optional<QPointF> m_answer;
};

/// What is found where sway has this configuration.
std::optional<QPointF> found(const QByteArray &outputs, const QByteArray &config,
                             std::unique_ptr<wayland::PointerFinder> exactly = nullptr)
{
    StandInSway sway([&](const Message &question) {
        sway.say(question.type,
                 Request{question.type} == Request::GetOutputs
                     ? outputs
                     : R"({"config": ")" + config + R"("})");
    });
    SwayPointerFinder finder(sway.path(), std::move(exactly));
    std::optional<std::optional<QPointF>> answer;
    spawn([](SwayPointerFinder &asked,
             std::optional<std::optional<QPointF>> &result) -> QCoro::Task<> {
        result = co_await asked.find();
    }(finder, answer));
    EXPECT_TRUE(QTest::qWaitFor([&] { return answer.has_value(); }, 20000));
    return answer.value_or(std::nullopt);
}

TEST(SwayPointerFinder, takesTheMiddleOfTheFocusedOutput)
{
    EXPECT_EQ(found(twoOutputs, ""), QPointF(2320, 200));
}

TEST(SwayPointerFinder, asksExactlyWhereTheFocusIsNoSignOfThePointer)
{
    const auto exact = [] { return std::make_unique<Exact>(QPointF(3, 4)); };
    EXPECT_EQ(found(twoOutputs, "focus_follows_mouse no", exact()), QPointF(3, 4));
    EXPECT_EQ(found(twoOutputs, "focus_follows_mouse yes", exact()), QPointF(2320, 200));
}

TEST(SwayPointerFinder, takesTheFocusedOutputWhereNobodyKnowsBetter)
{
    const QByteArray config = "mouse_warping none";
    EXPECT_EQ(found(twoOutputs, config, std::make_unique<Exact>(std::nullopt)), QPointF(2320, 200));
    EXPECT_EQ(found(twoOutputs, config), QPointF(2320, 200));
}

TEST(SwayPointerFinder, knowsNothingWhereSwayTellsNothing)
{
    EXPECT_EQ(found("[]", ""), std::nullopt);
    EXPECT_EQ(found("{}", ""), std::nullopt);
    EXPECT_EQ(found("nonsense", ""), std::nullopt);
    EXPECT_EQ(found(R"([{"focused": false}])", ""), std::nullopt);
}

TEST(SeparatesFocusFromPointer, readsWholeLines)
{
    EXPECT_TRUE(separatesFocusFromPointer(u"a\n  focus_follows_mouse   no \nb"_s));
    EXPECT_TRUE(separatesFocusFromPointer(u"mouse_warping none"_s));
    EXPECT_FALSE(separatesFocusFromPointer(u"# focus_follows_mouse no"_s));
    EXPECT_FALSE(separatesFocusFromPointer(u"focus_follows_mouse always\nmouse_warping output"_s));
}

} // namespace

} // namespace lumacap::sway
