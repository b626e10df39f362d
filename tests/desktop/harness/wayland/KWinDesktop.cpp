#include "harness/wayland/KWinDesktop.h"

#include "harness/WaitFor.h"
#include "harness/wayland/FakeInput.h"

#include <QDBusMessage>
#include <QDBusReply>
#include <QDBusUnixFileDescriptor>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStandardPaths>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include <fcntl.h>
#include <unistd.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// All bytes up to the end, `size` at most.
QByteArray readAll(int file, qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    qsizetype filled = 0;
    while (filled < size) {
        const ssize_t count =
            read(file, bytes.data() + filled, static_cast<std::size_t>(size - filled));
        if (count <= 0)
            break;
        filled += count;
    }
    bytes.truncate(filled);
    return bytes;
}

} // namespace

KWinDesktop::KWinDesktop(const KWinOptions &options)
    : WaylandDesktop(QStringList{u"org.a11y.Bus"_s, u"org.kde.kscreen"_s})
    , m_connectionName(newLog(u"bus"_s))
    , m_connection(
          QDBusConnection::connectToBus(QString::fromLocal8Bit(bus().address()), m_connectionName))
{
    set("XDG_SESSION_TYPE", "wayland");
    set("XDG_CURRENT_DESKTOP", "KDE");
    set("KDE_FULL_SESSION", "true");
    set("KDE_SESSION_VERSION", "5");
    set("LIBGL_ALWAYS_SOFTWARE", "1");
    set("KWIN_COMPOSE", "O2"); // takes pictures of itself only where it draws by OpenGL
    if (options.permissions == Permissions::Unchecked) {
        set("KWIN_SCREENSHOT_NO_PERMISSION_CHECKS", "1");
        set("KWIN_WAYLAND_NO_PERMISSION_CHECKS", "1");
    }
    for (const auto &[variable, value] : options.environment)
        set(variable, value);
    writeSettings();
    // The installed program has a capability that containers do not grant; a copy has none.
    const QString copy = folder(u"bin"_s) + u"/kwin_wayland"_s;
    QFile::copy(QStandardPaths::findExecutable(u"kwin_wayland"_s), copy);
    m_kwin = &start(u"kwin"_s,
                    {copy, u"--virtual"_s, u"--no-lockscreen"_s, u"--socket"_s, u"wayland-0"_s,
                     u"--width"_s, QString::number(options.size.width()), u"--height"_s,
                     QString::number(options.size.height()), u"--scale"_s,
                     QString::number(options.scale), u"--output-count"_s,
                     QString::number(options.outputs)});
    set("WAYLAND_DISPLAY", "wayland-0");
    const auto screenshots =
        QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/org/kde/KWin/ScreenShot2"_s,
                                       u"org.freedesktop.DBus.Introspectable"_s, u"Introspect"_s);
    require("KWin", [&] {
        if (m_kwin->ending())
            throw std::runtime_error("KWin ended: " + m_kwin->errors().toStdString());
        const QDBusReply<QString> reply = m_connection.call(screenshots);
        return reply.isValid() && reply.value().contains(u"CaptureScreen"_s);
    });
    arrange(options);
}

/// Plasma 6 holds the pointer back where one output ends and the next begins.
void KWinDesktop::writeSettings() const
{
    QFile file(QString::fromLocal8Bit(environment().at("XDG_CONFIG_HOME")) + u"/kwinrc"_s);
    const QByteArray free = "[EdgeBarrier]\nEdgeBarrier=0\nCornerBarrier=false\n";
    if (!file.open(QIODevice::WriteOnly) || file.write(free) != free.size())
        throw std::runtime_error("no settings for KWin");
}

/// Plasma 6 does not keep to the scale that it is started with.
void KWinDesktop::arrange(const KWinOptions &options)
{
    if (options.scale == 1)
        return; // as it is by itself
    QStringList changes;
    int left = 0;
    bool isAsAsked = true;
    for (const TestOutput &output : outputs()) {
        changes << u"output.%1.scale.%2"_s.arg(output.name).arg(options.scale)
                << u"output.%1.position.%2,0"_s.arg(output.name).arg(left);
        left += options.size.width();
        isAsAsked = isAsAsked && output.frame.size() == options.size;
    }
    if (isAsAsked)
        return;
    configure(changes);
    require("the scale", [&] {
        return std::ranges::all_of(outputs(), [&options](const TestOutput &output) {
            return output.frame.size() == options.size;
        });
    });
}

KWinDesktop::~KWinDesktop()
{
    m_input.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
    stopAll();
}

Input &KWinDesktop::input()
{
    if (!m_input)
        m_input = std::make_unique<FakeInput>(socket());
    return *m_input;
}

void KWinDesktop::configure(const QStringList &arguments)
{
    const Answer said = ask(QStringList{u"kscreen-doctor"_s} + arguments);
    if (said.ending != Ending{})
        throw std::runtime_error("kscreen-doctor failed: " + said.errors.toStdString());
}

std::vector<TestOutput> KWinDesktop::outputs()
{
    const Answer said = ask({u"kscreen-doctor"_s, u"--json"_s});
    std::vector<TestOutput> outputs;
    const QJsonObject told = QJsonDocument::fromJson(said.output).object();
    for (const QJsonValue &value : told[u"outputs"_s].toArray()) {
        const QJsonObject output = value.toObject();
        const QJsonObject place = output[u"pos"_s].toObject();
        const QJsonObject size = output[u"size"_s].toObject();
        const double scale = output[u"scale"_s].toDouble(1);
        const QSize pixels(size[u"width"_s].toInt(), size[u"height"_s].toInt());
        outputs.push_back({output[u"name"_s].toString(),
                           pixels,
                           {place[u"x"_s].toInt(), place[u"y"_s].toInt(),
                            static_cast<int>(std::lround(pixels.width() / scale)),
                            static_cast<int>(std::lround(pixels.height() / scale))}});
    }
    std::ranges::sort(outputs, {}, &TestOutput::name);
    return outputs;
}

QImage KWinDesktop::look(const QString &output)
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("no pipe");
    auto request =
        QDBusMessage::createMethodCall(u"org.kde.KWin"_s, u"/org/kde/KWin/ScreenShot2"_s,
                                       u"org.kde.KWin.ScreenShot2"_s, u"CaptureScreen"_s);
    request << output << QVariantMap{{u"include-cursor"_s, true}, {u"native-resolution"_s, true}}
            << QVariant::fromValue(QDBusUnixFileDescriptor(ends[1]));
    const QDBusReply<QVariantMap> reply = m_connection.call(request);
    request = {}; // with its copy of the pipe's end
    close(ends[1]);
    const QVariantMap facts = reply.value();
    const int width = facts[u"width"_s].toInt();
    const int height = facts[u"height"_s].toInt();
    const qsizetype stride = facts[u"stride"_s].toLongLong();
    const QByteArray bytes = readAll(ends[0], stride * height);
    close(ends[0]);
    if (!reply.isValid() || bytes.size() < stride * height)
        return {};
    const QImage view(reinterpret_cast<const uchar *>(bytes.constData()), width, height, stride,
                      static_cast<QImage::Format>(facts[u"format"_s].toInt()));
    return view.convertToFormat(QImage::Format_RGB32);
}

} // namespace lumacap::harness
