#include "platform/wlroots/sway/Ipc.h"
#include "StandInSway.h"
#include "platform/Spawn.h"

#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QTest>

#include <sys/socket.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::sway {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr auto patience = 60s; // longer than a test waits: such a limit is never met
constexpr auto soon = 50ms;

/// What was answered, in the order in which it was.
class Answers {
public:
    Ipc::OnReply to(const QString &question)
    {
        return [this, question](const Ipc::Reply &reply) {
            const QByteArray told =
                reply ? reply->toJson(QJsonDocument::Compact) : QByteArray("none");
            m_all.emplace_back(question, told);
        };
    }
    bool come(std::size_t count)
    {
        return QTest::qWaitFor([&] { return m_all.size() >= count; }, 20000);
    }
    const std::vector<std::pair<QString, QByteArray>> &all() const { return m_all; }

private:
    std::vector<std::pair<QString, QByteArray>> m_all;
};

TEST(Ipc, answersComeInTheOrderOfTheQuestions)
{
    StandInSway sway([&](const Message &question) { sway.say(question.type, question.payload); });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "[1]", answers.to(u"tree"_s));
    ipc.ask(Request::RunCommand, "[2]", answers.to(u"command"_s));
    ASSERT_TRUE(answers.come(2));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "[1]"), Pair(u"command"_s, "[2]")));
}

TEST(Ipc, anAnswerCanBeAwaited)
{
    StandInSway sway([&](const Message &question) { sway.say(question.type, R"({"a":1})"); });
    Ipc ipc(sway.path(), patience);
    std::optional<int> told;
    spawn([](Ipc &asked, std::optional<int> &result) -> QCoro::Task<> {
        const Ipc::Reply reply = co_await asked.ask(Request::GetTree);
        result = reply ? reply->object()[u"a"].toInt() : -1;
    }(ipc, told));
    ASSERT_TRUE(QTest::qWaitFor([&] { return told.has_value(); }, 20000));
    EXPECT_EQ(told, 1);
}

TEST(Ipc, anEventBetweenTwoAnswersIsNoAnswer)
{
    StandInSway sway([&](const Message &question) {
        sway.say(0x80000005, R"({"change":"run"})");
        sway.say(question.type, "[]");
    });
    Ipc ipc(sway.path(), patience);
    std::vector<std::pair<Event, QString>> events;
    QObject::connect(&ipc, &Ipc::happened, &sway, [&](Event event, const QJsonObject &facts) {
        events.emplace_back(event, facts[u"change"].toString());
    });
    Answers answers;
    ipc.subscribe({u"binding"_s});
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    ASSERT_TRUE(answers.come(1));
    EXPECT_EQ(sway.asked().front(), (Message{2, R"(["binding"])"}));
    EXPECT_THAT(events,
                ElementsAre(Pair(Event::Binding, u"run"_s), Pair(Event::Binding, u"run"_s)));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "[]")));
}

TEST(Ipc, aQuestionWithoutAnswerFailsAndItsLateAnswerIsNotTheNextOnes)
{
    StandInSway sway([](const Message &) { });
    Answers answers;
    Ipc ipc(sway.path(), soon);
    ipc.ask(Request::GetTree, "", answers.to(u"first"_s));
    ASSERT_TRUE(answers.come(1));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"first"_s, "none")));

    StandInSway patient([&](const Message &) { });
    ipc.ask(Request::GetTree, "", answers.to(u"second"_s));
    sway.say(4, "[1]");
    sway.say(4, "[2]");
    ASSERT_TRUE(answers.come(2));
    EXPECT_THAT(answers.all().back(), Pair(u"second"_s, "[2]"));
}

TEST(Ipc, theLoopTurnsWhileACompositorHangs)
{
    StandInSway sway([](const Message &) { });
    Answers answers;
    Ipc ipc(sway.path(), 300ms);
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    int turns = 0;
    QTimer ticking;
    QObject::connect(&ticking, &QTimer::timeout, &ticking, [&] { ++turns; });
    ticking.start(1);
    ASSERT_TRUE(answers.come(1));
    EXPECT_GT(turns, 3);
}

TEST(Ipc, aCompositorThatHangsUpFailsAllThatIsAskedThenAndLater)
{
    StandInSway sway([&](const Message &) { sway.hangUp(); });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"first"_s));
    ipc.ask(Request::GetTree, "", answers.to(u"second"_s));
    ASSERT_TRUE(answers.come(2));
    ipc.ask(Request::GetTree, "", answers.to(u"third"_s));
    EXPECT_THAT(
        answers.all(),
        ElementsAre(Pair(u"first"_s, "none"), Pair(u"second"_s, "none"), Pair(u"third"_s, "none")));
}

TEST(Ipc, anAnswerThatIsCutShortFails)
{
    StandInSway sway([&](const Message &question) {
        sway.sayBytes(StandInSway::message(question.type, "[1,2,3]").chopped(2));
        sway.hangUp();
    });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    ASSERT_TRUE(answers.come(1));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "none")));
}

TEST(Ipc, rubbishEndsTheConversation)
{
    StandInSway sway([&](const Message &) { sway.sayBytes("HTTP/1.1 400 Bad Request\r\n"); });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    ASSERT_TRUE(answers.come(1));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "none")));
}

TEST(Ipc, anAnswerThatIsNoJsonFailsAlone)
{
    StandInSway sway([&](const Message &question) {
        sway.say(question.type, sway.asked().size() == 1 ? "{\"a\":" : "[]");
    });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"first"_s));
    ipc.ask(Request::GetTree, "", answers.to(u"second"_s));
    ASSERT_TRUE(answers.come(2));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"first"_s, "none"), Pair(u"second"_s, "[]")));
}

TEST(Ipc, answersThatNobodyAskedForAreForgotten)
{
    StandInSway sway([&](const Message &question) {
        sway.say(question.type, "[1]");
        sway.say(question.type, "[2]");
    });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"first"_s));
    ASSERT_TRUE(answers.come(1));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"first"_s, "[1]")));
}

TEST(Ipc, whereNobodyListensQuestionsFailAtOnce)
{
    for (const QString &path : {QString(), u"/nowhere/at/all"_s, QString(300, u'x')}) {
        Answers answers;
        Ipc ipc(path, patience);
        ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
        EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "none"))) << path.toStdString();
    }
}

TEST(Ipc, aFullQueueIsTriedAgain)
{
    StandInSway sway([&](const Message &question) { sway.say(question.type, "[]"); });
    sway.setAccepting(false);
    UnixSocket first;
    ASSERT_EQ(first.connectTo(sway.path()), UnixSocket::Connecting::Done);
    UnixSocket second;
    ASSERT_EQ(second.connectTo(sway.path()), UnixSocket::Connecting::Busy);

    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    sway.setAccepting(true);
    ASSERT_TRUE(answers.come(1));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "[]")));
}

TEST(Ipc, aQueueThatStaysFullIsNotWaitedForForever)
{
    StandInSway sway([](const Message &) { });
    sway.setAccepting(false);
    UnixSocket first;
    ASSERT_EQ(first.connectTo(sway.path()), UnixSocket::Connecting::Done);
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    ASSERT_TRUE(answers.come(1));
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "none")));
}

TEST(Ipc, whoeverWaitsWhenItEndsIsAnswered)
{
    StandInSway sway([](const Message &) { });
    Answers answers;
    auto ipc = std::make_unique<Ipc>(sway.path(), patience);
    ipc->ask(Request::GetTree, "", answers.to(u"tree"_s));
    ipc.reset();
    EXPECT_THAT(answers.all(), ElementsAre(Pair(u"tree"_s, "none")));
}

TEST(Ipc, anAnswerMayEndIt)
{
    StandInSway sway([&](const Message &question) { sway.say(question.type, "[]"); });
    auto ipc = std::make_unique<Ipc>(sway.path(), patience);
    bool isAnswered = false;
    ipc->ask(Request::GetTree, "", [&](const Ipc::Reply &reply) {
        isAnswered = reply.has_value();
        ipc.reset();
    });
    EXPECT_TRUE(QTest::qWaitFor([&] { return isAnswered; }, 20000));
    EXPECT_EQ(ipc, nullptr);
}

TEST(Ipc, finishingIsBoundedWhereTheCompositorHangs)
{
    StandInSway sway([](const Message &) { });
    Answers answers;
    Ipc ipc(sway.path(), patience);
    ipc.ask(Request::GetTree, "", answers.to(u"tree"_s));
    ipc.finish(soon);
    EXPECT_THAT(answers.all(), IsEmpty());
}

TEST(IsSuccess, isWhatEveryPartOfACommandSays)
{
    const auto said = [](const QByteArray &json) {
        return isSuccess(Ipc::Reply(QJsonDocument::fromJson(json)));
    };
    EXPECT_TRUE(said(R"([{"success":true}])"));
    EXPECT_TRUE(said(R"([{"success":true},{"success":true}])"));
    EXPECT_FALSE(said(R"([{"success":true},{"success":false,"error":"no"}])"));
    EXPECT_FALSE(said(R"([])"));
    EXPECT_FALSE(said(R"({"success":true})"));
    EXPECT_FALSE(isSuccess(failure(u"no"_s)));
}

} // namespace

} // namespace lumacap::sway
