#include "annotation/toolbar/AnnotationToolbarView.h"

#include "Toolbar.h"
#include "annotation/toolbar/BackgroundMenuButton.h"
#include "graphics/SymbolImage.h"

#include <QPointer>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

using AnnotationToolbarViewTest = ToolbarTest;

const QStringList alwaysThere{u"tool.selection"_s,
                              u"tool.arrow"_s,
                              u"tool.rectangle"_s,
                              u"tool.ellipse"_s,
                              u"tool.numberedPoint"_s,
                              u"tool.freehand"_s,
                              u"tool.text"_s,
                              u"tool.magnifier"_s,
                              u"tool.blur"_s,
                              u"color.red"_s,
                              u"color.orange"_s,
                              u"color.yellow"_s,
                              u"color.green"_s,
                              u"color.blue"_s,
                              u"color.white"_s,
                              u"color.black"_s,
                              u"thickness.thin"_s,
                              u"thickness.medium"_s,
                              u"thickness.thick"_s,
                              u"undo"_s,
                              u"frame"_s,
                              u"cancel"_s,
                              u"confirm"_s};

const QStringList loupeChoices{u"magnifierShape.circle"_s,    u"magnifierShape.roundedRect"_s,
                               u"magnifierShape.rectangle"_s, u"magnifierZoom.2x"_s,
                               u"magnifierZoom.3x"_s,         u"magnifierZoom.4x"_s};

QStringList withLoupeChoices()
{
    return alwaysThere.first(19) + loupeChoices + alwaysThere.sliced(19);
}

QStringList withFrameBackground()
{
    return alwaysThere.first(21) + QStringList{u"frameBackground"_s} + alwaysThere.sliced(21);
}

TEST_F(AnnotationToolbarViewTest, opensInTheStateOfAFreshStore)
{
    EXPECT_EQ(shownNames(), alwaysThere);
    for (const char *const name : {"tool.selection", "color.red", "thickness.medium",
                                   "magnifierShape.roundedRect", "magnifierZoom.2x"})
        EXPECT_TRUE(control(name).isChecked()) << name;
    EXPECT_FALSE(control("frame").isChecked());
    EXPECT_FALSE(control("undo").isEnabled());
}

TEST_F(AnnotationToolbarViewTest, onlyOneOfEachKindIsCurrent)
{
    int current = 0;
    for (const ToolbarButton *const button : m_toolbar->findChildren<ToolbarButton *>())
        current += button->isChecked() ? 1 : 0;

    EXPECT_EQ(current, 5);
}

TEST_F(AnnotationToolbarViewTest, theMagnifierToolShowsShapesAndZoomsAndAnotherHidesThem)
{
    click("tool.magnifier");
    settle();
    EXPECT_EQ(shownNames(), withLoupeChoices());

    click("tool.arrow");
    settle();
    EXPECT_EQ(shownNames(), alwaysThere);
}

TEST_F(AnnotationToolbarViewTest, theFrameShowsItsBackgroundMenuAndHidesIt)
{
    click("frame");
    settle();
    EXPECT_TRUE(m_store->showFrame());
    EXPECT_EQ(shownNames(), withFrameBackground());

    click("frame");
    settle();
    EXPECT_FALSE(m_store->showFrame());
    EXPECT_EQ(shownNames(), alwaysThere);
}

TEST_F(AnnotationToolbarViewTest, turningTheFrameOnShowsTheBackgroundOfThePreferences)
{
    FakeDefaultsStore defaults;
    ASSERT_TRUE(defaults.set(u"defaultFrameBackground"_s, u"ocean"_s));
    showWith(defaults);

    click("frame");
    settle();

    EXPECT_EQ(shownNames(), withFrameBackground());
    EXPECT_EQ(control("frameBackground").accessibleDescription(), u"Océan"_s);
}

TEST_F(AnnotationToolbarViewTest, undoWorksWhileThereAreAnnotations)
{
    addAnnotation();
    settle();
    EXPECT_TRUE(control("undo").isEnabled());

    click("undo");
    settle();
    EXPECT_TRUE(m_store->annotations().empty());
    EXPECT_FALSE(control("undo").isEnabled());
}

TEST_F(AnnotationToolbarViewTest, validerWithoutACallbackDoesNothing)
{
    click("confirm");
    settle();

    EXPECT_EQ(shownNames(), alwaysThere);
}

TEST_F(AnnotationToolbarViewTest, annulerWithoutACallbackDoesNothing)
{
    click("cancel");
    settle();

    EXPECT_EQ(shownNames(), alwaysThere);
}

TEST_F(AnnotationToolbarViewTest, validerConfirmsAndAnnulerCancels)
{
    testing::StrictMock<testing::MockFunction<void(const char *)>> called;
    m_store->confirmCallback = [&] { called.Call("confirm"); };
    m_store->cancelCallback = [&] { called.Call("cancel"); };

    EXPECT_CALL(called, Call(testing::StrEq("confirm")));
    click("confirm");
    EXPECT_CALL(called, Call(testing::StrEq("cancel")));
    click("cancel");
}

TEST_F(AnnotationToolbarViewTest, theCallbackMayGoWhileItRuns)
{
    int calls = 0;
    m_store->confirmCallback = [this, &calls, owned = std::make_shared<int>(7)] {
        m_store->confirmCallback = nullptr;
        calls += *owned;
    };

    click("confirm");

    EXPECT_EQ(calls, 7);
}

TEST_F(AnnotationToolbarViewTest, theToolbarMayBeEndedByItsOwnClick)
{
    const QPointer<QWidget> toolbar = m_toolbar;
    m_store->confirmCallback = [this] {
        m_host->hide();
        m_host.release()->deleteLater();
        m_store.release()->deleteLater();
    };

    click("confirm");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

    EXPECT_EQ(toolbar, nullptr);
}

TEST_F(AnnotationToolbarViewTest, everyToolIsChosenByItsButton)
{
    for (const auto &tool : annotationTools) {
        click(("tool." + QByteArray(tool.rawValue.data())).constData());
        EXPECT_EQ(m_store->currentTool(), tool.value);
        settle();
        EXPECT_TRUE(control(("tool." + QByteArray(tool.rawValue.data())).constData()).isChecked());
    }
}

TEST_F(AnnotationToolbarViewTest, everyColourIsChosenByItsSwatch)
{
    for (const auto &color : annotationColors) {
        click(("color." + QByteArray(color.rawValue.data())).constData());
        EXPECT_EQ(m_store->currentColor(), color.value);
    }
}

TEST_F(AnnotationToolbarViewTest, everyThicknessIsChosenByItsBar)
{
    click("thickness.thin");
    EXPECT_EQ(m_store->currentThickness(), LineThickness::Thin);
    click("thickness.thick");
    EXPECT_EQ(m_store->currentThickness(), LineThickness::Thick);
    click("thickness.medium");
    EXPECT_EQ(m_store->currentThickness(), LineThickness::Medium);
}

TEST_F(AnnotationToolbarViewTest, shapeAndZoomOfTheLoupeAreChosenByTheirButtons)
{
    m_store->setCurrentTool(AnnotationTool::Magnifier);
    settle();

    click("magnifierShape.circle");
    EXPECT_EQ(m_store->magnifierShape(), MagnifierShape::Circle);
    click("magnifierShape.rectangle");
    EXPECT_EQ(m_store->magnifierShape(), MagnifierShape::Rectangle);
    click("magnifierShape.roundedRect");
    EXPECT_EQ(m_store->magnifierShape(), MagnifierShape::RoundedRect);
    click("magnifierZoom.3x");
    EXPECT_EQ(m_store->magnifierZoom(), MagnifierZoom::X3);
    click("magnifierZoom.4x");
    EXPECT_EQ(m_store->magnifierZoom(), MagnifierZoom::X4);
    click("magnifierZoom.2x");
    EXPECT_EQ(m_store->magnifierZoom(), MagnifierZoom::X2);
    EXPECT_EQ(m_store->currentTool(), AnnotationTool::Magnifier);
}

TEST_F(AnnotationToolbarViewTest, clickingTheCurrentOneLeavesItCurrent)
{
    control("tool.selection").click();
    EXPECT_TRUE(control("tool.selection").isChecked());
    control("tool.arrow").click();
    EXPECT_FALSE(control("tool.arrow").isChecked()) << "before the store says so";

    click("tool.selection");
    settle();
    EXPECT_TRUE(control("tool.selection").isChecked());
}

TEST_F(AnnotationToolbarViewTest, aChangeElsewhereShowsOnTheNextTurn)
{
    m_store->setCurrentColor(AnnotationColor::Blue);
    settle();

    EXPECT_TRUE(control("color.blue").isChecked());
    EXPECT_FALSE(control("color.red").isChecked());
}

TEST_F(AnnotationToolbarViewTest, manyChangesInOneTurnAreMeasuredOnce)
{
    const QSignalSpy measured(m_toolbar, &AnnotationToolbarView::fittingSizeDidChange);

    m_store->setCurrentTool(AnnotationTool::Magnifier);
    m_store->setShowFrame(true);
    EXPECT_EQ(measured.count(), 0);
    settle();
    EXPECT_EQ(measured.count(), 1);

    m_store->setCurrentTool(AnnotationTool::Arrow);
    m_store->setCurrentTool(AnnotationTool::Magnifier);
    m_store->setCurrentColor(AnnotationColor::Blue);
    settle();
    EXPECT_EQ(measured.count(), 1);
}

TEST_F(AnnotationToolbarViewTest, everyIconHasADrawing)
{
    const auto isDrawn = [](QLatin1StringView icon) {
        return !symbolImage(icon, 18, 1, Qt::black).isNull();
    };
    for (const auto &tool : annotationTools)
        EXPECT_TRUE(isDrawn(tool.icon)) << tool.icon.data();
    for (const auto &shape : magnifierShapes)
        EXPECT_TRUE(isDrawn(shape.icon)) << shape.icon.data();
    for (const auto &style : frameBackgroundStyles)
        EXPECT_TRUE(isDrawn(style.icon)) << style.icon.data();
}

} // namespace
} // namespace lumacap::tests
