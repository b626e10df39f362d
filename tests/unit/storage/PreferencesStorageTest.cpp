#include "preferences/storage/PreferencesStorage.h"

#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"

#include <QStandardPaths>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

constexpr KeyCombo controlShiftOne{18, 0x1200};
constexpr KeyCombo controlShiftTwo{19, 0x1200};

struct PreferencesStorageTest : testing::Test {
    FakeDefaultsStore defaults;
    FakeLoginItem loginItem;
    PreferencesStorage preferences{defaults, loginItem};

    void store(const QString &key, const DefaultsValue &value)
    {
        ASSERT_TRUE(defaults.set(key, value).has_value());
    }
};

} // namespace

TEST_F(PreferencesStorageTest, hasTheDesignedDefaultsWhenNothingIsStored)
{
    EXPECT_EQ(preferences.fullScreenHotkey(), controlShiftOne);
    EXPECT_EQ(preferences.fullScreenHotkey().displayString(), u"⌃⇧1"_s);
    EXPECT_EQ(preferences.selectionHotkey(), controlShiftTwo);
    EXPECT_EQ(preferences.selectionHotkey().displayString(), u"⌃⇧2"_s);
    EXPECT_TRUE(preferences.copyToClipboard());
    EXPECT_FALSE(preferences.defaults().boolean(u"saveToFile"_s));
    EXPECT_EQ(preferences.saveDirectory(),
              QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
    EXPECT_EQ(preferences.imageFormat(), ImageFormat::Png);
    EXPECT_FALSE(preferences.defaults().boolean(u"autoConfirmSelection"_s));
    EXPECT_FALSE(preferences.defaults().boolean(u"defaultShowFrame"_s));
    EXPECT_EQ(preferences.defaults().string(u"defaultFrameBackground"_s), std::nullopt);
    EXPECT_FALSE(preferences.launchAtLogin());
}

TEST_F(PreferencesStorageTest, readsAShortcutThatIsStored)
{
    store(u"fullScreenHotkey"_s, QByteArray(R"({"keyCode":0,"modifiers":256})"));
    store(u"selectionHotkey"_s, QByteArray(R"({"modifiers":2048,"keyCode":1})"));

    EXPECT_EQ(preferences.fullScreenHotkey(), (KeyCombo{0, 256}));
    EXPECT_EQ(preferences.selectionHotkey(), (KeyCombo{1, 2048}));
}

TEST_F(PreferencesStorageTest, readsADamagedShortcutAsTheDefaultOne)
{
    for (const char *bytes : {R"({"keyCode":18})", "not JSON", "\xff\x00\x80", ""}) {
        store(u"fullScreenHotkey"_s, QByteArray(bytes));
        store(u"selectionHotkey"_s, QByteArray(bytes));
        EXPECT_EQ(preferences.fullScreenHotkey(), controlShiftOne) << bytes;
        EXPECT_EQ(preferences.selectionHotkey(), controlShiftTwo) << bytes;
        EXPECT_EQ(defaults.data(u"fullScreenHotkey"_s), QByteArray(bytes)) << "it stays stored";
    }
}

TEST_F(PreferencesStorageTest, readsAShortcutStoredAsTextAsTheDefaultOne)
{
    store(u"fullScreenHotkey"_s, QString(uR"({"keyCode":0,"modifiers":256})"_s));

    EXPECT_EQ(preferences.fullScreenHotkey(), controlShiftOne);
}

TEST_F(PreferencesStorageTest, readsBackAShortcutThatItWrote)
{
    preferences.setFullScreenHotkey({122, 4096});
    preferences.setSelectionHotkey({50, 0});

    EXPECT_EQ(preferences.fullScreenHotkey(), (KeyCombo{122, 4096}));
    EXPECT_EQ(preferences.selectionHotkey(), (KeyCombo{50, 0}));
    EXPECT_EQ(defaults.data(u"selectionHotkey"_s), QByteArray(R"({"keyCode":50,"modifiers":0})"));
}

TEST_F(PreferencesStorageTest, keepsTheEarlierShortcutWhenTheStoreRefusesTheNewOne)
{
    preferences.setFullScreenHotkey({122, 4096});
    defaults.isReadOnly = true;
    preferences.setFullScreenHotkey({0, 256});

    EXPECT_EQ(preferences.fullScreenHotkey(), (KeyCombo{122, 4096}));
}

TEST_F(PreferencesStorageTest, copiesToTheClipboardOnlyWhereAnythingStoredIsTrue)
{
    store(u"copyToClipboard"_s, false);
    EXPECT_FALSE(preferences.copyToClipboard());
    store(u"copyToClipboard"_s, true);
    EXPECT_TRUE(preferences.copyToClipboard());
    store(u"copyToClipboard"_s, QByteArray("true"));
    EXPECT_FALSE(preferences.copyToClipboard()) << "present, but no boolean";
}

TEST_F(PreferencesStorageTest, readsEveryUnknownFormatAsPng)
{
    store(u"imageFormat"_s, u"jpeg"_s);
    EXPECT_EQ(preferences.imageFormat(), ImageFormat::Jpeg);
    store(u"imageFormat"_s, u"tiff"_s);
    EXPECT_EQ(preferences.imageFormat(), ImageFormat::Tiff);
    for (const QString &text : {u"JPEG"_s, u"png"_s, u""_s, u"webp"_s}) {
        store(u"imageFormat"_s, text);
        EXPECT_EQ(preferences.imageFormat(), ImageFormat::Png) << text.toStdString();
    }
}

TEST_F(PreferencesStorageTest, givesTheStoredFolderWithoutLookingWhetherItExists)
{
    store(u"saveDirectory"_s, u"/no/such/folder"_s);

    EXPECT_EQ(preferences.saveDirectory(), u"/no/such/folder"_s);
}

TEST_F(PreferencesStorageTest, registersAndUnregistersTheLoginItem)
{
    preferences.setLaunchAtLogin(true);
    EXPECT_TRUE(preferences.launchAtLogin());
    preferences.setLaunchAtLogin(false);
    EXPECT_FALSE(preferences.launchAtLogin());
}

TEST_F(PreferencesStorageTest, saysOneLineWhenTheLoginItemCannotBeChanged)
{
    loginItem.refusal = Failure{u"the folder is read-only"_s};

    testing::internal::CaptureStdout();
    preferences.setLaunchAtLogin(true);

    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Launch at login error: the folder is read-only\n");
    EXPECT_FALSE(preferences.launchAtLogin());
}

TEST_F(PreferencesStorageTest, sharesOneInstanceOverTheNamedServices)
{
    PreferencesStorage::useServices(defaults, loginItem);
    store(u"imageFormat"_s, u"tiff"_s);

    EXPECT_EQ(&PreferencesStorage::shared(), &PreferencesStorage::shared());
    EXPECT_EQ(PreferencesStorage::shared().imageFormat(), ImageFormat::Tiff);
}

TEST(PreferencesStorageDeathTest, stopsWhenTheSharedSettingsAreUsedBeforeTheirServicesAreNamed)
{
    EXPECT_DEATH(PreferencesStorage::shared(), "services are named");
}

} // namespace lumacap
