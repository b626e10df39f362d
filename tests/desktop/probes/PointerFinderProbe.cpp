// A program that finds the pointer as the product does, whenever SIGUSR1 asks it to, and says on
// standard output what it found: "ready" at first, then "X Y", of global space, or "nothing" each
// time, and how many milliseconds that took.
#include "app/Desktop.h"
#include "app/Session.h"
#include "platform/Spawn.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSocketNotifier>

#include <csignal>
#include <cstdio>

#include <sys/signalfd.h>
#include <unistd.h>

using namespace lumacap;

namespace {

QCoro::Task<> find(Screens &screens)
{
    QElapsedTimer taken;
    taken.start();
    co_await screens.prepare();
    const long long milliseconds = taken.elapsed();
    if (const auto pointer = screens.pointerPosition())
        std::printf("%g %g (%lld ms)\n", pointer->x, pointer->y, milliseconds);
    else
        std::printf("nothing (%lld ms)\n", milliseconds);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char **argv)
{
    sigset_t signals{};
    sigemptyset(&signals);
    sigaddset(&signals, SIGUSR1);
    sigprocmask(SIG_BLOCK, &signals, nullptr);

    const QCoreApplication application(argc, argv); // the toolkit's display is not needed
    const Session session = Session::open();
    const Desktop desktop = makeDesktop(session);
    QSocketNotifier asked(signalfd(-1, &signals, SFD_CLOEXEC), QSocketNotifier::Read);
    QObject::connect(&asked, &QSocketNotifier::activated, &application,
                     [&desktop](QSocketDescriptor descriptor) {
                         signalfd_siginfo info{};
                         if (read(descriptor, &info, sizeof info) == sizeof info)
                             spawn(find(*desktop.screens));
                     });
    std::puts("ready");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
