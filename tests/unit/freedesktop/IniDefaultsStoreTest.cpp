#include "platform/freedesktop/IniDefaultsStore.h"

#include "NoRoomForFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <ostream>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using lumacap::freedesktop::IniDefaultsStore;
using lumacap::tests::NoRoomForFiles;

namespace {

class IniDefaultsStoreTest : public testing::Test {
protected:
    QString path() const { return m_home.filePath(u"Lumacap/Lumacap.conf"_s); }
    QString folder() const { return m_home.filePath(u"Lumacap"_s); }

    void write(const QByteArray &content) const
    {
        QDir{}.mkpath(folder());
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{"no such file"};
    }

    QStringList everythingIn(const QString &folder) const
    {
        return QDir{folder}.entryList(QDir::AllEntries | QDir::Hidden | QDir::System
                                      | QDir::NoDotAndDotDot);
    }

    QTemporaryDir m_home;
    IniDefaultsStore m_store{path()};
};

TEST_F(IniDefaultsStoreTest, readingAMissingFileCreatesNothing)
{
    EXPECT_FALSE(m_store.holds(u"Folder"_s));
    EXPECT_FALSE(m_store.boolean(u"PlaySound"_s));
    EXPECT_EQ(m_store.string(u"Folder"_s), std::nullopt);
    EXPECT_EQ(m_store.data(u"HotKey"_s), std::nullopt);
    EXPECT_EQ(everythingIn(m_home.path()), QStringList{});
}

TEST_F(IniDefaultsStoreTest, readingLeavesTheFileAndItsFolderAsTheyWere)
{
    write("[General]\n; mine\nFolder=/a\n");
    const QFileInfo before(path());
    const QDateTime time = before.lastModified();
    EXPECT_EQ(m_store.string(u"Folder"_s), u"/a"_s);
    EXPECT_EQ(contentOf(path()), "[General]\n; mine\nFolder=/a\n");
    EXPECT_EQ(QFileInfo{path()}.lastModified(), time);
    EXPECT_EQ(everythingIn(folder()), QStringList{u"Lumacap.conf"_s});
}

TEST_F(IniDefaultsStoreTest, everyTypeComesBackAsItWasStored)
{
    const QByteArray bytes("{\"keyCode\":20}\0\xff,;\"=", 20);
    const QString text = uR"(/home/zoë/a,b; "c"\d %20 =)"_s;
    ASSERT_TRUE(m_store.set(u"Flag"_s, true));
    ASSERT_TRUE(m_store.set(u"Off"_s, false));
    ASSERT_TRUE(m_store.set(u"Text"_s, text));
    ASSERT_TRUE(m_store.set(u"Bytes"_s, bytes));
    const IniDefaultsStore later(path());
    EXPECT_TRUE(later.boolean(u"Flag"_s));
    EXPECT_FALSE(later.boolean(u"Off"_s));
    EXPECT_TRUE(later.holds(u"Off"_s));
    EXPECT_EQ(later.string(u"Text"_s), text);
    EXPECT_EQ(later.data(u"Bytes"_s), bytes);
}

TEST_F(IniDefaultsStoreTest, valuesAreInTheGroupGeneralInPlainWords)
{
    ASSERT_TRUE(m_store.set(u"PlaySound"_s, true));
    ASSERT_TRUE(m_store.set(u"HotKey"_s, QByteArray{"{}"}));
    EXPECT_EQ(contentOf(path()), "[General]\nHotKey=@ByteArray({})\nPlaySound=true\n");
}

TEST_F(IniDefaultsStoreTest, anEditOfTheSameLengthIsSeenAtOnce)
{
    // Many times, so that some edits fall into the same tick of the file system's clock.
    for (int i = 0; i < 300; ++i) {
        const QString folder = u"/folder/%1"_s.arg(i % 10);
        write("[General]\nFolder=" + folder.toUtf8() + "\n");
        ASSERT_EQ(m_store.string(u"Folder"_s), folder);
    }
}

TEST_F(IniDefaultsStoreTest, anEditAfterASetIsSeenAtOnce)
{
    ASSERT_TRUE(m_store.set(u"Letter"_s, u"a"_s));
    write("[General]\nLetter=b\n");
    EXPECT_EQ(m_store.string(u"Letter"_s), u"b"_s);
}

TEST_F(IniDefaultsStoreTest, aDamagedFileIsDamagedAtEveryReading)
{
    write("[General]\nFolder=/a\nnonsense\n");
    for (int reading = 0; reading < 3; ++reading) {
        EXPECT_FALSE(m_store.holds(u"Folder"_s));
        EXPECT_EQ(m_store.string(u"Folder"_s), std::nullopt);
    }
    EXPECT_EQ(everythingIn(folder()), QStringList{u"Lumacap.conf"_s});
}

TEST_F(IniDefaultsStoreTest, aDamagedFileIsKeptBesideTheNewOne)
{
    write("[General]\nFolder=/a\nnonsense\n");
    ASSERT_TRUE(m_store.set(u"PlaySound"_s, true));
    EXPECT_EQ(contentOf(path()), "[General]\nPlaySound=true\n");
    EXPECT_EQ(contentOf(path() + u".damaged"_s), "[General]\nFolder=/a\nnonsense\n");
    EXPECT_EQ(everythingIn(folder()).size(), 2);
}

TEST_F(IniDefaultsStoreTest, aDamagedFileStaysWhereItCanNotBeKept)
{
    write("nonsense\n");
    ASSERT_TRUE(QDir{}.mkdir(path() + u".damaged"_s));
    EXPECT_FALSE(m_store.set(u"PlaySound"_s, true));
    EXPECT_EQ(contentOf(path()), "nonsense\n");
    EXPECT_EQ(everythingIn(folder()).size(), 2);
}

TEST_F(IniDefaultsStoreTest, aFolderInTheFilesPlaceIsEmptyAndStays)
{
    ASSERT_TRUE(QDir{}.mkpath(path()));
    EXPECT_FALSE(m_store.holds(u"Folder"_s));
    const auto stored = m_store.set(u"Folder"_s, u"/a"_s);
    ASSERT_FALSE(stored);
    EXPECT_TRUE(stored.error().description.contains(u"not a file"_s));
    EXPECT_TRUE(QFileInfo{path()}.isDir());
    EXPECT_EQ(everythingIn(folder()), QStringList{u"Lumacap.conf"_s});
}

TEST_F(IniDefaultsStoreTest, aPipeInTheFilesPlaceHoldsNobodyUp)
{
    ASSERT_TRUE(QDir{}.mkpath(folder()));
    ASSERT_EQ(mkfifo(QFile::encodeName(path()).constData(), 0600), 0);
    EXPECT_FALSE(m_store.holds(u"Folder"_s));
    EXPECT_FALSE(m_store.set(u"Folder"_s, u"/a"_s));
}

TEST_F(IniDefaultsStoreTest, aPathThroughAFileIsEmptyAndCanNotBeWritten)
{
    QFile obstacle(folder());
    ASSERT_TRUE(obstacle.open(QIODevice::WriteOnly));
    EXPECT_FALSE(m_store.holds(u"Folder"_s));
    EXPECT_FALSE(m_store.set(u"Folder"_s, u"/a"_s));
    EXPECT_TRUE(QFileInfo{folder()}.isFile());
}

TEST_F(IniDefaultsStoreTest, aFailedSetChangesNothingNowOrLater)
{
    write("[General]\nFolder=/a\n");
    {
        const NoRoomForFiles full;
        EXPECT_FALSE(m_store.set(u"Folder"_s, u"/b"_s));
    }
    EXPECT_EQ(m_store.string(u"Folder"_s), u"/a"_s);
    EXPECT_EQ(contentOf(path()), "[General]\nFolder=/a\n");
    ASSERT_TRUE(m_store.set(u"Other"_s, u"c"_s));
    EXPECT_EQ(m_store.string(u"Folder"_s), u"/a"_s);
    EXPECT_EQ(everythingIn(folder()), QStringList{u"Lumacap.conf"_s});
}

TEST_F(IniDefaultsStoreTest, aFailedSetLeavesADamagedFileInItsPlace)
{
    write("nonsense\n");
    {
        const NoRoomForFiles full;
        EXPECT_FALSE(m_store.set(u"Folder"_s, u"/b"_s));
    }
    EXPECT_EQ(contentOf(path()), "nonsense\n");
    EXPECT_EQ(everythingIn(folder()), QStringList{u"Lumacap.conf"_s});
}

TEST_F(IniDefaultsStoreTest, keysOfOthersAreKept)
{
    write("[General]\nUnknown=7\nList=a, b\nFolder=/a\n\n[Other]\nKey=value\n");
    ASSERT_TRUE(m_store.set(u"Folder"_s, u"/b"_s));
    EXPECT_EQ(m_store.string(u"Unknown"_s), u"7"_s);
    EXPECT_EQ(m_store.string(u"List"_s), u"a,b"_s);
    EXPECT_EQ(m_store.string(u"Other/Key"_s), u"value"_s);
    EXPECT_EQ(m_store.string(u"Folder"_s), u"/b"_s);
}

TEST_F(IniDefaultsStoreTest, aSetStartsFromWhatAnotherProgramWrote)
{
    IniDefaultsStore other(path());
    ASSERT_TRUE(m_store.set(u"First"_s, u"1"_s));
    ASSERT_TRUE(other.set(u"Second"_s, u"2"_s));
    ASSERT_TRUE(m_store.set(u"Third"_s, u"3"_s));
    EXPECT_EQ(contentOf(path()), "[General]\nFirst=1\nSecond=2\nThird=3\n");
}

TEST_F(IniDefaultsStoreTest, theFolderIsForTheUserAlone)
{
    ASSERT_TRUE(m_store.set(u"Folder"_s, u"/a"_s));
    struct stat folderStatus{};
    ASSERT_EQ(stat(QFile::encodeName(folder()).constData(), &folderStatus), 0);
    EXPECT_EQ(folderStatus.st_mode & 0777U, 0700U);
}

TEST_F(IniDefaultsStoreTest, theFilesPermissionsAreKept)
{
    write("[General]\nFolder=/a\n");
    ASSERT_EQ(chmod(QFile::encodeName(path()).constData(), 0640), 0);
    ASSERT_TRUE(m_store.set(u"Folder"_s, u"/b"_s));
    struct stat status{};
    ASSERT_EQ(stat(QFile::encodeName(path()).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0640U);
}

TEST_F(IniDefaultsStoreTest, theTargetOfASymbolicLinkIsReplacedAndTheLinkStays)
{
    ASSERT_TRUE(QDir{}.mkpath(folder()));
    const QString target = m_home.filePath(u"dotfiles/lumacap.ini"_s);
    ASSERT_TRUE(QFile::link(u"../dotfiles/lumacap.ini"_s, path()));
    for (const auto &text : {u"new"_s, u"changed"_s}) {
        ASSERT_TRUE(m_store.set(u"Folder"_s, text));
        EXPECT_TRUE(QFileInfo{path()}.isSymLink());
        EXPECT_EQ(contentOf(target), "[General]\nFolder=" + text.toUtf8() + "\n");
        EXPECT_EQ(m_store.string(u"Folder"_s), text);
    }
}

TEST_F(IniDefaultsStoreTest, aLinkToItselfIsAFailure)
{
    ASSERT_TRUE(QDir{}.mkpath(folder()));
    ASSERT_TRUE(QFile::link(path(), path()));
    EXPECT_FALSE(m_store.holds(u"Folder"_s));
    EXPECT_FALSE(m_store.set(u"Folder"_s, u"/a"_s));
}

struct HandEdit {
    const char *name;
    QByteArray value;
    bool boolean;
    std::optional<QString> string;
    std::optional<QByteArray> data;

    friend std::ostream &operator<<(std::ostream &out, const HandEdit &shown)
    {
        return out << shown.name;
    }
};

class HandEditTest : public IniDefaultsStoreTest, public testing::WithParamInterface<HandEdit> { };

TEST_P(HandEditTest, isReadAsItIsMeant)
{
    const HandEdit &edit = GetParam();
    write("[General]\nKey=" + edit.value + "\n");
    EXPECT_TRUE(m_store.holds(u"Key"_s));
    EXPECT_EQ(m_store.boolean(u"Key"_s), edit.boolean);
    EXPECT_EQ(m_store.string(u"Key"_s), edit.string);
    EXPECT_EQ(m_store.data(u"Key"_s), edit.data);
}

INSTANTIATE_TEST_SUITE_P(
    Values, HandEditTest,
    testing::Values(
        HandEdit{"trueInCapitals", "TRUE", true, u"TRUE"_s, {}},
        HandEdit{"yes", "Yes", true, u"Yes"_s, {}}, HandEdit{"one", "1", true, u"1"_s, {}},
        HandEdit{"no", "no", false, u"no"_s, {}}, HandEdit{"two", "2", false, u"2"_s, {}},
        HandEdit{"on", "on", false, u"on"_s, {}}, HandEdit{"nothing", "", false, u""_s, {}},
        HandEdit{"commas", "/a,b,c", false, u"/a,b,c"_s, {}},
        HandEdit{"quotedCommas", "\"/a, b\"", false, u"/a, b"_s, {}},
        HandEdit{"accents", "/Bilder/Zo\xc3\xab", false, u"/Bilder/Zoë"_s, {}},
        HandEdit{"bytes", "@ByteArray({\\\"a\\\":1})", false, {}, QByteArray{"{\"a\":1}"}},
        HandEdit{"bytesThatSayTrue", "@ByteArray(true)", false, {}, QByteArray{"true"}},
        HandEdit{"otherVariant", "@Size(1 2)", false, {}, {}}),
    [](const auto &instance) { return std::string{instance.param.name}; });

TEST_F(IniDefaultsStoreTest, countsAFileTooLargeForSettingsAsEmpty)
{
    write("[General]\nsaveToFile=true\n" + QByteArray(1 << 20, '\n'));
    EXPECT_FALSE(m_store.holds(u"saveToFile"_s));
}

} // namespace
