#include "capture/encoding/AtomicFile.h"

#include "FolderContents.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <optional>

#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace lumacap;
using namespace lumacap::samples;
using namespace Qt::StringLiterals;

namespace {

/// Sets the process's umask for as long as it lives.
class ScopedUmask {
public:
    explicit ScopedUmask(mode_t mask)
        : m_earlier(::umask(mask))
    {
    }
    ScopedUmask(const ScopedUmask &) = delete;
    ScopedUmask &operator=(const ScopedUmask &) = delete;
    ~ScopedUmask() { ::umask(m_earlier); }

private:
    mode_t m_earlier;
};

class AtomicFileBy : public ::testing::TestWithParam<Concealment> {
protected:
    QString path(const QString &name) const { return m_folder.filePath(name); }
    QStringList names() const { return namesIn(m_folder.path()); }
    Result<AtomicFile> create(const QString &name) const
    {
        return AtomicFile::create(path(name), GetParam());
    }
    /// Writes and commits; nothing where that went well.
    std::optional<QString> failureOfSaving(const QString &name, const QByteArray &bytes) const
    {
        Result<AtomicFile> file = create(name);
        if (!file)
            return file.error().description;
        Result<void> done = file->write(bytes);
        if (done)
            done = file->commit();
        return done ? std::nullopt : std::optional(done.error().description);
    }

private:
    QTemporaryDir m_folder;
};

} // namespace

TEST_P(AtomicFileBy, appearsWholeUnderItsNameWhenCommitted)
{
    Result<AtomicFile> file = create(u"shot.png"_s);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->write("first "));
    ASSERT_TRUE(file->write("second"));
    EXPECT_FALSE(names().contains(u"shot.png"_s));
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(names(), QStringList(u"shot.png"_s));
    EXPECT_EQ(contentsOf(path(u"shot.png"_s)), "first second");
}

TEST_P(AtomicFileBy, hasANameOnlyWhereUnnamedFilesAreNotUsed)
{
    const Result<AtomicFile> file = create(u"shot.png"_s);
    ASSERT_TRUE(file);
    if (GetParam() == Concealment::Unnamed) {
        EXPECT_EQ(names(), QStringList());
    } else {
        ASSERT_EQ(names().size(), 1);
        EXPECT_TRUE(names().first().startsWith(u'.'));
    }
}

TEST_P(AtomicFileBy, earlierFileIsWholeUntilTheNewOneReplacesIt)
{
    ASSERT_TRUE(placeFile(path(u"shot.png"_s), "earlier"));
    Result<AtomicFile> file = create(u"shot.png"_s);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->write("newer"));
    EXPECT_EQ(contentsOf(path(u"shot.png"_s)), "earlier");
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(contentsOf(path(u"shot.png"_s)), "newer");
    EXPECT_EQ(names(), QStringList(u"shot.png"_s));
}

TEST_P(AtomicFileBy, fileThatAppearsMeanwhileIsReplacedToo)
{
    Result<AtomicFile> file = create(u"shot.png"_s);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->write("newer"));
    ASSERT_TRUE(placeFile(path(u"shot.png"_s), "meanwhile"));
    ASSERT_TRUE(file->commit());
    EXPECT_EQ(contentsOf(path(u"shot.png"_s)), "newer");
    EXPECT_EQ(names(), QStringList(u"shot.png"_s));
}

TEST_P(AtomicFileBy, withoutACommitNothingRemains)
{
    ASSERT_TRUE(placeFile(path(u"earlier.png"_s), "earlier"));
    {
        Result<AtomicFile> fresh = create(u"shot.png"_s);
        Result<AtomicFile> replacing = create(u"earlier.png"_s);
        ASSERT_TRUE(fresh && replacing);
        ASSERT_TRUE(fresh->write("half") && replacing->write("half"));
    }
    EXPECT_EQ(names(), QStringList(u"earlier.png"_s));
    EXPECT_EQ(contentsOf(path(u"earlier.png"_s)), "earlier");
}

TEST_P(AtomicFileBy, movingHandsTheFileOver)
{
    Result<AtomicFile> first = create(u"first.png"_s);
    Result<AtomicFile> second = create(u"second.png"_s);
    ASSERT_TRUE(first && second);
    ASSERT_TRUE(first->write("picture"));
    *second = std::move(*first); // gives up second.png
    ASSERT_TRUE(second->commit());
    EXPECT_EQ(names(), QStringList(u"first.png"_s));
    EXPECT_EQ(contentsOf(path(u"first.png"_s)), "picture");
}

TEST_P(AtomicFileBy, secondCommitAndLaterWritesAreFailures)
{
    Result<AtomicFile> file = create(u"shot.png"_s);
    ASSERT_TRUE(file);
    ASSERT_TRUE(file->commit());
    EXPECT_FALSE(file->commit());
    EXPECT_FALSE(file->write("more"));
    EXPECT_EQ(contentsOf(path(u"shot.png"_s)), "");
    EXPECT_EQ(names(), QStringList(u"shot.png"_s));
}

TEST_P(AtomicFileBy, newFileHasThePermissionsOfTheUmask)
{
    for (const int mask : {022, 077, 0}) {
        const ScopedUmask umask(static_cast<mode_t>(mask));
        const QString name = QString::number(mask);
        ASSERT_EQ(failureOfSaving(name, "picture"), std::nullopt);
        EXPECT_EQ(permissionsOf(path(name)), 0666 & ~mask);
    }
}

TEST_P(AtomicFileBy, earlierFilesPermissionsAreKept)
{
    const ScopedUmask umask(022);
    for (const int mode : {0600, 0640, 0666, 0777}) {
        const QString name = QString::number(mode);
        ASSERT_TRUE(placeFile(path(name), "earlier"));
        ASSERT_EQ(::chmod(QFile::encodeName(path(name)).constData(), static_cast<mode_t>(mode)), 0);
        ASSERT_EQ(failureOfSaving(name, "picture"), std::nullopt);
        EXPECT_EQ(permissionsOf(path(name)), mode);
    }
}

TEST_P(AtomicFileBy, symbolicLinksAreFollowedToTheLastAndStay)
{
    ASSERT_TRUE(QDir(path({})).mkdir(u"elsewhere"_s));
    ASSERT_TRUE(placeFile(path(u"elsewhere/target.png"_s), "earlier"));
    ASSERT_TRUE(QFile::link(u"target.png"_s, path(u"elsewhere/middle.png"_s)));
    ASSERT_TRUE(QFile::link(path(u"elsewhere/middle.png"_s), path(u"link.png"_s)));
    ASSERT_EQ(failureOfSaving(u"link.png"_s, "picture"), std::nullopt);
    EXPECT_EQ(QFile::symLinkTarget(path(u"link.png"_s)), path(u"elsewhere/middle.png"_s));
    EXPECT_EQ(QFile::symLinkTarget(path(u"elsewhere/middle.png"_s)),
              path(u"elsewhere/target.png"_s));
    EXPECT_EQ(contentsOf(path(u"elsewhere/target.png"_s)), "picture");
    EXPECT_EQ(namesIn(path(u"elsewhere"_s)).size(), 2);
}

TEST_P(AtomicFileBy, linkToNothingGetsItsTarget)
{
    ASSERT_TRUE(QFile::link(u"later.png"_s, path(u"link.png"_s)));
    ASSERT_EQ(failureOfSaving(u"link.png"_s, "picture"), std::nullopt);
    EXPECT_EQ(names(), QStringList({u"later.png"_s, u"link.png"_s}));
    EXPECT_EQ(contentsOf(path(u"later.png"_s)), "picture");
}

TEST_P(AtomicFileBy, oddNamesAreTakenAsTheyAre)
{
    for (const QString &name : {u"a name with spaces.png"_s, u"two\nlines\t.png"_s, u"-rf"_s,
                                u"été 日本 🙂.png"_s, u"%s%n\\'\"$(x);*.png"_s, u"..."_s}) {
        ASSERT_EQ(failureOfSaving(name, "picture"), std::nullopt) << qPrintable(name);
        EXPECT_EQ(contentsOf(path(name)), "picture") << qPrintable(name);
    }
    EXPECT_EQ(names().size(), 6);
    ASSERT_EQ(failureOfSaving(QString(255, u'n'), "picture"), std::nullopt);
    EXPECT_NE(failureOfSaving(QString(256, u'n'), "picture"), std::nullopt);
    EXPECT_EQ(names().size(), 7);
}

TEST_P(AtomicFileBy, relativePathIsTakenFromTheWorkingFolder)
{
    const QString earlier = QDir::currentPath();
    ASSERT_TRUE(QDir::setCurrent(path({})));
    Result<AtomicFile> file = AtomicFile::create(u"shot.png"_s, GetParam());
    ASSERT_TRUE(QDir::setCurrent(earlier));
    ASSERT_TRUE(file && file->write("picture") && file->commit());
    EXPECT_EQ(contentsOf(path(u"shot.png"_s)), "picture");
}

INSTANTIATE_TEST_SUITE_P(Each, AtomicFileBy,
                         ::testing::Values(Concealment::Unnamed, Concealment::HiddenName),
                         [](const auto &instance) {
                             return instance.param == Concealment::Unnamed ? "NoName"
                                                                           : "AHiddenName";
                         });
