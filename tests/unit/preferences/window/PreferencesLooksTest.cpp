#include "Preferences.h"

#include "graphics/ColorMixing.h"
#include "preferences/window/PrefsSection.h"

#include <QPalette>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

const QColor windowColor(240, 240, 240);
const QColor textColor(20, 30, 40);
const QColor accentColor(0, 100, 200);

/// Whether the colours differ by 3 of 255 at most in each channel.
testing::AssertionResult areAlike(const QColor &color, const QColor &expected)
{
    const auto differ = [](int one, int other) { return std::abs(one - other) > 3; };
    if (differ(color.red(), expected.red()) || differ(color.green(), expected.green())
        || differ(color.blue(), expected.blue()))
        return testing::AssertionFailure()
            << color.name().toStdString() << " is not " << expected.name().toStdString();
    return testing::AssertionSuccess();
}

class PreferencesLooksTest : public PreferencesTest {
protected:
    PreferencesLooksTest()
    {
        std::ignore = m_defaults.set(u"defaultShowFrame"_s, true);
        std::ignore = m_defaults.set(u"copyToClipboard"_s, true);
        show();
        QPalette palette;
        palette.setColor(QPalette::Window, windowColor);
        palette.setColor(QPalette::WindowText, textColor);
        palette.setColor(QPalette::Highlight, accentColor);
        m_controller->window()->setPalette(palette);
    }

    /// The colour at a place of a widget.
    QColor colorAt(const QWidget &widget, int x, int y) const
    {
        return m_controller->window()->grab().toImage().pixelColor(
            widget.mapTo(m_controller->window(), QPoint(x, y)));
    }
    QWidget &card(int section) const
    {
        return *content().findChildren<PrefsSection *>().at(section)->card();
    }
    QWidget &tile(std::size_t index) const
    {
        return *choices("defaultFrameBackground").choices().at(index);
    }
    static QColor onCard(const QColor &color, double opacity)
    {
        return mixed(mixed(windowColor, textColor, 0.04), color, opacity);
    }
};

TEST_F(PreferencesLooksTest, theCardIsAShadeOfTheTextWithAnOutline)
{
    EXPECT_TRUE(areAlike(colorAt(card(0), 200, 20), mixed(windowColor, textColor, 0.04)));
    EXPECT_TRUE(areAlike(colorAt(card(0), 200, 0), onCard(textColor, 0.08)));
    EXPECT_TRUE(areAlike(colorAt(card(0), 0, 0), windowColor)) << "round corners";
    EXPECT_TRUE(areAlike(colorAt(card(0), 431, 0), windowColor));
}

TEST_F(PreferencesLooksTest, theBadgesGradientEndsInItsColour)
{
    const QWidget &section = *content().findChildren<PrefsSection *>().at(2);
    EXPECT_TRUE(areAlike(colorAt(section, 12, 23), QColor(0, 122, 255)));
    const QColor top = colorAt(section, 12, 0);
    EXPECT_GT(top.red(), 30) << "lighter";
    EXPECT_TRUE(areAlike(colorAt(section, 0, 0), windowColor)) << "round corners";
}

TEST_F(PreferencesLooksTest, theCurrentTileHasTheAccentColourAndAnOutlineInIt)
{
    EXPECT_TRUE(areAlike(colorAt(tile(0), 8, 30), onCard(accentColor, 0.15)));
    EXPECT_TRUE(areAlike(colorAt(tile(0), 60, 0), accentColor));
    EXPECT_TRUE(areAlike(colorAt(tile(1), 8, 30), onCard(textColor, 0.04)));
    EXPECT_TRUE(areAlike(colorAt(tile(1), 60, 0), onCard(textColor, 0.04))) << "no outline";
}

TEST_F(PreferencesLooksTest, aSwitchThatIsOnHasTheAccentColour)
{
    EXPECT_TRUE(areAlike(colorAt(switchOf("defaultShowFrame"), 10, 11), accentColor));
    EXPECT_TRUE(
        areAlike(colorAt(switchOf("autoConfirmSelection"), 28, 11), onCard(textColor, 0.14)));
}

TEST_F(PreferencesLooksTest, anotherPaletteIsTakenUpAtOnce)
{
    QPalette dark;
    dark.setColor(QPalette::Window, QColor(40, 42, 46));
    dark.setColor(QPalette::WindowText, QColor(250, 250, 250));
    dark.setColor(QPalette::Highlight, QColor(255, 128, 0));
    m_controller->window()->setPalette(dark);
    EXPECT_TRUE(areAlike(colorAt(switchOf("defaultShowFrame"), 10, 11), QColor(255, 128, 0)));
    EXPECT_TRUE(areAlike(colorAt(card(0), 200, 20),
                         mixed(QColor(40, 42, 46), QColor(250, 250, 250), 0.04)));
}

TEST_F(PreferencesLooksTest, aRingIsAroundWhatTheKeyboardReached)
{
    QWidget &first = switchOf("launchAtLogin");
    EXPECT_FALSE(areAlike(colorAt(first, 19, -2), accentColor));
    first.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(areAlike(colorAt(first, 19, -2), accentColor));
    click(first);
    switchOf("saveToFile").setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(areAlike(colorAt(first, 19, -2), accentColor));
}

} // namespace
} // namespace lumacap::tests
