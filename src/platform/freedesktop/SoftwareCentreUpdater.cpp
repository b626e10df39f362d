#include "platform/freedesktop/SoftwareCentreUpdater.h"

#include "platform/freedesktop/ApplicationId.h"

#include <QProcess>

#include <array>
#include <cstdio>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {
namespace {

constexpr auto opener = "xdg-open"_L1;

/// What the opener means by its exit codes 1 to 4.
constexpr std::array refusals{"it does not understand the address"_L1, "the page was not found"_L1,
                              "no program for such addresses is installed"_L1,
                              "the program for such addresses failed"_L1};

QString reasonOfExit(int code, QProcess::ExitStatus status)
{
    if (status == QProcess::CrashExit)
        return u"%1 crashed"_s.arg(opener);
    const auto index = static_cast<std::size_t>(code) - 1;
    return index < refusals.size() ? u"%1: %2"_s.arg(opener, refusals.at(index))
                                   : u"%1 ended with code %2"_s.arg(opener).arg(code);
}

void report(const QString &page, const QString &reason)
{
    const QString line = u"lumacap: no software centre opened %1: %2\n"_s.arg(page, reason);
    std::fputs(line.toLocal8Bit().constData(), stderr);
}

} // namespace

void SoftwareCentreUpdater::start() { }

void SoftwareCentreUpdater::checkForUpdates()
{
    const QString page = u"appstream://%1"_s.arg(applicationId);
    // Nobody owns the process object but itself, until the opener has ended: some openers stay as
    // long as what they opened, and the end of a QProcess is the end of its program.
    auto *process = new QProcess;
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardOutputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice()); // it has lines of its own for a refusal
    process->setChildProcessModifier(
        [] { setsid(); }); // what ends the program's terminal spares it
    QObject::connect(
        process, &QProcess::errorOccurred, process, [process, page](QProcess::ProcessError error) {
            if (error != QProcess::FailedToStart)
                return; // it runs, or its end tells more
            report(page, u"%1 can't be started (%2)"_s.arg(opener, process->errorString()));
            process->deleteLater();
        });
    QObject::connect(process, &QProcess::finished, process,
                     [process, page](int code, QProcess::ExitStatus status) {
                         if (code != 0 || status == QProcess::CrashExit)
                             report(page, reasonOfExit(code, status));
                         process->deleteLater();
                     });
    process->start(opener, {page});
}

} // namespace lumacap::freedesktop
