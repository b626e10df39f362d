#include "OverlayViewFixture.h"
#include "annotation/shapes/RectAnnotation.h"

#include <QEnterEvent>
#include <QMouseEvent>
#include <QPushButton>
#include <QTest>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

WindowRecord window(const QString &owner, const Rect<TopLeftGlobal> &bounds,
                    std::int64_t owningProcess = 77)
{
    return {.layer = 0,
            .windowNumber = 5,
            .ownerPID = owningProcess,
            .bounds = bounds,
            .ownerName = owner,
            .windowName = std::nullopt};
}

using OverlayViewTest = OverlayViewFixture;

TEST_F(OverlayViewTest, beforeAnythingIsPointedAtTheWholeScreenIsDimmed)
{
    expectFullRepaint({});
}

TEST_F(OverlayViewTest, withNoWindowUnderThePointerOnlyLinesAndCrossShow)
{
    m_pointer->move(200, 150);

    expectFullRepaint({.pointer = Point<Canvas>{200, 150}, .guideLines = GuideLines::Shown});
}

TEST_F(OverlayViewTest, pointingAtAWindowShowsItClearWithItsApplicationsName)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};

    m_pointer->move(60, 250);

    const Rect<Canvas> frame{{50, 300 - 120}, {100, 80}};
    EXPECT_EQ(m_view->selectionRectForDisplay(), frame);
    expectFullRepaint({.outline = frame,
                       .label = OverlayLabel{u"Editor"_s, frame},
                       .pointer = Point<Canvas>{60, 250},
                       .guideLines = GuideLines::Shown});
}

TEST_F(OverlayViewTest, aWindowWithoutAnOwnersNameHasNoLabel)
{
    m_windows.all = {window(QString(), {{50, 40}, {100, 80}})};

    m_pointer->move(60, 250);

    expectFullRepaint({.outline = Rect<Canvas>{{50, 180}, {100, 80}},
                       .pointer = Point<Canvas>{60, 250},
                       .guideLines = GuideLines::Shown});
}

TEST_F(OverlayViewTest, leavingAWindowTakesItsOutlineAway)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    m_pointer->move(60, 250);
    m_pointer->move(300, 50);

    EXPECT_EQ(m_view->selectionRectForDisplay(), std::nullopt);
}

TEST_F(OverlayViewTest, aClickOnAWindowSelectsItAndItsApplication)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}}),
                     window(u"Browser"_s, {{0, 0}, {300, 200}})};

    m_pointer->click(60, 250);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{50, 180}, {100, 80}}));
    EXPECT_EQ(m_store.sourceAppName, u"Editor"_s);

    m_pointer->click(10, 290);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{0, 100}, {300, 200}}));
    EXPECT_EQ(m_store.sourceAppName, u"Browser"_s);
}

TEST_F(OverlayViewTest, aClickTakesTheHighlightedWindowAlsoWhenItHasGoneMeanwhile)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    m_pointer->move(60, 250);
    m_windows.all.clear();

    m_pointer->click(60, 250);

    EXPECT_EQ(m_store.sourceAppName, u"Editor"_s);
}

TEST_F(OverlayViewTest, aDragSelectsItsArea)
{
    m_pointer->drag(100, 80, 250, 200);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 80}, {150, 120}}));
    EXPECT_EQ(m_store.sourceAppName, std::nullopt);
}

TEST_F(OverlayViewTest, aDragToTheLeftOrDownSelectsANonNegativeSize)
{
    m_pointer->drag(250, 80, 100, 200);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 80}, {150, 120}}));

    m_pointer->drag(250, 200, 100, 80);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 80}, {150, 120}}));
}

/// On a desktop whose scale is a fraction, four units are five pixels.
TEST_F(OverlayViewTest, aDragWhereUnitsAreFractionsOfPixelsSelectsThePixelsUnderIt)
{
    show({{{0, 0}, {320, 240}}, 1, {400, 300}, 240});
    m_view->resize(320, 240);

    m_pointer->drag(40, 80, 200, 160);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{50, 100}, {200, 100}}));
}

TEST_F(OverlayViewTest, whereThePointerStopsBeforeTheEdgeItMeansTheEdge)
{
    show({{{0, 0}, {200, 150}}, 2, {400, 300}, 150, 2});
    m_view->resize(200, 150);
    constexpr double lastUnit = 199;

    m_pointer->drag(100, 75, lastUnit, 1);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 0}, {100, 75}}));
}

TEST_F(OverlayViewTest, aDragNamesTheApplicationUnderItsMiddle)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};

    m_pointer->drag(20, 150, 180, 290); // its middle: 100, 220, that is 80 from the top

    EXPECT_EQ(m_store.sourceAppName, u"Editor"_s);
}

TEST_F(OverlayViewTest, aDragOfFivePointsOnBothAxesIsAClickOnTheWindow)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};

    m_pointer->drag(60, 250, 65, 245);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{50, 180}, {100, 80}}));
}

TEST_F(OverlayViewTest, aDragOfMoreThanFivePointsOnOneAxisIsADrag)
{
    m_pointer->drag(60, 250, 66, 250);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{60, 250}, {6, 0}}));
}

TEST_F(OverlayViewTest, aDragSixPointsAwayAndBackSelectsAnEmptyAreaAndNoWindow)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};

    m_pointer->press(60, 250);
    m_pointer->move(66, 250);
    m_pointer->move(60, 250);
    m_pointer->release(60, 250);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{60, 250}, {0, 0}}));
}

TEST_F(OverlayViewTest, duringADragTheLabelIsItsSizeAndTheLinesAreHidden)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    m_pointer->move(60, 250);
    m_pointer->press(60, 250);
    m_pointer->move(160.9, 199.8);

    const Rect<Canvas> dragged{{60, 199.8}, {100.9, 50.2}};
    const auto shown = m_view->selectionRectForDisplay().value_or(Rect<Canvas>{});
    EXPECT_NEAR(shown.width(), dragged.width(), 1e-9);
    EXPECT_NEAR(shown.height(), dragged.height(), 1e-9);
    expectFullRepaint({.outline = shown,
                       .label = OverlayLabel{u"100 × 50"_s, shown},
                       .pointer = Point<Canvas>{160.9, 300 - (300 - 199.8)}});
}

TEST_F(OverlayViewTest, afterReleaseThereIsNoLabelAndTheLinesStayAway)
{
    m_pointer->drag(100, 80, 250, 200);
    m_pointer->move(30, 40);

    expectFullRepaint(
        {.outline = Rect<Canvas>{{100, 80}, {150, 120}}, .pointer = Point<Canvas>{30, 40}});
}

TEST_F(OverlayViewTest, onceSomethingIsSelectedMovingHighlightsNoWindow)
{
    m_pointer->drag(200, 20, 300, 60);
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    const int questions = m_windows.questions;

    m_pointer->move(60, 250);

    EXPECT_EQ(m_view->selectionRectForDisplay(), (Rect<Canvas>{{200, 20}, {100, 40}}));
    EXPECT_EQ(m_windows.questions, questions);
}

TEST_F(OverlayViewTest, aLaterDragReplacesTheSelectionAndShowsLive)
{
    m_pointer->drag(200, 20, 300, 60);
    m_pointer->press(10, 10);
    EXPECT_EQ(m_view->selectionRectForDisplay(), (Rect<Canvas>{{200, 20}, {100, 40}}))
        << "until the drag begins";
    m_pointer->move(50, 70);
    EXPECT_EQ(m_view->selectionRectForDisplay(), (Rect<Canvas>{{10, 10}, {40, 60}}));
    m_pointer->release(50, 70);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{10, 10}, {40, 60}}));
}

TEST_F(OverlayViewTest, aClickWhereOnlyOurOwnWindowsLieKeepsTheSelection)
{
    m_pointer->drag(200, 20, 300, 60);
    m_windows.all = {
        window(u"Lumacap"_s, {{0, 0}, {400, 300}}, QCoreApplication::applicationPid())};
    EXPECT_CALL(m_confirm, Call).Times(0);
    ASSERT_TRUE(m_defaults.set(u"autoConfirmSelection"_s, true));

    m_pointer->click(60, 250);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{200, 20}, {100, 40}}));
}

TEST_F(OverlayViewTest, aClickOnNothingSelectsNothingAndDoesNotConfirm)
{
    ASSERT_TRUE(m_defaults.set(u"autoConfirmSelection"_s, true));
    EXPECT_CALL(m_confirm, Call).Times(0);

    m_pointer->click(60, 250);

    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);
}

TEST_F(OverlayViewTest, withAutoConfirmADragConfirmsAtOnce)
{
    ASSERT_TRUE(m_defaults.set(u"autoConfirmSelection"_s, true));
    EXPECT_CALL(m_confirm, Call).WillOnce([this] {
        EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 80}, {150, 120}}));
    });

    m_pointer->drag(100, 80, 250, 200);
}

TEST_F(OverlayViewTest, withAutoConfirmAPickedWindowConfirmsAtOnce)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    ASSERT_TRUE(m_defaults.set(u"autoConfirmSelection"_s, true));
    EXPECT_CALL(m_confirm, Call).Times(1);

    m_pointer->click(60, 250);
}

TEST_F(OverlayViewTest, autoConfirmIsReadWhenTheMouseComesUp)
{
    EXPECT_CALL(m_confirm, Call).Times(1);

    m_pointer->press(100, 80);
    m_pointer->move(250, 200);
    ASSERT_TRUE(m_defaults.set(u"autoConfirmSelection"_s, true));
    m_pointer->release(250, 200);
}

TEST_F(OverlayViewTest, aClickOnAChildNeverReachesTheSelection)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    QPushButton button(m_view.get());
    button.setGeometry(50, 40, 60, 30);
    Pointer onButton(button);

    onButton.click(10, 10);

    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);
}

TEST_F(OverlayViewTest, anotherToolRemovesTheHighlightOnTheNextTurn)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    m_pointer->move(60, 250);
    ASSERT_TRUE(m_view->selectionRectForDisplay());

    m_store.setCurrentTool(AnnotationTool::Arrow);
    QCoreApplication::sendPostedEvents();
    m_store.setCurrentTool(AnnotationTool::Selection);

    EXPECT_EQ(m_view->selectionRectForDisplay(), std::nullopt);
}

TEST_F(OverlayViewTest, aReleaseWithoutAPressIsNoClick)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};

    m_pointer->release(60, 250);

    EXPECT_EQ(m_store.selectedViewRect, std::nullopt);
}

TEST_F(OverlayViewTest, escapeCancels)
{
    EXPECT_CALL(m_cancel, Call).Times(1);
    EXPECT_CALL(m_confirm, Call).Times(0);

    m_pointer->key(Qt::Key_Escape);
}

TEST_F(OverlayViewTest, aDragIntoTheLastColumnAndRowReachesTheEdges)
{
    m_pointer->drag(100, 80, 399, 1); // of 400 columns, and of 300 rows counted from below

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 0}, {300, 80}}));

    m_pointer->drag(0, 300, 399, 1);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{0, 0}, {400, 300}}));
}

TEST_F(OverlayViewTest, aDragFromTheCornerReachesTheEdgesToo)
{
    m_pointer->drag(399, 1, 100, 80);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 0}, {300, 80}}));
}

TEST_F(OverlayViewTest, aClickWhoseMotionTheToolkitDroppedTakesTheWindowUnderIt)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}}),
                     window(u"Browser"_s, {{200, 40}, {100, 80}})};
    m_pointer->move(60, 250);

    m_pointer->click(210, 250);

    EXPECT_EQ(m_store.sourceAppName, u"Browser"_s);
}

TEST_F(OverlayViewTest, anOverlayThatComesUnderAPointerAtRestHasItsCrossThere)
{
    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    QEnterEvent enter(QPointF(60, 50), QPointF(60, 50), QPointF(60, 50));
    QCoreApplication::sendEvent(m_view.get(), &enter);

    EXPECT_EQ(m_view->scene().pointer, (Point<Canvas>{60, 250}));
    EXPECT_EQ(m_view->selectionRectForDisplay(), (Rect<Canvas>{{50, 180}, {100, 80}}));
}

TEST_F(OverlayViewTest, aPlaceThatTheToolkitMadeUpForAControlIsNotTheViews)
{
    // What it sends when the pointer goes off a control: its place in the window is nowhere.
    QMouseEvent motion(QEvent::MouseMove, QPointF(60, 50), QPointF(-1, -1), QPointF(60, 50),
                       Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_view.get(), &motion);
    EXPECT_EQ(m_view->scene().pointer, (Point<Canvas>{60, 250}));

    QMouseEvent between(QEvent::MouseMove, QPointF(60, 50), QPointF(60.5, 49.5), QPointF(60, 50),
                        Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(m_view.get(), &between);
    EXPECT_EQ(m_view->scene().pointer, (Point<Canvas>{60.5, 250.5})) << "between two points";
}

TEST_F(OverlayViewTest, addingAnAnnotationToTheStoreShowsIt)
{
    m_store.add(std::make_unique<RectAnnotation>(Qt::red, 4, Rect<Canvas>{{50, 50}, {100, 80}}));

    EXPECT_EQ(m_view->picture().pixel(50, 250), QColor(Qt::red).rgb());
    m_store.undo();
    expectFullRepaint({});
}

TEST_F(OverlayViewTest, theLineCrawlsOnlyWhileThereIsSomethingToOutline)
{
    m_pointer->move(200, 150);
    const QImage still = m_view->picture();
    EXPECT_FALSE(QTest::qWaitFor([&] { return m_view->picture() != still; }, 150));

    m_windows.all = {window(u"Editor"_s, {{50, 40}, {100, 80}})};
    m_pointer->move(60, 250);
    const QImage outlined = m_view->picture();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_view->picture() != outlined; }));

    m_view->invalidateAnimationTimer();
    const QImage ended = m_view->picture();
    EXPECT_FALSE(QTest::qWaitFor([&] { return m_view->picture() != ended; }, 150));
}

TEST_F(OverlayViewTest, theLineCrawlsWhileAnAreaIsDraggedOutAndWhileTheDragRests)
{
    m_pointer->press(100, 80);
    m_pointer->move(250, 200);
    const QImage dragged = m_view->picture();
    EXPECT_TRUE(QTest::qWaitFor([&] {
        m_pointer->move(251, 200);
        m_pointer->move(250, 200);
        return m_view->picture() != dragged;
    }));

    const QImage resting = m_view->picture();
    EXPECT_TRUE(QTest::qWaitFor([&] { return m_view->picture() != resting; }));
}

TEST_F(OverlayViewTest, onASecondScreenOfAnotherDensityPointsAreItsOwn)
{
    // The first screen has factor 2 and 540 units; this one, right of it, factor 1.
    show({{{960, 0}, {200, 150}}, 1, {400, 300}, 540});
    m_windows.all = {window(u"Editor"_s, {{985, 410}, {50, 40}})};

    m_pointer->move(60, 250);
    EXPECT_EQ(m_view->selectionRectForDisplay(), (Rect<Canvas>{{50, 180}, {100, 80}}));

    m_pointer->drag(100, 80, 250, 200);
    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{100, 80}, {150, 120}}));
}

TEST_F(OverlayViewTest, leftOfAndBelowTheFirstScreenWindowsAreFoundAllTheSame)
{
    show({{{-400, -300}, {400, 300}}, 1, {400, 300}, 1080});
    m_windows.all = {window(u"Editor"_s, {{-350, 1120}, {100, 80}})};

    m_pointer->click(60, 250);

    EXPECT_EQ(m_store.selectedViewRect, (Rect<Canvas>{{50, 180}, {100, 80}}));
}

} // namespace
} // namespace lumacap::tests
