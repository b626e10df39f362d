#include "platform/portal/PictureFile.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace lumacap::portal {

using namespace Qt::StringLiterals;

namespace {

class PortalPictureFile : public testing::Test {
public:
    QString path(const QString &name = u"picture.png"_s) const { return folder.filePath(name); }
    static QString uri(const QString &path)
    {
        return QString::fromUtf8(QUrl::fromLocalFile(path).toEncoded());
    }
    static void savePicture(const QString &path, QSize size = {30, 20})
    {
        QImage picture(size, QImage::Format_RGB32);
        picture.fill(Qt::red);
        ASSERT_TRUE(picture.save(path, "png"));
    }
    static void write(const QString &path, const QByteArray &bytes)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(bytes), bytes.size());
    }
    static Result<void> anySize(QSize /*size*/) { return {}; }

    /// Why the file can't be opened or read; nothing when it can.
    static std::optional<QString> failureOf(const QString &uri)
    {
        auto file = PictureFile::open(uri, timespec{});
        if (!file)
            return file.error().description;
        const auto image = file->read(anySize);
        return image ? std::nullopt : std::optional(image.error().description);
    }

    QTemporaryDir folder;
};

TEST_F(PortalPictureFile, readsAndDeletesWhatWasWrittenSince)
{
    const timespec asked = fileClock();
    savePicture(path());
    auto file = PictureFile::open(uri(path()), asked);
    ASSERT_TRUE(file);
    const auto image = file->read(anySize);
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), QSize(30, 20));
    EXPECT_EQ(image->pixel(3, 3), qRgb(255, 0, 0));
    file->discard();
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(PortalPictureFile, keepsWhatWasThereBefore)
{
    savePicture(path());
    timespec later = fileClock();
    later.tv_sec += 10;
    const auto file = PictureFile::open(uri(path()), later);
    ASSERT_TRUE(file);
    file->discard();
    EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(PortalPictureFile, keepsWhatTookTheFilesPlace)
{
    const timespec asked = fileClock();
    savePicture(path());
    const auto file = PictureFile::open(uri(path()), asked);
    ASSERT_TRUE(file);
    savePicture(path(u"another.png"_s));
    ASSERT_EQ(rename(qPrintable(path(u"another.png"_s)), qPrintable(path())), 0);
    file->discard();
    EXPECT_TRUE(QFile::exists(path()));
}

TEST_F(PortalPictureFile, deletesWhatIsNoPictureToo)
{
    const timespec asked = fileClock();
    write(path(), "nothing of the kind");
    auto file = PictureFile::open(uri(path()), asked);
    ASSERT_TRUE(file);
    EXPECT_FALSE(file->read(anySize));
    file->discard();
    EXPECT_FALSE(QFile::exists(path()));
}

TEST_F(PortalPictureFile, understandsNamesWithAnyBytes)
{
    for (const QString &name : {u"Capture d’écran – 1 100%.png"_s, u"a b#c?d.png"_s}) {
        savePicture(path(name));
        EXPECT_EQ(failureOf(uri(path(name))), std::nullopt) << qPrintable(name);
    }
    const QByteArray latin = QFile::encodeName(folder.path()) + "/\xE9.png";
    savePicture(path());
    ASSERT_EQ(rename(qPrintable(path()), latin.constData()), 0);
    EXPECT_EQ(failureOf(u"file://"_s + folder.path() + u"/%E9.png"_s), std::nullopt);
    EXPECT_EQ(unlink(latin.constData()), 0);
}

TEST_F(PortalPictureFile, namesFilesOfThisMachineOnly)
{
    EXPECT_EQ(pathOf(u"file:///tmp/a%20b"_s), QByteArray("/tmp/a b"));
    EXPECT_EQ(pathOf(u"file://localhost/tmp/a"_s), QByteArray("/tmp/a"));
    EXPECT_EQ(pathOf(u"file:/tmp/a"_s), QByteArray("/tmp/a"));
    for (const QString &other :
         {u"https://example.org/a.png"_s, u"file://elsewhere/a.png"_s, u"file:a.png"_s,
          u"/tmp/a.png"_s, u""_s, u"file:///tmp/a%00b"_s, u"file:////server/a"_s})
        EXPECT_EQ(pathOf(other), std::nullopt) << qPrintable(other);
}

TEST_F(PortalPictureFile, failsInWordsForWhatIsNoFile)
{
    EXPECT_EQ(failureOf(u"https://example.org/a.png"_s), u"the desktop's portal names no file"_s);
    EXPECT_EQ(
        failureOf(uri(path())),
        u"the desktop's portal names a file that can't be read (No such file or directory)"_s);
    ASSERT_EQ(mkfifo(qPrintable(path(u"pipe"_s)), 0600), 0);
    for (const QString &name : {u"pipe"_s, u"."_s})
        EXPECT_EQ(failureOf(uri(path(name))),
                  u"the desktop's portal names what is no file of this user"_s);
    savePicture(path());
    ASSERT_TRUE(QFile::link(path(), path(u"link"_s)));
    EXPECT_TRUE(failureOf(uri(path(u"link"_s))));
}

TEST_F(PortalPictureFile, failsInWordsForWhatIsNoPicture)
{
    for (const QByteArray &rubbish : {QByteArray(), QByteArray("x"), QByteArray(5000, 'x')}) {
        write(path(), rubbish);
        EXPECT_EQ(failureOf(uri(path())),
                  u"the desktop's portal names a file that is no whole picture"_s);
    }
    savePicture(path(), {300, 200});
    QFile file(path());
    ASSERT_TRUE(file.resize(file.size() / 2));
    EXPECT_EQ(failureOf(uri(path())),
              u"the desktop's portal names a file that is no whole picture"_s);
}

TEST_F(PortalPictureFile, noticesAChangedByte)
{
    savePicture(path(), {300, 200});
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.seek(file.size() / 2));
    char byte = 0;
    ASSERT_TRUE(file.getChar(&byte));
    ASSERT_TRUE(file.seek(file.size() / 2));
    ASSERT_TRUE(file.putChar(static_cast<char>(byte ^ 1)));
    file.close();
    EXPECT_EQ(failureOf(uri(path())),
              u"the desktop's portal names a file that is no whole picture"_s);
}

TEST_F(PortalPictureFile, readsNoFileTooLargeForAPicture)
{
    write(path(), QByteArray());
    ASSERT_EQ(truncate(qPrintable(path()), off_t{1} << 40), 0);
    EXPECT_EQ(failureOf(uri(path())),
              u"the desktop's portal names a file too large for a picture"_s);
}

TEST_F(PortalPictureFile, decodesNothingOfAnotherSizeThanWanted)
{
    savePicture(path());
    auto file = PictureFile::open(uri(path()), timespec{});
    ASSERT_TRUE(file);
    QSize told;
    const auto image = file->read([&told](QSize size) -> Result<void> {
        told = size;
        return failure(u"too small"_s);
    });
    EXPECT_EQ(told, QSize(30, 20));
    ASSERT_FALSE(image);
    EXPECT_EQ(image.error().description, u"too small"_s);
}

} // namespace

} // namespace lumacap::portal
