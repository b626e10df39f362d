#include "platform/freedesktop/tray/MenuEntryText.h"

#include <QAction>
#include <QKeySequence>

#include <gtest/gtest.h>

#include <ostream>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

struct LabelCase {
    const char *name;
    QString text;
    QString label;
};

void PrintTo(const LabelCase &label, std::ostream *out) // NOLINT(readability-identifier-naming)
{
    *out << label.name;
}

class MenuLabel : public testing::TestWithParam<LabelCase> { };

TEST_P(MenuLabel, isTheTextInTheHostsNotation)
{
    EXPECT_EQ(menuLabel(GetParam().text), GetParam().label);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, MenuLabel,
    testing::Values(LabelCase{"empty", u""_s, u""_s},
                    LabelCase{"plainWithTwoSpaces", u"Capture plein ecran  (⌃⇧1)"_s,
                              u"Capture plein ecran  (⌃⇧1)"_s},
                    LabelCase{"underscoreIsLiteral", u"a_b__c"_s, u"a__b____c"_s},
                    LabelCase{"doubledAmpersandIsLiteral", u"a && b"_s, u"a & b"_s},
                    LabelCase{"ampersandMarksTheAccessKey", u"&Quitter"_s, u"_Quitter"_s},
                    LabelCase{"accessKeyThatIsAnUnderscore", u"&_"_s, u"___"_s},
                    LabelCase{"ampersandAtTheEndMarksNothing", u"a&"_s, u"a"_s}),
    [](const auto &tested) { return tested.param.name; });

TEST(MenuShortcut, ofALetterHasItsModifiersFirst)
{
    EXPECT_EQ(menuShortcut(QKeySequence(Qt::CTRL | Qt::ALT | Qt::SHIFT | Qt::META | Qt::Key_Q)),
              (MenuShortcut{{u"Control"_s, u"Alt"_s, u"Shift"_s, u"Super"_s, u"Q"_s}}));
}

TEST(MenuShortcut, ofPunctuationHasTheKeysNameAndNotItsSign)
{
    EXPECT_EQ(menuShortcut(QKeySequence(Qt::META | Qt::Key_Comma)),
              (MenuShortcut{{u"Super"_s, u"comma"_s}}));
}

TEST(MenuShortcut, hasOneListForEachPress)
{
    EXPECT_EQ(menuShortcut(QKeySequence(Qt::CTRL | Qt::Key_K, Qt::Key_F4)),
              (MenuShortcut{{u"Control"_s, u"K"_s}, {u"F4"_s}}));
}

TEST(MenuShortcut, isEmptyWithoutAKey)
{
    EXPECT_EQ(menuShortcut(QKeySequence()), MenuShortcut());
}

TEST(MenuProperties, ofASeparatorHaveNoLabel)
{
    QAction separator;
    separator.setSeparator(true);
    EXPECT_EQ(menuProperties(separator),
              (QVariantMap{{u"type"_s, u"separator"_s}, {u"visible"_s, true}}));
}

TEST(MenuProperties, followTheActionsState)
{
    QAction action(u"x"_s);
    action.setEnabled(false);
    EXPECT_EQ(menuProperties(action),
              (QVariantMap{{u"type"_s, u"standard"_s},
                           {u"label"_s, u"x"_s},
                           {u"enabled"_s, false},
                           {u"visible"_s, true}}));
    action.setVisible(false);
    EXPECT_EQ(menuProperties(action).value(u"visible"_s), false);
}

} // namespace

} // namespace lumacap::freedesktop
