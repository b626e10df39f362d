#include "harness/SessionBus.h"

#include "harness/WaitFor.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace lumacap::harness {

namespace {

/// Only what the tests name may be started: an ordinary session bus brings in portals and panels of
/// whatever else is installed, and waits for them.
const QString configuration = QStringLiteral(
    "<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\" "
    "\"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\">\n"
    "<busconfig><type>session</type><listen>unix:tmpdir=%1</listen>\n"
    "<servicedir>%2</servicedir>\n"
    "<policy context=\"default\"><allow send_destination=\"*\" eavesdrop=\"true\"/>"
    "<allow eavesdrop=\"true\"/><allow own=\"*\"/></policy>\n"
    "<limit name=\"service_start_timeout\">20000</limit></busconfig>\n");

} // namespace

SessionBus::SessionBus(const QString &folder, const QString &runtimeFolder,
                       const QStringList &services, const Environment &environment)
    : m_services(folder + QStringLiteral("/services"))
{
    QDir().mkpath(m_services);
    for (const QString &service : services)
        offer(QStringLiteral("/usr/share/dbus-1/services/%1.service").arg(service));
    QFile file(folder + QStringLiteral("/bus.conf"));
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("no bus configuration");
    file.write(configuration.arg(runtimeFolder, m_services).toLocal8Bit());
    file.close();

    m_daemon = std::make_unique<Process>(
        QStringList{QStringLiteral("dbus-daemon"), QStringLiteral("--nofork"),
                    QStringLiteral("--nosyslog"), QStringLiteral("--print-address"),
                    QStringLiteral("--config-file=") + file.fileName()},
        environment, folder + QStringLiteral("/bus"));
    require("the session bus", [this] { return m_daemon->output().endsWith('\n'); });
    m_address = m_daemon->output().trimmed();
}

void SessionBus::offer(const QString &file) const
{
    if (!QFile::copy(file, m_services + u'/' + QFileInfo(file).fileName()))
        throw std::runtime_error("no bus service " + file.toStdString());
}

} // namespace lumacap::harness
