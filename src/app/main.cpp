#include "app/AppDelegate.h"
#include "app/ApplicationInterface.h"
#include "app/CommandLine.h"
#include "app/Desktop.h"
#include "app/EndOfDisplay.h"
#include "app/FileCapture.h"
#include "app/RestWatch.h"
#include "app/RunningAgent.h"
#include "app/Session.h"
#include "app/TerminationSignals.h"
#include "app/Watchdog.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QApplication>
#include <QCoroTask>
#include <QDBusConnection>
#include <QDeadlineTimer>
#include <QEvent>
#include <QSessionManager>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <utility>
#include <variant>

#include <malloc.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace lumacap;

namespace {

constexpr int badUsage = 2;

// Beyond what the steps themselves allow: these are for the ones inside libraries.
constexpr auto busLimit = 10s;
constexpr auto captureLimit = 25s;
constexpr auto answerLimit = 150s; // a Wayland desktop may ask the person whether it may be taken
constexpr auto endLimit = 30s;
constexpr auto startLimit = 60s; // a desktop that has just begun has much to do
constexpr auto claimLimit = 10s;

const QString noPicture = u"no picture was taken: "_s;
const QString refusedCommand = u"the running agent did not take the command"_s;

void sayOnStandardError(const QString &line)
{
    QString one = line; // what a person typed may hold line feeds
    std::fprintf(stderr, "lumacap: %s\n", qUtf8Printable(one.replace(u'\n', u' ')));
}

/// The command line's words; nothing when one is not UTF-8, which file names are for the toolkit.
std::optional<QStringList> wordsOf(int argc, char **argv)
{
    QStringList words;
    for (int index = 0; index < argc; ++index) {
        words.append(QString::fromUtf8(argv[index]));
        if (words.last().toUtf8() != argv[index])
            return std::nullopt;
    }
    return words;
}

int run(const PrintText &print, int & /*argc*/, char ** /*argv*/)
{
    const QByteArray text = print.text.toLocal8Bit();
    std::fputs(text.constData(), stdout);
    return std::fflush(stdout) == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

int run(const BadUsage &usage, int & /*argc*/, char ** /*argv*/)
{
    sayOnStandardError(usage.reason + u" (--help lists the commands)"_s);
    return badUsage;
}

int run(const CaptureToFile &request, int &argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    const QByteArray lastWords = "lumacap: no picture was taken: the display does not answer\n";
    std::optional<Watchdog> watchdog(std::in_place, captureLimit, lastWords, EXIT_FAILURE);
    const Session session = Session::open();
    if (!session.isConnected() && Session::hasDisplay()) {
        sayOnStandardError(noPicture + u"the display does not answer"_s);
        return EXIT_FAILURE;
    }
    if (session.wayland() != nullptr) {
        watchdog.reset();
        watchdog.emplace(answerLimit, lastWords, EXIT_FAILURE);
    }
    const auto screenCapture = makeScreenCapture(session);
    const Result<void> done =
        QCoro::waitFor(captureFirstDisplay(*screenCapture, request.path, request.format));
    if (done)
        return EXIT_SUCCESS;
    sayOnStandardError(noPicture + done.error().description);
    return EXIT_FAILURE;
}

/// Gives the command to the agent that runs; nothing when none does.
std::optional<int> handOver(std::optional<Command> command, int &argc, char **argv)
{
    // Without a GUI application, so that the agent has its command within a few milliseconds.
    const QCoreApplication application(argc, argv);
    const Watchdog watchdog(busLimit, "lumacap: the session bus does not answer\n", EXIT_FAILURE);
    const QDBusConnection bus = QDBusConnection::sessionBus();
    // The toolkit delivers nothing on this connection before it has run its own event, which would
    // go with this application if everything were answered sooner.
    QCoreApplication::sendPostedEvents();
    const HandOver done = QCoro::waitFor(handOverToRunningAgent(bus, command));
    // What the answered call left to be deleted later: this application's loop does not run again.
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    switch (done) {
    case HandOver::Accepted:
        return EXIT_SUCCESS;
    case HandOver::NobodyRuns:
        return command == Command::Quit ? std::optional(EXIT_SUCCESS) : std::nullopt;
    case HandOver::Refused:
        sayOnStandardError(refusedCommand);
        return EXIT_FAILURE;
    }
    return std::nullopt;
}

/// The autostart entry starts the agent; a session manager that restores its programs must not do
/// so too.
void leaveStartingToAutostart(QGuiApplication &application)
{
    QObject::connect(
        &application, &QGuiApplication::saveStateRequest, &application,
        [](QSessionManager &session) { session.setRestartHint(QSessionManager::RestartNever); });
}

int runAgent(std::optional<Command> command, ApplicationInterface &interface, int &argc,
             char **argv)
{
    // Pictures are large: their memory goes back to the system as soon as it is freed.
    mallopt(M_MMAP_THRESHOLD, 256 * 1024);

    // A server that hangs must not keep an agent that was told to end, neither in a step nor in the
    // toolkit's own end, which this outlives.
    std::optional<Watchdog> endWatchdog;
    // Nor may one that hangs in its start keep the name that another agent would have.
    std::optional<Watchdog> startWatchdog(std::in_place, startLimit,
                                          "lumacap: the display does not answer\n", EXIT_FAILURE);
    Session::prepareToolkit();
    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Lumacap"_s);
    QApplication::setApplicationVersion(QStringLiteral(LUMACAP_VERSION));
    QApplication::setDesktopFileName(ApplicationInterface::serviceName);
    QApplication::setQuitOnLastWindowClosed(false); // an agent: no window at rest
    leaveStartingToAutostart(application);
    const Session session = Session::open();
    Desktop desktop = makeDesktop(session);
    PreferencesStorage::useServices(*desktop.defaults, *desktop.loginItem);
    AppDelegate delegate(desktop, PreferencesStorage::shared());
    QObject::connect(&delegate, &AppDelegate::terminating, &interface,
                     &ApplicationInterface::release);
    QObject::connect(&delegate, &AppDelegate::terminating, &application,
                     [&endWatchdog] { endWatchdog.emplace(endLimit, QByteArray(), EXIT_SUCCESS); });
    const TerminationSignals signals;
    QObject::connect(&signals, &TerminationSignals::requested, &delegate, &AppDelegate::terminate);
    const EndOfDisplay endOfDisplay(session);
    const RestWatch restWatch;
    QObject::connect(&restWatch, &RestWatch::cameToRest, &delegate, &AppDelegate::comeToRest);
    delegate.applicationDidFinishLaunching();
    // From within the loop: an end asked for before it runs would be forgotten.
    QMetaObject::invokeMethod(
        &delegate,
        [&delegate, &interface, &startWatchdog, command] {
            startWatchdog.reset();
            if (command) // before those that came meanwhile, of which one may end the agent
                delegate.perform(*command);
            interface.setHandler([&delegate](Command asked) { delegate.perform(asked); });
        },
        Qt::QueuedConnection);
    const int status = QApplication::exec();
    interface.setHandler({}); // which outlives the delegate
    return status;
}

/// Ends a process that only asked another one. The thread in which the toolkit serves the bus may
/// still be closing the connection, and complains when static objects go while it does.
[[noreturn]] void leave(int status)
{
    std::fflush(nullptr);
    std::_Exit(status);
}

/// Gives the command to the agent that runs, and ends this process with that; returns nothing else
/// than that none does.
void handOverAndLeave(std::optional<Command> command, int &argc, char **argv)
{
    if (const auto status = handOver(command, argc, argv))
        leave(*status);
}

int run(const RunAgent &request, int &argc, char **argv)
{
    handOverAndLeave(request.command, argc, argv);
    if (!Session::hasDisplay()) { // where there is none, the toolkit aborts
        sayOnStandardError(u"there is no display to run on"_s);
        leave(EXIT_FAILURE);
    }
    // A D-Bus adaptor belongs to the object that it is a face of. Calls of it are posted to this
    // thread, and wait there: no application object may end between the claim and their delivery.
    QObject agent;
    auto *const interface = new ApplicationInterface(&agent, QDBusConnection::sessionBus());
    const QDeadlineTimer deadline(claimLimit);
    // Before the toolkit's windows are made, which takes longer than all else: whoever starts the
    // agent over the bus waits for nothing but the name.
    while (interface->claimName() == ApplicationInterface::Claim::Taken) {
        handOverAndLeave(request.command, argc, argv); // to the one that was quicker
        if (deadline.hasExpired()) {
            sayOnStandardError(refusedCommand);
            leave(EXIT_FAILURE);
        }
    }
    return runAgent(request.command, *interface, argc, argv);
}

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): what escapes is a broken rule, and ends the program
int main(int argc, char **argv)
{
    // A reader of our output that has gone, and a limit on the size of files, are failures of a
    // write and not the end of the program.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    const auto words = wordsOf(argc, argv);
    const CommandLine commandLine =
        words ? parseCommandLine(*words) : BadUsage{u"an argument is not valid UTF-8"_s};
    return std::visit([&](const auto &request) { return run(request, argc, argv); }, commandLine);
}
