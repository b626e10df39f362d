#include "platform/freedesktop/SoftwareCentreUpdater.h"

#include "Environment.h"
#include "Waiting.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <QCoreApplication>
#include <QEvent>

#include <gmock/gmock.h>

#include <sys/wait.h>

#include <csignal>
#include <cstdio>
#include <optional>
#include <ostream>

#include <unistd.h>

using namespace Qt::StringLiterals;
using lumacap::freedesktop::SoftwareCentreUpdater;
using lumacap::tests::EnvironmentVariable;
using lumacap::tests::waitUntil;

namespace {

const QByteArray line = "lumacap: no software centre opened appstream://app.lumacap.Lumacap: ";

/// Standard error goes into a file while this lives.
class RedirectedStandardError {
public:
    explicit RedirectedStandardError(const QString &path)
        : m_previous{dup(STDERR_FILENO)}
    {
        QFile file(path);
        m_isRedirected = file.open(QIODevice::WriteOnly) && dup2(file.handle(), STDERR_FILENO) >= 0;
    }
    Q_DISABLE_COPY_MOVE(RedirectedStandardError)
    ~RedirectedStandardError()
    {
        dup2(m_previous, STDERR_FILENO);
        close(m_previous);
    }

    bool isRedirected() const { return m_isRedirected; }

private:
    int m_previous;
    bool m_isRedirected = false;
};

/// A folder of programs of our own, first on the PATH, each test's opener among them.
class SoftwareCentreUpdaterTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(m_standardError.isRedirected()); }

    /// What was printed on standard error since the test began.
    QByteArray printed() const
    {
        std::fflush(stderr);
        return left(u"stderr"_s);
    }

    void writeOpener(const QByteArray &script) const
    {
        QFile opener(m_folder.filePath(u"xdg-open"_s));
        ASSERT_TRUE(opener.open(QIODevice::WriteOnly));
        opener.write("#!/bin/sh\ncd " + QFile::encodeName(m_folder.path()) + "\n" + script + "\n");
        opener.close();
        ASSERT_TRUE(opener.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }

    QByteArray left(const QString &file) const
    {
        QFile note(m_folder.filePath(file));
        return note.open(QIODevice::ReadOnly) ? note.readAll() : QByteArray{};
    }

    /// Whether the process whose number the opener left in the file pid is over and reaped.
    bool openerIsGone() const
    {
        const int pid = left(u"pid"_s).toInt();
        return pid > 0 && kill(pid, 0) != 0;
    }

    QTemporaryDir m_folder;
    EnvironmentVariable m_path{"PATH", QFile::encodeName(m_folder.path()) + ":/usr/bin:/bin"};
    RedirectedStandardError m_standardError{m_folder.filePath(u"stderr"_s)};
};

/// Until the opener has ended and what waits for it has been deleted, for it belongs to itself.
bool everyOpenerIsForgotten()
{
    const bool isForgotten = waitUntil(
        [] { return waitid(P_ALL, 0, nullptr, WEXITED | WNOHANG | WNOWAIT | __WALL) == -1; });
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return isForgotten;
}

TEST_F(SoftwareCentreUpdaterTest, startOpensNothing)
{
    writeOpener("echo started >called");
    SoftwareCentreUpdater updater;
    updater.start();
    updater.checkForUpdates();
    ASSERT_TRUE(waitUntil([this] { return !left(u"called"_s).isEmpty(); }));
    EXPECT_EQ(left(u"called"_s), "started\n");
    EXPECT_TRUE(everyOpenerIsForgotten());
    EXPECT_EQ(printed(), "");
}

TEST_F(SoftwareCentreUpdaterTest, opensThePageOfTheProgramAndSaysNothing)
{
    writeOpener("echo noise; echo noise >&2; printf '%s,' \"$#\" \"$@\" >arguments.new\n"
                "echo $$ >pid; mv arguments.new arguments");
    SoftwareCentreUpdater{}.checkForUpdates();
    ASSERT_TRUE(waitUntil([this] { return openerIsGone(); }));
    EXPECT_EQ(left(u"arguments"_s), "1,appstream://app.lumacap.Lumacap,");
    EXPECT_TRUE(everyOpenerIsForgotten());
    EXPECT_EQ(printed(), "");
}

struct Refusal {
    const char *name;
    QByteArray script;
    QByteArray reason;

    friend std::ostream &operator<<(std::ostream &out, const Refusal &shown)
    {
        return out << shown.name;
    }
};

class RefusalTest : public SoftwareCentreUpdaterTest,
                    public testing::WithParamInterface<Refusal> { };

TEST_P(RefusalTest, isOneLine)
{
    writeOpener("echo $$ >pid; echo 'words of its own' >&2\n" + GetParam().script);
    SoftwareCentreUpdater{}.checkForUpdates();
    ASSERT_TRUE(waitUntil([this] { return openerIsGone(); }));
    EXPECT_EQ(printed(), line + GetParam().reason + "\n");
}

INSTANTIATE_TEST_SUITE_P(
    Ends, RefusalTest,
    testing::Values(
        Refusal{"noProgram", "exit 3", "xdg-open: no program for such addresses is installed"},
        Refusal{"programFailed", "exit 4", "xdg-open: the program for such addresses failed"},
        Refusal{"otherCode", "exit 77", "xdg-open ended with code 77"},
        Refusal{"signal", "kill -9 $$", "xdg-open crashed"}),
    [](const auto &instance) { return std::string{instance.param.name}; });

TEST_F(SoftwareCentreUpdaterTest, aMissingOpenerIsOneLine)
{
    const EnvironmentVariable path("PATH", QFile::encodeName(m_folder.path()));
    SoftwareCentreUpdater{}.checkForUpdates();
    ASSERT_TRUE(waitUntil([this] { return printed().endsWith('\n'); }));
    EXPECT_TRUE(printed().startsWith(line + "xdg-open can't be started"))
        << printed().toStdString();
    EXPECT_EQ(printed().count('\n'), 1);
}

TEST_F(SoftwareCentreUpdaterTest, anOpenerThatStaysOutlivesTheUpdater)
{
    // A pipe that is never written to: the opener stays until the test ends it.
    writeOpener("mkfifo gate; echo $$ >pid; read word <gate; echo through >passed");
    std::optional<SoftwareCentreUpdater> updater(std::in_place);
    QElapsedTimer clock;
    clock.start();
    updater->checkForUpdates();
    EXPECT_LT(clock.elapsed(), 20'000); // waiting for it would last for ever
    ASSERT_TRUE(waitUntil([this] { return left(u"pid"_s).endsWith('\n'); }));
    updater.reset();
    EXPECT_FALSE(openerIsGone());
    QFile gate(m_folder.filePath(u"gate"_s));
    ASSERT_TRUE(gate.open(QIODevice::WriteOnly));
    gate.write("open\n");
    gate.close();
    EXPECT_TRUE(waitUntil([this] { return left(u"passed"_s) == "through\n" && openerIsGone(); }));
    EXPECT_EQ(printed(), "");
}

} // namespace
