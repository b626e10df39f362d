#include "platform/portal/PortalRequest.h"

#include "PrivateBus.h"
#include "StandInPortal.h"
#include "platform/Spawn.h"

#include <QDBusArgument>

#include <gtest/gtest.h>

#include <chrono>
#include <memory>

namespace lumacap::portal {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using freedesktop::eventually;
using freedesktop::PrivateBus;

namespace {

const auto interface = u"org.freedesktop.portal.Screenshot"_s;
const auto method = u"Screenshot"_s;

class PortalRequestOnABus : public testing::Test {
public:
    PortalRequestOnABus()
    {
        portal.setVersion(interface, 2);
        portal.setResults(method, [](const QDBusMessage & /*call*/) {
            return QVariantMap{{u"uri"_s, u"file:///picture"_s}};
        });
        portal.appear();
    }

    PortalAddress address() { return {own, portalName}; }

    static QCoro::Task<> askInto(PortalAddress address, Question question, QObject *asker,
                                 std::optional<Result<QVariantMap>> *answer)
    {
        *answer = co_await PortalRequest::ask(std::move(address), std::move(question), asker);
    }

    void ask(std::chrono::milliseconds limit = 10s)
    {
        spawn(askInto(address(),
                      {interface, method, {QString()}, {{u"interactive"_s, false}}, limit},
                      asker.get(), &answer));
    }

    /// Why the request failed; nothing when it did not, or goes on.
    std::optional<QString> failureOf(Manner manner, std::chrono::milliseconds limit = 10s)
    {
        portal.setManner(method, manner);
        ask(limit);
        if (!eventually([this] { return answer.has_value(); }) || answer->has_value())
            return std::nullopt;
        return answer->error().description;
    }

    /// What a granted request brings; nothing when it fails.
    std::optional<QVariantMap> resultsOf(Manner manner)
    {
        portal.setManner(method, manner);
        ask();
        if (!eventually([this] { return answer.has_value(); }) || !answer->has_value())
            return std::nullopt;
        return **answer;
    }

    bool isClosed()
    {
        return eventually([this] { return portal.calls().contains(u"Close"_s); });
    }

    PrivateBus bus;
    QDBusConnection own = bus.connection();
    StandInPortal portal{bus.connection()};
    QString portalName = portal.uniqueName();
    std::unique_ptr<QObject> asker = std::make_unique<QObject>();
    std::optional<Result<QVariantMap>> answer;
};

const QVariantMap picture{{u"uri"_s, u"file:///picture"_s}};

TEST_F(PortalRequestOnABus, bringsWhatThePortalGrants)
{
    EXPECT_EQ(resultsOf(Manner::Grants), picture);
    const auto call = portal.lastCall(method);
    ASSERT_TRUE(call);
    EXPECT_EQ(call->signature(), u"sa{sv}"_s);
    EXPECT_EQ(qdbus_cast<QVariantMap>(call->arguments().value(1)).value(u"interactive"_s), false);
    EXPECT_FALSE(portal.calls().contains(u"Close"_s));
}

TEST_F(PortalRequestOnABus, followsAPortalThatAnswersAtAnotherPath)
{
    EXPECT_EQ(resultsOf(Manner::AnswersElsewhere), picture);
}

TEST_F(PortalRequestOnABus, hearsAnAnswerThatOvertakesTheNameOfItsPath)
{
    EXPECT_EQ(resultsOf(Manner::AnswersEarly), picture);
}

TEST_F(PortalRequestOnABus, takesTheFirstOfTwoAnswers)
{
    EXPECT_EQ(resultsOf(Manner::AnswersTwice), picture);
}

TEST_F(PortalRequestOnABus, tellsCancelledFromRefused)
{
    EXPECT_EQ(failureOf(Manner::Cancels), u"it was cancelled"_s);
    answer.reset();
    EXPECT_EQ(failureOf(Manner::Refuses), u"the desktop's portal refused"_s);
}

TEST_F(PortalRequestOnABus, failsInWordsWhereTheCallIsRefused)
{
    EXPECT_EQ(failureOf(Manner::FailsTheCall), u"the desktop's portal refused: not for you"_s);
}

TEST_F(PortalRequestOnABus, believesNoNonsense)
{
    EXPECT_EQ(failureOf(Manner::AnswersNonsense), u"the desktop's portal answered nonsense"_s);
    answer.reset();
    EXPECT_EQ(failureOf(Manner::NamesNonsense), u"the desktop's portal answered nonsense"_s);
}

TEST_F(PortalRequestOnABus, closesTheQuestionWhenTheLimitIsOver)
{
    EXPECT_EQ(failureOf(Manner::KeepsSilent, 50ms),
              u"the desktop's portal did not answer in time"_s);
    ASSERT_TRUE(isClosed());
    const auto asked = portal.lastCall(method);
    const auto token =
        qdbus_cast<QVariantMap>(asked->arguments().value(1)).value(u"handle_token"_s).toString();
    EXPECT_TRUE(portal.lastCall(u"Close"_s)->path().endsWith(u'/' + token));
}

TEST_F(PortalRequestOnABus, endsWhereNotEvenTheCallIsAnswered)
{
    EXPECT_EQ(failureOf(Manner::IgnoresTheCall, 50ms),
              u"the desktop's portal did not answer in time"_s);
}

TEST_F(PortalRequestOnABus, endsWithThePortal)
{
    EXPECT_EQ(failureOf(Manner::Vanishes), u"the desktop's portal has gone"_s);
}

TEST_F(PortalRequestOnABus, endsWithWhoeverAskedAndClosesTheQuestion)
{
    portal.setManner(method, Manner::KeepsSilent);
    ask();
    ASSERT_TRUE(eventually([this] { return portal.calls().contains(method); }));
    EXPECT_FALSE(answer);
    asker.reset();
    ASSERT_TRUE(answer);
    EXPECT_FALSE(answer->has_value());
    EXPECT_TRUE(isClosed());
}

TEST_F(PortalRequestOnABus, hearsNobodyButThePortal)
{
    portal.setManner(method, Manner::KeepsSilent);
    ask();
    ASSERT_TRUE(eventually([this] { return portal.calls().contains(method); }));
    QDBusConnection liar = bus.connection();
    const QString token = qdbus_cast<QVariantMap>(portal.lastCall(method)->arguments().value(1))
                              .value(u"handle_token"_s)
                              .toString();
    const QString path = u"/org/freedesktop/portal/desktop/request/%1/%2"_s.arg(
        own.baseService().mid(1).replace(u'.', u'_'), token);
    auto lie = QDBusMessage::createSignal(path, u"org.freedesktop.portal.Request"_s, u"Response"_s);
    lie.setArguments({2U, QVariantMap()});
    liar.send(lie);
    portal.tell(path, u"org.freedesktop.portal.Request"_s, u"Response"_s, {0U, picture});
    ASSERT_TRUE(eventually([this] { return answer.has_value(); }));
    EXPECT_TRUE(answer->has_value());
}

TEST_F(PortalRequestOnABus, keepsSeveralApart)
{
    portal.setManner(method, Manner::Grants);
    std::optional<Result<QVariantMap>> other;
    ask();
    portal.setResults(u"PickColor"_s,
                      [](const QDBusMessage &) { return QVariantMap{{u"color"_s, 3}}; });
    spawn(
        askInto(address(), {interface, u"PickColor"_s, {QString()}, {}, 10s}, asker.get(), &other));
    ASSERT_TRUE(eventually([&] { return answer && other; }));
    ASSERT_TRUE(answer->has_value() && other->has_value());
    EXPECT_EQ(**answer, picture);
    EXPECT_EQ(**other, (QVariantMap{{u"color"_s, 3}}));
}

} // namespace

} // namespace lumacap::portal
