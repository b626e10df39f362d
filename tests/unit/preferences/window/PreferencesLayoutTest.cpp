#include "Preferences.h"

#include "graphics/PointPainting.h"
#include "graphics/Text.h"
#include "preferences/look/PrefsText.h"
#include "preferences/window/PreferencesView.h"
#include "preferences/window/PrefsDivider.h"
#include "preferences/window/PrefsRow.h"
#include "preferences/window/PrefsSection.h"
#include "preferences/window/SectionColumn.h"

#include <QApplication>
#include <QPainterPath>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

const QString helpText = u"Capture directement apres la selection de zone, sans cliquer Valider."_s;

class PreferencesLayoutTest : public PreferencesTest {
protected:
    PreferencesLayoutTest()
    {
        std::ignore = m_defaults.set(u"defaultShowFrame"_s, true);
        std::ignore = m_defaults.set(u"saveToFile"_s, true);
        show();
    }

    QList<PrefsSection *> sections() const { return content().findChildren<PrefsSection *>(); }
    /// Where a widget is, in units of the content.
    QRect place(const QWidget &widget) const
    {
        return {widget.mapTo(&content(), QPoint()), widget.size()};
    }
    const PrefsText &text(const QString &whole) const
    {
        const auto texts = content().findChildren<PrefsText *>();
        const auto found = std::ranges::find_if(
            texts, [&](const PrefsText *one) { return one->accessibleName() == whole; });
        if (found == texts.end())
            qFatal("no such text");
        return **found;
    }
    /// What is free between two widgets, the upper one first.
    int gap(const QWidget &above, const QWidget &below) const
    {
        return place(below).top() - (place(above).bottom() + 1);
    }
    QRect tile(std::size_t index) const
    {
        return place(*choices("defaultFrameBackground").choices().at(index));
    }
};

TEST_F(PreferencesLayoutTest, theFourSectionsStandInOrderWithinTheirPadding)
{
    QStringList titles;
    int top = 24;
    for (const PrefsSection *const section : sections()) {
        titles.append(section->accessibleName());
        EXPECT_EQ(place(*section).left(), 24);
        EXPECT_EQ(section->width(), 480 - 2 * 24) << "the mark of scrolling takes no room";
        EXPECT_EQ(place(*section).top(), top);
        top += section->height() + 20;
    }
    EXPECT_EQ(titles,
              (QStringList{u"General"_s, u"Raccourcis clavier"_s, u"Capture"_s, u"Sortie"_s}));
    EXPECT_EQ(content().height(), top - 20 + 24);
}

TEST_F(PreferencesLayoutTest, theCardLiesBelowTheHeaderAsWideAsTheSection)
{
    for (const PrefsSection *const section : sections()) {
        const QRect card = section->card()->geometry();
        EXPECT_EQ(card.topLeft(), QPoint(0, 24 + 12));
        EXPECT_EQ(card.width(), 432);
        EXPECT_EQ(card.bottom(), section->height() - 1);
    }
}

TEST_F(PreferencesLayoutTest, theContentOfACardIsPaddedAndSpaced)
{
    const QWidget &card = *sections().at(1)->card();
    const auto rows = card.findChildren<PrefsRow *>();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows.at(0)->geometry().topLeft(), QPoint(14, 14));
    EXPECT_EQ(rows.at(0)->width(), 432 - 2 * 14);
    const QRect divider = card.findChild<PrefsDivider *>()->geometry();
    EXPECT_EQ(divider.height(), 1);
    EXPECT_EQ(divider.top(), rows.at(0)->geometry().bottom() + 1 + 10);
    EXPECT_EQ(rows.at(1)->y(), divider.bottom() + 1 + 10);
    EXPECT_EQ(card.height(), rows.at(1)->geometry().bottom() + 1 + 14);
}

TEST_F(PreferencesLayoutTest, controlsSitHalfwayUpAtTheTrailingEdge)
{
    for (const PrefsRow *const row : content().findChildren<PrefsRow *>()) {
        const QRect control = row->findChild<PrefsControl *>()->geometry();
        EXPECT_EQ(control.right(), row->width() - 1);
        EXPECT_LE(std::abs(control.center().y() - row->rect().center().y()), 1);
    }
}

TEST_F(PreferencesLayoutTest, switchesAndRecordersHaveTheirSizes)
{
    EXPECT_EQ(switchOf("saveToFile").size(), QSize(38, 22));
    EXPECT_EQ(recorder("fullScreenHotkey").width(), 140 + 2 * 8);
    EXPECT_EQ(recorder("fullScreenHotkey").size(), recorder("fullScreenHotkey").sizeHint());
    EXPECT_EQ(choices("imageFormat").width(), 180);
}

TEST_F(PreferencesLayoutTest, theTilesStandInThreeEqualColumns)
{
    const int left = tile(0).left();
    for (std::size_t index = 0; index < 6; ++index) {
        const QRect before = index % 3 == 0 ? QRect() : tile(index - 1);
        EXPECT_EQ(tile(index).left(), index % 3 == 0 ? left : before.right() + 1 + 8);
        EXPECT_LE(std::abs(tile(index).width() - (404 - 16) / 3), 1);
        EXPECT_EQ(tile(index).top(), index < 3 ? tile(0).top() : tile(0).bottom() + 1 + 8);
    }
    EXPECT_EQ(tile(2).right(), left + 404 - 1);
    const int labelHeight = tile(0).height() - (8 + 22 + 6 + 8);
    EXPECT_EQ(labelHeight, text(helpText).sizeHint().height()) << "both are captions";
    EXPECT_EQ(choices("defaultFrameBackground").choices().front()->outline(),
              continuousRoundedRect(QRectF(QPointF(), tile(0).size()), 8));
}

TEST_F(PreferencesLayoutTest, theHelpTextStandsBetweenItsSwitchAndTheLine)
{
    const PrefsText &help = text(helpText);
    const QWidget &row = *switchOf("autoConfirmSelection").parentWidget();
    EXPECT_EQ(gap(row, help), 10);
    const auto *const divider = sections().at(2)->card()->findChild<PrefsDivider *>();
    EXPECT_EQ(gap(help, *divider), 4 + 10);
    EXPECT_EQ(help.width(), 404);
}

TEST_F(PreferencesLayoutTest, whatASwitchRevealsIsSpaced)
{
    const PrefsText &title = text(u"Theme de fond"_s);
    EXPECT_EQ(gap(*switchOf("defaultShowFrame").parentWidget(), title), 10 + 4);
    EXPECT_EQ(gap(title, choices("defaultFrameBackground")), 8);

    const QWidget &folderLine = *control<QWidget>("chooseSaveDirectory").parentWidget();
    const QWidget &formatLine = *choices("imageFormat").parentWidget();
    EXPECT_EQ(gap(*switchOf("saveToFile").parentWidget(), folderLine), 10 + 4);
    EXPECT_EQ(gap(folderLine, formatLine), 10);
}

TEST_F(PreferencesLayoutTest, textsHaveTheirSizes)
{
    const auto widthOf = [](const QString &whole, double points) {
        return static_cast<int>(std::ceil(Text(whole, points, FontWeight::Regular).size().width));
    };
    EXPECT_EQ(text(helpText).sizeHint().width(), widthOf(helpText, 10));
    EXPECT_EQ(text(u"Theme de fond"_s).sizeHint().width(), widthOf(u"Theme de fond"_s, 11));
    EXPECT_EQ(text(u"Format"_s).sizeHint().width(), widthOf(u"Format"_s, 13));
}

TEST_F(PreferencesLayoutTest, theHelpTextHasRoomForAllItsLinesInAWideFont)
{
    const QFont before = QApplication::font();
    QApplication::setFont(QFont(u"Monospace"_s));
    QCoreApplication::processEvents();
    const PrefsText &help = text(helpText);
    EXPECT_TRUE(help.shownText().contains(u'\n'));
    EXPECT_EQ(help.height(), help.heightForWidth(404));
    EXPECT_GT(help.height(), help.sizeHint().height());
    QApplication::setFont(before);
}

TEST_F(PreferencesLayoutTest, theFooterStandsBelowTheSectionsBehindALine)
{
    const PreferencesView &view = m_controller->window()->view();
    EXPECT_EQ(view.geometry(), QRect(0, 0, 480, 580));
    const QWidget *divider = nullptr;
    for (const PrefsDivider *const line :
         view.findChildren<PrefsDivider *>(QString(), Qt::FindDirectChildrenOnly))
        divider = line;
    ASSERT_NE(divider, nullptr);
    EXPECT_EQ(divider->geometry().left(), 0);
    EXPECT_EQ(divider->width(), 480);
    EXPECT_EQ(divider->y(), view.column().geometry().bottom() + 1);
    const int footer = 580 - (divider->y() + 1);
    EXPECT_GE(footer, 14 + 10 + 14);
    EXPECT_LE(footer, 14 + 16 + 14);
}

TEST_F(PreferencesLayoutTest, everythingIsReachedByScrolling)
{
    const QScrollBar &bar = *m_controller->window()->view().column().verticalScrollBar();
    EXPECT_EQ(bar.maximum() - bar.minimum() + bar.pageStep(), content().height());
    EXPECT_EQ(m_controller->window()->view().column().horizontalScrollBar()->maximum(), 0);
}

} // namespace
} // namespace lumacap::tests
