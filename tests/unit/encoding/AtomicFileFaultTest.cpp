#include "capture/encoding/AtomicFile.h"

#include "FolderContents.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <csignal>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace lumacap;
using namespace lumacap::samples;
using namespace Qt::StringLiterals;

namespace {

/// Lets files grow to `bytes` only, for as long as it lives: what a full disk looks like to a
/// writer.
class FileSizeLimit {
public:
    explicit FileSizeLimit(rlim_t bytes)
        : m_earlierAction(std::signal(SIGXFSZ, SIG_IGN))
    {
        EXPECT_EQ(::getrlimit(RLIMIT_FSIZE, &m_earlier), 0);
        const rlimit limit{.rlim_cur = bytes, .rlim_max = m_earlier.rlim_max};
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;
    ~FileSizeLimit()
    {
        EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &m_earlier), 0);
        EXPECT_NE(std::signal(SIGXFSZ, m_earlierAction), SIG_ERR);
    }

private:
    void (*m_earlierAction)(int);
    rlimit m_earlier{};
};

class AtomicFileFault : public ::testing::TestWithParam<Concealment> {
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QStringList names() const { return namesIn(m_folder.path()); }
    Result<AtomicFile> create(const QString &name) const
    {
        return AtomicFile::create(path(name), GetParam());
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_P(AtomicFileFault, writeThatFailsHalfWayLeavesNothingNew)
{
    ASSERT_TRUE(placeFile(path(u"earlier.png"_s), "earlier"));
    for (const QString &name : {u"earlier.png"_s, u"fresh.png"_s}) {
        Result<AtomicFile> file = create(name);
        ASSERT_TRUE(file);
        {
            const FileSizeLimit limit(1000);
            EXPECT_FALSE(file->write(QByteArray(5000, 'x')));
        }
        EXPECT_FALSE(file->write("x")); // room again, but half the picture is missing
        EXPECT_FALSE(file->commit());
    }
    EXPECT_EQ(names(), QStringList(u"earlier.png"_s));
    EXPECT_EQ(contentsOf(path(u"earlier.png"_s)), "earlier");
}

TEST_P(AtomicFileFault, folderInTheWayIsAFailure)
{
    ASSERT_TRUE(QDir(path({})).mkdir(u"shot.png"_s));
    ASSERT_TRUE(QFile::link(u"shot.png"_s, path(u"link.png"_s)));
    EXPECT_FALSE(create(u"shot.png"_s));
    EXPECT_FALSE(create(u"shot.png/"_s));
    EXPECT_FALSE(create(u"shot.png/."_s));
    EXPECT_FALSE(create(u"shot.png/.."_s));
    EXPECT_FALSE(create(u"link.png"_s));
    EXPECT_EQ(names(), QStringList({u"link.png"_s, u"shot.png"_s}));
}

TEST_P(AtomicFileFault, folderThatAppearsBeforeTheCommitIsAFailureWithoutTrace)
{
    Result<AtomicFile> file = create(u"shot.png"_s);
    ASSERT_TRUE(file);
    ASSERT_TRUE(QDir(path({})).mkdir(u"shot.png"_s));
    const Result<void> committed = file->commit();
    ASSERT_FALSE(committed);
    EXPECT_TRUE(committed.error().description.contains(path(u"shot.png"_s)));
    EXPECT_EQ(names(), QStringList(u"shot.png"_s));
}

TEST_P(AtomicFileFault, folderThatIsGoneBeforeTheCommitIsAFailure)
{
    ASSERT_TRUE(QDir(path({})).mkdir(u"folder"_s));
    Result<AtomicFile> file = create(u"folder/shot.png"_s);
    ASSERT_TRUE(file);
    ASSERT_TRUE(QDir(path(u"folder"_s)).removeRecursively());
    EXPECT_FALSE(file->commit());
    EXPECT_EQ(names(), QStringList());
}

TEST_P(AtomicFileFault, deviceOrPipeInTheWayIsAFailureAndStays)
{
    const QByteArray pipe = QFile::encodeName(path(u"pipe"_s));
    ASSERT_EQ(::mkfifo(pipe.constData(), 0600), 0);
    EXPECT_FALSE(create(u"pipe"_s));
    EXPECT_FALSE(AtomicFile::create(u"/dev/null"_s, GetParam()));
    struct stat status{};
    ASSERT_EQ(::stat(pipe.constData(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode));
    EXPECT_EQ(names(), QStringList(u"pipe"_s));
}

TEST_P(AtomicFileFault, missingFolderAndEmptyPathAreFailures)
{
    ASSERT_TRUE(placeFile(path(u"file"_s), ""));
    EXPECT_FALSE(create(u"missing/shot.png"_s));
    EXPECT_FALSE(create(u"file/shot.png"_s));
    EXPECT_FALSE(AtomicFile::create(QString(), GetParam()));
    EXPECT_EQ(names(), QStringList(u"file"_s));
}

TEST_P(AtomicFileFault, linksInACircleAreAFailure)
{
    ASSERT_TRUE(QFile::link(u"second"_s, path(u"first"_s)));
    ASSERT_TRUE(QFile::link(u"first"_s, path(u"second"_s)));
    EXPECT_FALSE(create(u"first"_s));
    EXPECT_EQ(names(), QStringList({u"first"_s, u"second"_s}));
}

INSTANTIATE_TEST_SUITE_P(Each, AtomicFileFault,
                         ::testing::Values(Concealment::Unnamed, Concealment::HiddenName),
                         [](const auto &instance) {
                             return instance.param == Concealment::Unnamed ? "NoName"
                                                                           : "AHiddenName";
                         });

TEST(AtomicFileKilled, leavesNothingBehind)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"shot.png"_s);
    const pid_t child = ::fork();
    if (child == 0) {
        Result<AtomicFile> file = AtomicFile::create(path);
        const bool written = file && file->write("half a picture");
        std::ignore = ::kill(::getpid(), written ? SIGKILL : SIGTERM);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status));
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    EXPECT_EQ(namesIn(folder.path()), QStringList());
}
