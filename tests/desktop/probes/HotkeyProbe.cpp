// A program with shortcuts, of the desktop's own service, that says on standard output what comes
// of them:
//   hotkey-probe KEYCODE:MODIFIERS…   registers them, numbered from 1
// Signals: SIGUSR1 suspends or resumes them; SIGUSR2 gives them up and registers them again, twice.
#include "app/Desktop.h"
#include "app/Session.h"

#include <QGuiApplication>
#include <QSocketNotifier>

#include <array>
#include <csignal>
#include <cstdio>
#include <vector>

#include <sys/signalfd.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace lumacap;

namespace {

void say(const QString &line)
{
    std::fprintf(stdout, "%s\n", qUtf8Printable(line));
    std::fflush(stdout);
}

class Probe {
public:
    Probe(HotkeyService &service, const QStringList &shortcuts)
        : m_service(service)
        , m_shortcuts(shortcuts)
    {
        service.setPressedHandler([](std::uint32_t id) { say(u"pressed %1"_s.arg(id)); });
    }

    void registerAll()
    {
        for (const QString &shortcut : m_shortcuts) {
            const auto id = static_cast<std::uint32_t>(m_refs.size() + 1);
            const QStringList parts = shortcut.split(u':');
            m_refs.push_back(m_service.registerHotKey(
                {id, parts.value(0).toUInt(), parts.value(1).toUInt()}, [id](HotKeyState state) {
                    say((state == HotKeyState::Live ? u"live %1"_s : u"refused %1"_s).arg(id));
                }));
        }
        say(u"asked"_s);
    }
    void unregisterAll()
    {
        for (const HotKeyRef ref : m_refs)
            m_service.unregisterHotKey(ref);
        m_refs.clear();
    }
    void suspendOrResume()
    {
        m_isSuspended = !m_isSuspended;
        m_isSuspended ? m_service.suspend() : m_service.resume();
        say(m_isSuspended ? u"suspended"_s : u"resumed"_s);
    }

private:
    HotkeyService &m_service;
    QStringList m_shortcuts;
    std::vector<HotKeyRef> m_refs;
    bool m_isSuspended = false;
};

} // namespace

int main(int argc, char **argv)
{
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGUSR1);
    sigaddset(&signals, SIGUSR2);
    sigprocmask(SIG_BLOCK, &signals, nullptr);

    const QGuiApplication application(argc, argv);
    const Session session = Session::open();
    const Desktop desktop = makeDesktop(session);
    Probe probe(*desktop.hotkeyService, QGuiApplication::arguments().sliced(1));
    QSocketNotifier signalled(signalfd(-1, &signals, SFD_CLOEXEC), QSocketNotifier::Read);
    QObject::connect(&signalled, &QSocketNotifier::activated, &signalled, [&] {
        signalfd_siginfo signal{};
        if (read(static_cast<int>(signalled.socket()), &signal, sizeof signal) < 0)
            return;
        if (signal.ssi_signo == SIGUSR1)
            return probe.suspendOrResume();
        for (int time = 0; time < 2; ++time) {
            probe.unregisterAll();
            probe.registerAll();
        }
    });
    probe.registerAll();
    return QGuiApplication::exec();
}
