#include "harness/wayland/GnomeDesktop.h"

#include "harness/ImageReading.h"
#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/RemoteInput.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusReply>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// As the shell names and places them.
std::vector<TestOutput> outputsOf(const std::vector<QSize> &monitors)
{
    std::vector<TestOutput> outputs;
    int x = 0;
    for (const QSize &size : monitors) {
        outputs.push_back({u"Meta-%1"_s.arg(outputs.size()), size, QRect({x, 0}, size)});
        x += size.width();
    }
    return outputs;
}

/// How much of a monitor the pointer covers at most; the panel covers more.
constexpr qsizetype pointersPixels = 64 * 64;

/// The same monitors after a change; their own pixels are those they had unturned.
std::vector<TestOutput> arranged(std::vector<TestOutput> outputs,
                                 const GnomeArrangement &arrangement)
{
    int x = 0;
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        TestOutput &output = outputs[index];
        if (arrangement.isTurned)
            output.pixels.transpose();
        const QSizeF points = output.pixels.toSizeF() / arrangement.scales.at(index);
        output.frame = QRect({x, 0}, points.toSize());
        x += output.frame.width();
    }
    return outputs;
}

/// As the shell reads it: place, scale, turn, whether it is the main one, and its mode.
QString monitorsAsText(const std::vector<TestOutput> &outputs, const GnomeArrangement &arrangement)
{
    QStringList texts;
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        const TestOutput &output = outputs[index];
        const QSize mode = arrangement.isTurned ? output.pixels.transposed() : output.pixels;
        texts.append(u"(%1, 0, %2, uint32 %3, %4, [('%5', '%6x%7@60.000', @a{sv} {})])"_s
                         .arg(output.frame.x())
                         .arg(arrangement.scales.at(index))
                         .arg(arrangement.isTurned ? 1 : 0)
                         .arg(index == 0 ? u"true"_s : u"false"_s, output.name)
                         .arg(mode.width())
                         .arg(mode.height()));
    }
    return u'[' + texts.join(u", "_s) + u']';
}

QDBusMessage shellCall(const QString &path, const QString &interface, const QString &method)
{
    return QDBusMessage::createMethodCall(interface, path, interface, method);
}

bool comesUp(const Process &shell)
{
    constexpr std::chrono::seconds limit(20);
    const auto isStarted = [&shell] {
        return (shell.output() + shell.errors()).contains("GNOME Shell started");
    };
    return waitFor([&] { return shell.ending() || isStarted(); }, limit) && !shell.ending();
}

} // namespace

GnomeDesktop::GnomeDesktop(const GnomeOptions &options)
    : WaylandDesktop(QStringList{u"org.a11y.Bus"_s, u"ca.desrt.dconf"_s})
    , m_outputs(outputsOf(options.monitors))
    // The shell looks for the system's services. On a bus of its own it finds none, and goes on.
    , m_systemBus(std::make_unique<SessionBus>(folder(u"system"_s), folder(u"run"_s), QStringList(),
                                               environment()))
    , m_connectionName(newLog(u"bus"_s))
    , m_connection(
          QDBusConnection::connectToBus(QString::fromLocal8Bit(bus().address()), m_connectionName))
{
    set("DBUS_SYSTEM_BUS_ADDRESS", m_systemBus->address());
    set("XDG_SESSION_TYPE", "wayland");
    set("XDG_CURRENT_DESKTOP", "GNOME");
    set("LIBGL_ALWAYS_SOFTWARE", "1");
    set("WAYLAND_DISPLAY", "wayland-0");
    startPipeWire();
    startShell(options);
    if (options.xServer == XServerInside::Present)
        findXServer();
    evaluate(u"Main.overview.hide()"_s);
}

GnomeDesktop::~GnomeDesktop()
{
    m_input.reset();
    QDBusConnection::disconnectFromBus(m_connectionName);
    stopAll(); // before the folders go
}

void GnomeDesktop::startPipeWire()
{
    m_pipeWire = &start(u"pipewire"_s, {u"pipewire"_s});
    const QString socket = folder(u"run"_s) + u"/pipewire-0"_s;
    require("PipeWire", [&socket] { return QFile::exists(socket); });
    start(u"wireplumber"_s, {u"wireplumber"_s});
}

void GnomeDesktop::startShell(const GnomeOptions &options)
{
    QByteArray said;
    changeSetting(u"org.gnome.shell"_s, u"welcome-dialog-last-shown-version"_s, u"'999'"_s);
    changeSetting(u"org.gnome.desktop.interface"_s, u"enable-hot-corners"_s, u"false"_s);
    changeSetting(u"org.gnome.desktop.interface"_s, u"enable-animations"_s, u"false"_s);
    changeSetting(u"org.gnome.desktop.notifications"_s, u"show-banners"_s, u"false"_s);
    QStringList command{u"gnome-shell"_s,       u"--wayland"_s, u"--headless"_s,
                        u"--wayland-display"_s, u"wayland-0"_s, u"--unsafe-mode"_s};
    for (const QSize &size : options.monitors)
        command += {u"--virtual-monitor"_s, u"%1x%2"_s.arg(size.width()).arg(size.height())};
    if (options.xServer == XServerInside::Absent)
        command.append(u"--no-x11"_s);
    // Shell 43 now and then ends or stands still while it starts, about once in thirty times.
    for (int attempt = 0; attempt < 3; ++attempt) {
        m_shell = &start(u"shell"_s, command);
        if (comesUp(*m_shell))
            return;
        said = m_shell->output() + m_shell->errors();
        stop(*m_shell);
    }
    throw std::runtime_error("the shell does not start: " + said.toStdString());
}

void GnomeDesktop::findXServer()
{
    static const QRegularExpression line(u"Using public X11 display (:[0-9]+)"_s);
    const QString said = QString::fromLocal8Bit(m_shell->output() + m_shell->errors());
    const auto found = line.match(said);
    const QStringList keys =
        QDir(folder(u"run"_s)).entryList({u".mutter-Xwaylandauth.*"_s}, QDir::Files | QDir::Hidden);
    if (!found.hasMatch() || keys.isEmpty())
        throw std::runtime_error("the shell offers no X server");
    set("DISPLAY", found.captured(1).toLocal8Bit());
    set("XAUTHORITY", (folder(u"run"_s) + u'/' + keys.first()).toLocal8Bit());
}

void GnomeDesktop::evaluate(const QString &script)
{
    auto message = shellCall(u"/org/gnome/Shell"_s, u"org.gnome.Shell"_s, u"Eval"_s);
    message << script;
    const QDBusReply<bool> done = m_connection.call(message);
    if (!done.isValid() || !done.value())
        throw std::runtime_error("the shell does not run " + script.toStdString());
}

Input &GnomeDesktop::input()
{
    if (!m_input)
        m_input = std::make_unique<RemoteInput>(m_connection);
    return *m_input;
}

QImage GnomeDesktop::look(const QString &output)
{
    const QString file = newLog(u"look"_s) + u".png"_s;
    auto message = shellCall(u"/org/gnome/Shell/Screenshot"_s, u"org.gnome.Shell.Screenshot"_s,
                             u"Screenshot"_s);
    message << true << false << file; // with the pointer, without a flash
    const QDBusReply<bool> done = m_connection.call(message);
    if (!done.isValid() || !done.value())
        throw std::runtime_error("the shell is not seen: " + done.error().message().toStdString());
    QFile written(file);
    if (!written.open(QIODevice::ReadOnly))
        throw std::runtime_error("the shell wrote nothing");
    const QImage all = readImage(*this, written.readAll(), ImageKind::Png);
    const auto wanted = std::ranges::find(m_outputs, output, &TestOutput::name);
    if (wanted == m_outputs.end())
        return {};
    // Of all monitors together, at the greatest of their scales.
    const double scale = double(all.width()) / (m_outputs.back().frame.right() + 1);
    return all.copy({wanted->frame.topLeft() * scale, wanted->frame.size() * scale});
}

void GnomeDesktop::paint(const QString &output, const QImage &picture)
{
    Process &newer = show(picture, {u"full-screen"_s, output});
    if (Process *const older = std::exchange(m_painted[output], &newer))
        stop(*older);
    // The shell takes its panel away a little after it has put the window on the monitor.
    require("a painted monitor", [&] {
        const QImage seen = look(output);
        const bool isScaled = seen.size() != picture.size(); // beside one of a greater scale
        return isScaled || differingPixels(picture, seen) <= pointersPixels;
    });
}

Answer GnomeDesktop::askForMonitors(const QString &method, const QStringList &arguments)
{
    const QString service = u"org.gnome.Mutter.DisplayConfig"_s;
    QStringList command{u"gdbus"_s, u"call"_s, u"--session"_s};
    command += {u"--dest"_s, service, u"--object-path"_s, u"/org/gnome/Mutter/DisplayConfig"_s};
    command += {u"--method"_s, service + u'.' + method};
    return ask(command + arguments);
}

void GnomeDesktop::arrange(const GnomeArrangement &arrangement)
{
    if (arrangement.units == GnomeUnits::Points)
        changeSetting(u"org.gnome.mutter"_s, u"experimental-features"_s,
                      u"['scale-monitor-framebuffer']"_s);
    m_outputs = arranged(m_outputs, arrangement);
    static const QRegularExpression number(u"^\\(uint32 ([0-9]+)"_s);
    const int units = arrangement.units == GnomeUnits::Points ? 1 : 2;
    const QByteArray counting = "'layout-mode': <uint32 " + QByteArray::number(units) + '>';
    Answer refused;
    const bool isDone = waitFor([&] {
        const Answer state = askForMonitors(u"GetCurrentState"_s);
        if (!state.output.contains(counting)) // what was switched on is not seen yet
            return false;
        const QString serial = number.match(QString::fromUtf8(state.output)).captured(1);
        const QString temporarily = u"1"_s;
        refused = askForMonitors(
            u"ApplyMonitorsConfig"_s,
            {serial, temporarily, monitorsAsText(m_outputs, arrangement), u"@a{sv} {}"_s});
        return refused.ending == Ending{};
    });
    if (!isDone)
        throw std::runtime_error("the monitors stay: " + refused.errors.toStdString());
}

void GnomeDesktop::startShortcuts()
{
    start(u"media-keys"_s, {u"/usr/libexec/gsd-media-keys"_s});
    require("the desktop's shortcuts", [this] {
        return m_connection.interface()
            ->isServiceRegistered(u"org.gnome.SettingsDaemon.MediaKeys"_s)
            .value();
    });
}

QString GnomeDesktop::setting(const QString &schema, const QString &key)
{
    return QString::fromUtf8(ask({u"gsettings"_s, u"get"_s, schema, key}).output.trimmed());
}

void GnomeDesktop::changeSetting(const QString &schema, const QString &key, const QString &value)
{
    const Answer answer = ask({u"gsettings"_s, u"set"_s, schema, key, value});
    if (answer.ending != Ending{})
        throw std::runtime_error("no setting: " + answer.errors.toStdString());
}

} // namespace lumacap::harness
