#include "platform/kwin/capture/Screenshot.h"

#include "platform/kwin/capture/PicturePipe.h"

#include <QCoroDBusPendingCall>
#include <QDBusArgument>
#include <QDBusPendingCall>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

struct ErrorRow {
    QLatin1StringView name;
    QLatin1StringView meaning;
};

constexpr std::array errorRows{
    ErrorRow{"org.kde.KWin.ScreenShot2.Error.NoAuthorized"_L1,
             "KWin lets only installed programs take pictures of the screen: "
             "install Lumacap and start the installed program"_L1},
    ErrorRow{"org.kde.KWin.ScreenShot2.Error.Cancelled"_L1, "KWin has cancelled the picture"_L1},
    ErrorRow{"org.kde.KWin.ScreenShot2.Error.InvalidScreen"_L1,
             "the display has been unplugged"_L1},
    ErrorRow{"org.freedesktop.DBus.Error.NoReply"_L1, "KWin does not answer"_L1},
    ErrorRow{"org.freedesktop.DBus.Error.ServiceUnknown"_L1, "KWin takes no pictures any more"_L1},
};

} // namespace

Failure screenshotFailure(const QDBusMessage &error)
{
    const auto *const row = std::ranges::find(errorRows, error.errorName(), &ErrorRow::name);
    return {row != errorRows.end() ? QString(row->meaning)
                                   : u"KWin took no picture: %1"_s.arg(error.errorMessage())};
}

QCoro::Task<Result<QImage>> takeScreenshot(QDBusConnection bus, QString method,
                                           QVariantList arguments, QDeadlineTimer deadline)
{
    auto pipe = PicturePipe::open();
    if (!pipe)
        co_return std::unexpected(pipe.error());
    auto question = QDBusMessage::createMethodCall(
        screenshotService, u"/org/kde/KWin/ScreenShot2"_s, screenshotService, method);
    arguments.append(QVariant::fromValue(pipe->write));
    question.setArguments(arguments);
    question.setAutoStartService(false);
    const auto limit = std::max<qint64>(1, deadline.remainingTime());
    const QDBusPendingCall call = bus.asyncCall(question, static_cast<int>(limit));
    // Ours are closed: when KWin has closed its own, the picture is at its end.
    question = {};
    arguments.clear();
    pipe->write = {};
    const QDBusMessage reply = co_await call;
    if (reply.type() != QDBusMessage::ReplyMessage)
        co_return std::unexpected(screenshotFailure(reply));
    if (reply.signature() != u"a{sv}"_s)
        co_return failure(u"KWin gave an answer that nobody understands"_s);
    const auto layout = pictureLayout(qdbus_cast<QVariantMap>(reply.arguments().value(0)));
    if (!layout)
        co_return std::unexpected(layout.error());
    co_return co_await readPicture(pipe->read, *layout, deadline);
}

} // namespace lumacap::kwin
