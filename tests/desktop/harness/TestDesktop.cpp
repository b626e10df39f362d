#include "harness/TestDesktop.h"

#include <QDir>
#include <QFile>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

TestDesktop::TestDesktop(const QStringList &services)
    : m_root(u"/tmp/desktop-test-XXXXXX"_s)
    , m_environment(bareEnvironment())
{
    if (!m_root.isValid())
        throw std::runtime_error("no folder for the desktop");
    static constexpr std::pair<const char *, QLatin1StringView> folders[]{
        {"HOME", "home"_L1},
        {"XDG_RUNTIME_DIR", "run"_L1},
        {"XDG_CONFIG_HOME", "config"_L1},
        {"XDG_DATA_HOME", "data"_L1},
        {"XDG_CACHE_HOME", "cache"_L1},
        {"XDG_STATE_HOME", "state"_L1},
        {"TMPDIR", "tmp"_L1}};
    for (const auto &[variable, name] : folders)
        m_environment[variable] = folder(name).toLocal8Bit();
    folder(u"home/Desktop"_s);
    folder(u"log"_s);
    QFile::setPermissions(folder(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    m_bus =
        std::make_unique<SessionBus>(folder(u"log"_s), folder(u"run"_s), services, m_environment);
    m_environment["DBUS_SESSION_BUS_ADDRESS"] = m_bus->address();
}

TestDesktop::~TestDesktop()
{
    stopAll();
}

void TestDesktop::stopAll()
{
    // Newest first, so that no client meets a desktop without its server.
    while (!m_processes.empty()) {
        m_processes.back()->terminate();
        m_processes.pop_back();
    }
}

QString TestDesktop::folder(const QString &name) const
{
    const QString path = m_root.filePath(name);
    QDir().mkpath(path);
    return path;
}

QString TestDesktop::newLog(const QString &name)
{
    return u"%1/%2-%3"_s.arg(folder(u"log"_s), name).arg(++m_logs);
}

Process &TestDesktop::start(const QString &name, const QStringList &command)
{
    m_processes.push_back(std::make_unique<Process>(command, m_environment, newLog(name)));
    return *m_processes.back();
}

void TestDesktop::stop(const Process &process)
{
    process.terminate();
    std::erase_if(m_processes, [&process](const auto &mine) { return mine.get() == &process; });
}

Answer TestDesktop::ask(const QStringList &command, std::chrono::milliseconds limit)
{
    return run(command, m_environment, newLog(u"answer"_s), limit);
}

} // namespace lumacap::harness
