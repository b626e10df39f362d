#include "harness/XServer.h"

#include "harness/WaitFor.h"

#include <QFile>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

constexpr auto dummyConfiguration = R"(Section "ServerFlags"
  Option "DontVTSwitch" "true"
  Option "AutoAddDevices" "false"
  Option "AutoAddGPU" "false"
EndSection
Section "Device"
  Identifier "dummy"
  Driver "dummy"
  VideoRam 256000
EndSection
Section "Monitor"
  Identifier "monitor"
  HorizSync 5.0-1000.0
  VertRefresh 5.0-200.0
EndSection
Section "Screen"
  Identifier "screen"
  Device "dummy"
  Monitor "monitor"
  DefaultDepth 24
  SubSection "Display"
    Depth 24
    Virtual 7680 4320
  EndSubSection
EndSection
)";

/// A pixel size with the millimetres of 96 dots an inch, as `xrandr --setmonitor` wants it.
QString geometry(const QRect &area)
{
    const auto millimetres = [](int pixels) { return pixels * 254 / 960; };
    return u"%1/%2x%3/%4+%5+%6"_s.arg(area.width())
        .arg(millimetres(area.width()))
        .arg(area.height())
        .arg(millimetres(area.height()))
        .arg(area.x())
        .arg(area.y());
}

/// A mode line of the reduced-blanking kind; the driver shows it to nobody, so its timing is free.
QStringList modeLine(const QString &name, const QSize &size)
{
    const int width = size.width();
    const int height = size.height();
    const int megahertz = (width + 160) * (height + 20) / 1000 * 60 / 1000;
    QStringList line{u"--newmode"_s, name, QString::number(megahertz)};
    for (const int value :
         {width, width + 48, width + 80, width + 160, height, height + 3, height + 8, height + 20})
        line.append(QString::number(value));
    return line;
}

} // namespace

XServer::XServer(const ServerOptions &options, const QString &folder,
                 const Environment &environment)
    : m_folder(folder)
    , m_environment(environment)
{
    const bool isVirtual = options.kind == ServerKind::Virtual;
    const auto command = (isVirtual ? virtualServer(options) : serverWithOutputs())
        + QStringList{u"-displayfd"_s, u"1"_s, u"-noreset"_s, u"-nolisten"_s, u"tcp"_s}
        + options.arguments;
    m_server = std::make_unique<Process>(command, environment, folder + "/server"_L1);
    require("the X server", [this] {
        if (m_server->ending())
            throw std::runtime_error("no X server: " + m_server->errors().toStdString());
        return m_server->output().endsWith('\n');
    });
    m_display = ':' + m_server->output().trimmed();
    m_environment["DISPLAY"] = m_display;
    if (isVirtual)
        layOutVirtual(options.monitors);
    else
        layOutOutputs(options.monitors);
}

QStringList XServer::virtualServer(const ServerOptions &options) const
{
    const auto screen =
        u"%1x%2x%3"_s.arg(options.size.width()).arg(options.size.height()).arg(options.depth);
    return {u"Xvfb"_s, u"-screen"_s, u"0"_s, screen};
}

QStringList XServer::serverWithOutputs() const
{
    QFile file(m_folder + "/xorg.conf"_L1);
    if (!file.open(QIODevice::WriteOnly) || file.write(dummyConfiguration) < 0)
        throw std::runtime_error("no server configuration");
    // The program behind Debian's wrapper, which would refuse to start away from a console.
    return {u"/usr/lib/xorg/Xorg"_s,   u"-config"_s,     file.fileName(), u"-logfile"_s,
            m_folder + "/xorg.log"_L1, u"-novtswitch"_s, u"-sharevts"_s,  u"-keeptty"_s};
}

void XServer::layOutVirtual(const std::vector<Monitor> &monitors) const
{
    QString output = u"screen"_s; // the first monitor takes over the only output there is
    for (const Monitor &monitor : monitors) {
        const QString mark = monitor.role == Role::Primary ? u"*"_s : QString();
        randr({u"--setmonitor"_s, mark + monitor.name, geometry(monitor.area), output});
        output = u"none"_s;
    }
}

void XServer::layOutOutputs(const std::vector<Monitor> &monitors) const
{
    QSize whole;
    for (const Monitor &monitor : monitors)
        whole = whole.expandedTo({monitor.area.right() + 1, monitor.area.bottom() + 1});
    for (const Monitor &monitor : monitors) {
        const QString mode = "mode"_L1 + monitor.name;
        randr(modeLine(mode, monitor.area.size()));
        randr({u"--addmode"_s, monitor.name, mode});
    }
    QStringList layout;
    if (!monitors.empty())
        layout << u"--fb"_s << u"%1x%2"_s.arg(whole.width()).arg(whole.height());
    for (const Monitor &monitor : monitors) {
        layout << u"--output"_s << monitor.name << u"--mode"_s << "mode"_L1 + monitor.name
               << u"--pos"_s << u"%1x%2"_s.arg(monitor.area.x()).arg(monitor.area.y());
        if (monitor.role == Role::Primary)
            layout << u"--primary"_s;
    }
    if (!layout.isEmpty())
        randr(layout);
}

void XServer::randr(const QStringList &arguments) const
{
    const auto answer =
        run(QStringList{u"xrandr"_s} + arguments, m_environment, m_folder + "/xrandr"_L1);
    if (answer.ending != Ending{})
        throw std::runtime_error("xrandr " + arguments.join(u' ').toStdString() + ": "
                                 + answer.errors.toStdString());
}

void XServer::switchOff(const QString &name) const
{
    // With no output left, xrandr fails after switching off: it asks for a screen of no size.
    run({u"xrandr"_s, u"--output"_s, name, u"--off"_s}, m_environment, m_folder + "/xrandr"_L1);
    require("the output to be off", [this, &name] {
        const auto monitors =
            run({u"xrandr"_s, u"--listactivemonitors"_s}, m_environment, m_folder + "/xrandr"_L1);
        return monitors.ending == Ending{} && !monitors.output.contains(name.toLocal8Bit());
    });
}

} // namespace lumacap::harness
