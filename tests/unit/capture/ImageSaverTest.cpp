#include "capture/ImageSaver.h"

#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"
#include "fakes/FakePasteboard.h"
#include "fakes/FakeSoundPlayer.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QColorSpace>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QLocale>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace lumacap {

namespace {

const QDateTime moment(QDate(2024, 3, 7), QTime(14, 5, 9));

QImage filled(Qt::GlobalColor colour)
{
    QImage image(12, 8, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

/// The pixels alone: a file may also name its colour space.
QImage pixelsOf(QImage image)
{
    image.setColorSpace(QColorSpace());
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

struct ImageSaverTest : testing::Test {
    QTemporaryDir folder;
    QStringList journal;
    FakeDefaultsStore defaults;
    FakeLoginItem loginItem;
    PreferencesStorage preferences{defaults, loginItem};
    FakePasteboard pasteboard{journal};
    FakeSoundPlayer soundPlayer{journal};
    ImageSaver saver{pasteboard, soundPlayer, preferences, [] { return moment; }};

    ImageSaverTest() { store(u"saveDirectory"_s, folder.path()); }

    void store(const QString &key, const DefaultsValue &value)
    {
        ASSERT_TRUE(defaults.set(key, value).has_value());
    }
    QStringList files() const
    {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden | QDir::System);
    }
};

} // namespace

TEST(CaptureFileName, isTheLocalDateAndTimeBetweenTheNameAndTheExtension)
{
    const QLocale english(QLocale::English);

    EXPECT_EQ(captureFileName(moment, ImageFormat::Png, english),
              u"Lumacap_2024-03-07_14-05-09.png"_s);
    EXPECT_EQ(captureFileName(moment, ImageFormat::Tiff, english),
              u"Lumacap_2024-03-07_14-05-09.tiff"_s);
}

TEST(CaptureFileName, endsInTheFourLettersOfJpeg)
{
    EXPECT_TRUE(captureFileName(moment, ImageFormat::Jpeg, QLocale::c()).endsWith(u".jpeg"));
}

TEST(CaptureFileName, hasTheLocalesDigitsInTheGregorianCalendar)
{
    const QLocale egyptian(QLocale::Arabic, QLocale::Egypt);
    const QLocale persian(QLocale::Persian, QLocale::Iran);

    EXPECT_EQ(captureFileName(moment, ImageFormat::Png, egyptian),
              u"Lumacap_٢٠٢٤-٠٣-٠٧_١٤-٠٥-٠٩.png"_s);
    EXPECT_EQ(captureFileName(moment, ImageFormat::Png, persian),
              u"Lumacap_۲۰۲۴-۰۳-۰۷_۱۴-۰۵-۰۹.png"_s);
}

TEST_F(ImageSaverTest, copiesAndPlaysTheSoundOnlyWhenNothingIsStored)
{
    saver.save(filled(Qt::red));

    EXPECT_THAT(journal, ElementsAre(u"clear"_s, u"write"_s, u"sound"_s));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ImageSaverTest, writesThePasteboardBeforeTheFileAndTheFileBeforeTheSound)
{
    store(u"saveToFile"_s, true);
    QStringList filesAtTheSound;
    soundPlayer.beforePlaying = [&] { filesAtTheSound = files(); };

    saver.save(filled(Qt::red));

    EXPECT_THAT(journal, ElementsAre(u"clear"_s, u"write"_s, u"sound"_s));
    EXPECT_THAT(filesAtTheSound, ElementsAre(u"Lumacap_2024-03-07_14-05-09.png"_s));
}

TEST_F(ImageSaverTest, isDoneInTwoHalves)
{
    store(u"saveToFile"_s, true);

    saver.copy(filled(Qt::red));
    EXPECT_THAT(journal, ElementsAre(u"clear"_s, u"write"_s));
    EXPECT_THAT(files(), IsEmpty());

    saver.store(filled(Qt::red));
    EXPECT_THAT(journal, ElementsAre(u"clear"_s, u"write"_s, u"sound"_s));
    EXPECT_THAT(files(), ElementsAre(u"Lumacap_2024-03-07_14-05-09.png"_s));
}

TEST_F(ImageSaverTest, offersThePictureItself)
{
    saver.save(filled(Qt::red));

    const QImage offered = QImage::fromData(pasteboard.item->bytes("image/png"));
    EXPECT_EQ(pixelsOf(offered), filled(Qt::red));
}

TEST_F(ImageSaverTest, writesTheFileInTheChosenFormat)
{
    store(u"saveToFile"_s, true);
    store(u"copyToClipboard"_s, false);
    for (const QString &format : {u"png"_s, u"jpeg"_s, u"tiff"_s}) {
        store(u"imageFormat"_s, format);
        saver.save(filled(Qt::blue));

        QFile file(folder.filePath(u"Lumacap_2024-03-07_14-05-09."_s + format));
        ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << format.toStdString();
        const QByteArray begin = file.read(4);
        const bool isOfFormat = format == "png"_L1 ? begin == "\x89PNG"
            : format == "jpeg"_L1                  ? begin.startsWith("\xff\xd8\xff")
                                                   : begin.startsWith("II*");
        EXPECT_TRUE(isOfFormat) << format.toStdString();
    }
    EXPECT_THAT(journal, ElementsAre(u"sound"_s, u"sound"_s, u"sound"_s));
}

TEST_F(ImageSaverTest, replacesTheFileOfACaptureInTheSameSecond)
{
    store(u"saveToFile"_s, true);
    saver.save(filled(Qt::red));
    saver.save(filled(Qt::green));

    ASSERT_EQ(files().size(), 1);
    const QImage kept(folder.filePath(files().first()));
    EXPECT_EQ(pixelsOf(kept), filled(Qt::green));
}

TEST_F(ImageSaverTest, playsNoSoundWhenTheFileCannotBeBegunButHasFilledThePasteboard)
{
    store(u"saveToFile"_s, true);
    store(u"saveDirectory"_s, folder.filePath(u"missing"_s));

    saver.save(filled(Qt::red));

    EXPECT_THAT(journal, ElementsAre(u"clear"_s, u"write"_s));
    EXPECT_NE(pasteboard.item, nullptr);
}

TEST_F(ImageSaverTest, playsTheSoundWhenTheFileFailsAfterItWasBegun)
{
    store(u"saveToFile"_s, true);

    saver.save(QImage()); // begun, but no format has a file for an empty picture

    EXPECT_EQ(journal.last(), u"sound"_s);
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ImageSaverTest, playsTheSoundThoughNothingIsStoredWhenBothOutputsAreOff)
{
    store(u"copyToClipboard"_s, false);

    saver.save(filled(Qt::red));

    EXPECT_THAT(journal, ElementsAre(u"sound"_s));
    EXPECT_THAT(files(), IsEmpty());
}

TEST_F(ImageSaverTest, readsTheSettingsAtEachSave)
{
    saver.save(filled(Qt::red));
    store(u"copyToClipboard"_s, false);
    store(u"saveToFile"_s, true);
    journal.clear();

    saver.save(filled(Qt::red));

    EXPECT_THAT(journal, ElementsAre(u"sound"_s));
    EXPECT_EQ(files().size(), 1);
}

TEST_F(ImageSaverTest, shrinksWhatIsOnThePasteboardAndNothingThatHasLeftIt)
{
    const QImage picture = filled(Qt::red);
    saver.shrink();
    saver.save(picture);
    ASSERT_FALSE(picture.isDetached());
    saver.shrink();
    EXPECT_TRUE(picture.isDetached());
    EXPECT_EQ(pixelsOf(QImage::fromData(pasteboard.item->bytes("image/png"))), pixelsOf(picture));
    pasteboard.clearContents();
    saver.shrink();
}

} // namespace lumacap
