#include "harness/Rest.h"

#include <QByteArray>
#include <QDir>
#include <QFile>

#include <optional>
#include <stdexcept>
#include <utility>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

/// The number in the line of `path` that begins with `name`; empty when the file has gone.
std::optional<std::int64_t> numberIn(const QString &path, QByteArrayView name)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith(name))
            return line.sliced(name.size()).simplified().split(' ').first().toLongLong();
    }
    return std::nullopt; // read while the thread ended
}

} // namespace

std::int64_t wakeUps(pid_t process)
{
    const QDir tasks(u"/proc/%1/task"_s.arg(process));
    std::int64_t sum = 0;
    for (const QString &task : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        sum +=
            numberIn(tasks.filePath(task) + "/status"_L1, "voluntary_ctxt_switches:").value_or(0);
    return sum;
}

bool comesToRest(pid_t process, std::chrono::milliseconds quiet, std::chrono::milliseconds limit)
{
    std::int64_t seen = wakeUps(process);
    auto since = std::chrono::steady_clock::now();
    return waitFor(
        [&] {
            const std::int64_t now = wakeUps(process);
            if (now != std::exchange(seen, now))
                since = std::chrono::steady_clock::now();
            return std::chrono::steady_clock::now() - since > quiet;
        },
        limit);
}

std::int64_t memoryOf(pid_t process)
{
    const QString rollup = u"/proc/%1/smaps_rollup"_s.arg(process);
    const auto anonymous = numberIn(rollup, "Pss_Anon:");
    const auto shared = numberIn(rollup, "Pss_Shmem:");
    if (!anonymous || !shared)
        throw std::runtime_error("no memory of a process that has ended");
    return (*anonymous + *shared) * 1024;
}

std::int64_t pagesOf(pid_t process)
{
    const auto pages = numberIn(u"/proc/%1/status"_s.arg(process), "VmRSS:");
    if (!pages)
        throw std::runtime_error("no pages of a process that has ended");
    return *pages * 1024;
}

} // namespace lumacap::harness
