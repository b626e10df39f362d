#include "harness/Process.h"

#include "harness/WaitFor.h"

#include <QFile>

#include <csignal>
#include <ostream>
#include <stdexcept>
#include <system_error>
#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace lumacap::harness {

namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Pointers into `strings`, ended by a null pointer as exec wants them.
std::vector<char *> pointersTo(std::vector<QByteArray> &strings)
{
    std::vector<char *> pointers;
    pointers.reserve(strings.size() + 1);
    for (QByteArray &string : strings)
        pointers.push_back(string.data());
    pointers.push_back(nullptr);
    return pointers;
}

void redirect(const char *path, int descriptor)
{
    const int file = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    if (file < 0 || ::dup2(file, descriptor) < 0)
        ::_exit(126);
}

/// The child between fork and exec: only calls that are safe there.
[[noreturn]] void becomeProgram(char **arguments, char **environment, const char *outputFile,
                                const char *errorFile, pid_t parent)
{
    ::setpgid(0, 0);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) // the test died before the line above
        ::_exit(126);
    const int nothing = ::open("/dev/null", O_RDONLY | O_CLOEXEC);
    ::dup2(nothing, STDIN_FILENO);
    redirect(outputFile, STDOUT_FILENO);
    redirect(errorFile, STDERR_FILENO);
    ::execvpe(arguments[0], arguments, environment);
    ::_exit(127);
}

} // namespace

std::ostream &operator<<(std::ostream &stream, const Ending &ending)
{
    if (ending.signal != 0)
        return stream << "signal " << ending.signal;
    return stream << "exit code " << ending.code;
}

Process::Process(const QStringList &command, const Environment &environment, const QString &log)
    : m_log(log)
{
    std::vector<QByteArray> arguments;
    for (const QString &argument : command)
        arguments.push_back(argument.toLocal8Bit());
    std::vector<QByteArray> variables;
    for (const auto &[name, value] : environment)
        variables.push_back(name + '=' + value);
    const auto argumentPointers = pointersTo(arguments);
    const auto variablePointers = pointersTo(variables);
    const QByteArray outputFile = (log + QStringLiteral(".out")).toLocal8Bit();
    const QByteArray errorFile = (log + QStringLiteral(".err")).toLocal8Bit();
    const pid_t parent = ::getpid();
    m_pid = ::fork();
    if (m_pid == 0)
        becomeProgram(const_cast<char **>(argumentPointers.data()),
                      const_cast<char **>(variablePointers.data()), outputFile.constData(),
                      errorFile.constData(), parent);
    if (m_pid < 0)
        throw std::system_error(errno, std::generic_category(), "fork");
    ::setpgid(m_pid, m_pid); // both sides, so that a kill of the group finds it at once
}

Process::~Process()
{
    ::kill(-m_pid, SIGKILL);
    ::waitpid(m_pid, nullptr, 0);
}

std::optional<Ending> Process::ending() const
{
    // The child stays waitable, so that its process id names nobody else while this object lives.
    siginfo_t info{};
    if (::waitid(P_PID, static_cast<id_t>(m_pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0
        || info.si_pid == 0)
        return std::nullopt;
    if (info.si_code == CLD_EXITED)
        return Ending{.code = info.si_status};
    return Ending{.signal = info.si_status};
}

std::optional<Ending> Process::waitForEnd(std::chrono::milliseconds limit) const
{
    return waitFor([this] { return ending().has_value(); }, limit) ? ending() : std::nullopt;
}

void Process::send(int signal) const
{
    ::kill(m_pid, signal);
}

Ending Process::terminate(std::chrono::milliseconds limit) const
{
    send(SIGTERM);
    auto end = waitForEnd(limit);
    ::kill(-m_pid, SIGKILL);
    if (!end)
        end = waitForEnd(usualLimit);
    return end.value_or(Ending{.signal = SIGKILL});
}

QByteArray Process::output() const
{
    return contents(m_log + QStringLiteral(".out"));
}

QByteArray Process::errors() const
{
    return contents(m_log + QStringLiteral(".err"));
}

Answer run(const QStringList &command, const Environment &environment, const QString &log,
           std::chrono::milliseconds limit)
{
    const Process process(command, environment, log);
    const auto end = process.waitForEnd(limit);
    if (!end)
        throw std::runtime_error("no end of " + command.join(u' ').toStdString());
    return {*end, process.output(), process.errors()};
}

} // namespace lumacap::harness
