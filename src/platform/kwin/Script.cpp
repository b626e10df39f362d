#include "platform/kwin/Script.h"

#include <QCoroDBusPendingCall>
#include <QCoroSignal>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QPointer>
#include <QStandardPaths>
#include <QTemporaryFile>
#include <QUuid>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

/// What `tell` is to the script. Once nobody has answered for long, as after the end of a process
/// that could not take its script away, the script falls silent.
constexpr auto beginning = R"JS(
var lumacapUnanswered = 0;
function tell(text) {
    if (lumacapUnanswered > 200)
        return;
    ++lumacapUnanswered;
    callDBus("%1", "%2", "app.lumacap.Script", "tell", text, function () { lumacapUnanswered = 0; });
}
)JS"_L1;

int left(const QDeadlineTimer &deadline)
{
    return static_cast<int>(std::max<qint64>(1, deadline.remainingTime()));
}

QDBusMessage scriptingCall(const QString &method)
{
    auto call = QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/Scripting"_s,
                                               u"org.kde.kwin.Scripting"_s, method);
    call.setAutoStartService(false);
    return call;
}

QDBusMessage unloadCall(const QString &name)
{
    auto call = scriptingCall(u"unloadScript"_s);
    call.setArguments({name});
    return call;
}

QDBusMessage loadCall(const QString &path, const QString &name)
{
    auto call = scriptingCall(u"loadScript"_s);
    call.setArguments({path, name});
    return call;
}

/// Where Plasma 6 has a script, and where 5 has.
QStringList pathsOf(int number)
{
    return {u"/Scripting/Script%1"_s.arg(number), u"/%1"_s.arg(number)};
}

/// A file that its user alone can read.
bool write(QTemporaryFile &file, const QByteArray &source)
{
    return file.open() && file.write(source) == source.size() && file.flush();
}

} // namespace

Script::Script(QDBusConnection bus, QString name, QByteArray source)
    : m_bus(std::move(bus))
    , m_name(std::move(name))
    , m_source(std::move(source))
    , m_path(u"/app/lumacap/Script/"_s + QUuid::createUuid().toString(QUuid::Id128))
{
}

Script::~Script()
{
    if (m_isKnownToKWin)
        unload(m_bus, m_name);
}

void Script::unload(const QDBusConnection &bus, const QString &name)
{
    bus.send(unloadCall(name));
}

QCoro::Task<std::optional<QString>> Script::run(QDeadlineTimer deadline)
{
    const QPointer self{this};
    m_bus.registerObject(m_path, this, QDBusConnection::ExportScriptableSlots);
    // KWin reads it while it starts the script, and never again.
    QTemporaryFile file(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
                        + u"/lumacap-XXXXXX.js"_s);
    if (!write(file, wholeSource()))
        co_return std::nullopt;
    const bool isStarted = co_await load(file.fileName(), deadline);
    if (!self || !isStarted)
        co_return std::nullopt;
    if (!m_first) {
        const auto limit = std::chrono::milliseconds(left(deadline));
        const auto text = co_await qCoro(self.data(), &Script::told, limit);
        co_return text;
    }
    co_return m_first;
}

QByteArray Script::wholeSource() const
{
    return QString(beginning).arg(m_bus.baseService(), m_path).toUtf8() + m_source;
}

QCoro::Task<bool> Script::load(QString path, QDeadlineTimer deadline)
{
    const QPointer self{this};
    m_isKnownToKWin = true;
    const QDBusMessage unloaded = co_await m_bus.asyncCall(unloadCall(m_name), left(deadline));
    if (!self || unloaded.type() != QDBusMessage::ReplyMessage)
        co_return false;
    const QDBusMessage loaded = co_await m_bus.asyncCall(loadCall(path, m_name), left(deadline));
    if (!self || loaded.type() != QDBusMessage::ReplyMessage)
        co_return false;
    m_kwin = loaded.service();
    bool isNumber = false;
    const int number = loaded.arguments().value(0).toInt(&isNumber);
    if (!isNumber || number < 0)
        co_return false;
    co_return co_await start(number, deadline);
}

QCoro::Task<bool> Script::start(int number, QDeadlineTimer deadline)
{
    const QPointer self{this};
    for (const QString &path : pathsOf(number)) {
        auto call =
            QDBusMessage::createMethodCall(m_kwin, path, u"org.kde.kwin.Script"_s, u"run"_s);
        call.setAutoStartService(false);
        const QDBusMessage reply = co_await m_bus.asyncCall(call, left(deadline));
        if (!self)
            co_return false;
        if (reply.type() == QDBusMessage::ReplyMessage)
            co_return true;
    }
    co_return false;
}

void Script::tell(const QString &text)
{
    if (message().service() != m_kwin)
        return; // somebody else
    if (!m_first)
        m_first = text;
    Q_EMIT told(text);
}

} // namespace lumacap::kwin
