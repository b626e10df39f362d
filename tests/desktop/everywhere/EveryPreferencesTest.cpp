#include "everywhere/EverywhereFixture.h"
#include "harness/WaitFor.h"

#include <QFile>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

class EveryPreferencesTest : public EverywhereFixture {
protected:
    void openWindow()
    {
        startAgent();
        ASSERT_TRUE(agent().activate(u"preferences"_s));
        ASSERT_TRUE(comes(u"Lancer au demarrage"_s));
        awaitKeyboard();
    }

    bool comes(const QString &name)
    {
        return waitFor([&] { return controls().shows(name); });
    }

    bool comesToBeStored(const QString &key, const QString &value)
    {
        return waitFor([&] { return storedSetting(desktop(), key) == value; });
    }

    void tabTo(const QString &name)
    {
        for (int presses = 0; presses < 30; ++presses) {
            const QString before = controls().focused();
            if (before == name)
                return;
            hands().press({evdev::tab});
            ASSERT_TRUE(waitFor([&] { return controls().focused() != before; }));
        }
        FAIL() << name.toStdString() << " is not reached";
    }
};

TEST_P(EveryPreferencesTest, aSwitchIsUsedByKeyboard)
{
    openWindow();
    tabTo(u"Validation auto"_s);
    hands().press({evdev::space});
    EXPECT_TRUE(comesToBeStored(u"autoConfirmSelection"_s, u"true"_s));
}

TEST_P(EveryPreferencesTest, aRecordedShortcutTakesPicturesAndTheEarlierOneDoesNot)
{
    openWindow();
    tabTo(u"Plein ecran"_s);
    hands().press({evdev::space});
    ASSERT_TRUE(comes(u"Appuyez sur un raccourci..."_s));

    hands().press({evdev::control, evdev::alt, evdev::letterF});
    ASSERT_TRUE(comes(u"⌃⌥F"_s));
    EXPECT_TRUE(files().isEmpty());

    // Live a little after it is shown: pressed until it tells. A press that was only slow would
    // bring a second picture, when none is expected any more.
    ASSERT_TRUE(waitFor([this] {
        hands().press({evdev::control, evdev::alt, evdev::letterF});
        return waitFor([this] { return !files().isEmpty(); }, std::chrono::seconds(6));
    }));
    for (const QString &file : files())
        ASSERT_TRUE(QFile::remove(file));

    hands().press({evdev::control, evdev::shift, evdev::one});
    // Requests are served in turn: a picture would be there before the overlay is.
    openOverlay();
    EXPECT_TRUE(files().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(On, EveryPreferencesTest, testing::ValuesIn(everyDesktop()),
                         [](const auto &make) { return make.param.name; });

} // namespace
} // namespace lumacap::harness
