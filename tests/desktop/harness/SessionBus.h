#pragma once

#include "harness/Process.h"

#include <QString>

#include <memory>

namespace lumacap::harness {

/// A session bus of one test, which starts the named services and no other.
class SessionBus {
public:
    /// Listens in `runtimeFolder`; configuration and log lie in `folder`. `services` are bus names
    /// whose installed service files the bus may use. Throws when the bus does not come up.
    SessionBus(const QString &folder, const QString &runtimeFolder, const QStringList &services,
               const Environment &environment);

    /// What DBUS_SESSION_BUS_ADDRESS holds for its clients.
    QByteArray address() const { return m_address; }
    /// Lets the bus start one more service, of which `file` tells; throws when there is no such
    /// file.
    void offer(const QString &file) const;
    /// Ends the bus under its clients.
    void end() const { m_daemon->terminate(); }

private:
    std::unique_ptr<Process> m_daemon;
    QByteArray m_address;
    QString m_services; // the folder of their files, which the bus watches
};

} // namespace lumacap::harness
