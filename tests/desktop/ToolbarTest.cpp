#include "AnnotatingFixture.h"
#include "annotation/shapes/MagnifierAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "annotation/shapes/TextAnnotation.h"
#include "harness/Clipboard.h"
#include "harness/ShownPicture.h"
#include "harness/WaitFor.h"

#include <QFile>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr QRect selected{100, 150, 300, 200};

struct ToolbarTest : AnnotatingFixture {
    bool isChecked(const QString &name, std::size_t index = 0)
    {
        const auto control = controls().find(name, index);
        return control && control->isChecked;
    }

    std::unique_ptr<TextAnnotation> text(const QString &words, QPoint lowerLeft,
                                         AnnotationColor color = AnnotationColor::Red) const
    {
        return std::make_unique<TextAnnotation>(colorOf(color), 1, canvas(lowerLeft), words, 18);
    }
};

class ScaledToolbarTest : public ToolbarTest, public testing::WithParamInterface<int> { };

TEST_P(ScaledToolbarTest, validerSaves)
{
    annotate(GetParam(), selected);
    use(u"Valider"_s);

    expectSaved();
}

TEST_P(ScaledToolbarTest, annulerEndsTheCaptureWithoutATrace)
{
    annotate(GetParam(), selected);
    use(u"Annuler"_s);

    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    EXPECT_TRUE(files().isEmpty());
    EXPECT_TRUE(clipboardTypes(*desktop).isEmpty());
}

TEST_P(ScaledToolbarTest, everyControlOfTheStripAnswersAClick)
{
    annotateOn(points, GetParam());
    for (const auto *const tool : {"arrow", "rectangle", "ellipse", "numberedPoint", "freehand",
                                   "text", "magnifier", "blur", "selection"}) {
        use(QLatin1StringView(tool));
        EXPECT_TRUE(waitFor([&] { return isChecked(QLatin1StringView(tool)); })) << tool;
    }
    for (const auto *const color : {"orange", "yellow", "green", "blue", "white", "black", "red",
                                    "thin", "thick", "medium"}) {
        use(QLatin1StringView(color));
        EXPECT_TRUE(waitFor([&] { return isChecked(QLatin1StringView(color)); })) << color;
    }
    use(u"magnifier"_s);
    for (const auto *const choice : {"circle", "roundedRect", "3x", "4x", "2x"}) {
        use(QLatin1StringView(choice));
        EXPECT_TRUE(waitFor([&] { return isChecked(QLatin1StringView(choice)); })) << choice;
    }
    use(u"rectangle"_s, 1); // the loupe's, after the tool
    EXPECT_TRUE(waitFor([&] { return isChecked(u"rectangle"_s, 1); }));
    use(u"frame"_s);
    EXPECT_TRUE(waitFor([&] { return isChecked(u"frame"_s); }));
    use(u"frame"_s);
    EXPECT_TRUE(waitFor([&] { return !isChecked(u"frame"_s); }));
    EXPECT_TRUE(overlayIsUp());
}

INSTANTIATE_TEST_SUITE_P(Scales, ScaledToolbarTest, testing::Values(1, 2));

class SmallScreenTest : public ToolbarTest, public testing::WithParamInterface<QSize> { };

TEST_P(SmallScreenTest, withLoupeAndFrameEveryControlIsInsideAndWorks)
{
    annotateOn(GetParam());
    use(u"magnifier"_s);
    use(u"frame"_s);
    ASSERT_TRUE(controls().find(u"4x"_s));
    ASSERT_TRUE(controls().find(u"frameBackground"_s));

    for (const AccessibleControl &control : controls().all())
        EXPECT_TRUE(QRect(QPoint(), GetParam()).contains(control.place))
            << control.name.toStdString();
    use(u"4x"_s);
    EXPECT_TRUE(waitFor([&] { return isChecked(u"4x"_s); }));
    use(u"circle"_s);
    EXPECT_TRUE(waitFor([&] { return isChecked(u"circle"_s); }));
    use(u"frameBackground"_s);
    use(u"Océan"_s);
    use(u"Annuler"_s);
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
}

INSTANTIATE_TEST_SUITE_P(Sizes, SmallScreenTest,
                         testing::Values(QSize(1366, 768), QSize(1024, 768), QSize(640, 480),
                                         QSize(320, 240)));

TEST_F(ToolbarTest, aClickOnTheStripIsNoSelection)
{
    annotate(1, selected);
    const auto undo = controls().find(u"undo"_s);
    ASSERT_TRUE(undo);
    click(undo->place.center()); // disabled: nothing is drawn yet
    drag(undo->place.center(), undo->place.center() + QPoint(30, 0));
    press(u"Return"_s);

    expectSaved();
}

TEST_F(ToolbarTest, theCrossStaysWhereItWasOverTheStripAndComesAlongOffIt)
{
    annotate(1, selected);
    const auto around = [this](QPoint place) {
        return shownOn(desktop->server().display(), QRect(place - QPoint(14, 14), QSize(29, 29)));
    };
    const QPoint old(700, 400);
    const QPoint next(900, 500);
    // Twice, so that all is drawn that came before.
    const auto antsMarch = [this] {
        const QRect edge(selected.topLeft() - QPoint(4, 4), QSize(60, 8));
        for (int step = 0; step < 2; ++step) {
            const QImage before = shownOn(desktop->server().display(), edge);
            ASSERT_TRUE(
                waitFor([&] { return shownOn(desktop->server().display(), edge) != before; }));
        }
    };
    movePoint({600, 600});
    antsMarch();
    const QImage withoutCross = around(old);
    movePoint(old);
    ASSERT_TRUE(waitFor([&] { return around(old) != withoutCross; }));
    antsMarch();
    const QImage cross = around(old);
    const QImage nextWithoutCross = around(next);

    const auto arrow = controls().find(u"arrow"_s);
    ASSERT_TRUE(arrow);
    movePoint(arrow->place.center());
    use(u"black"_s); // by now the overlay has seen the motion
    EXPECT_TRUE(waitFor([&] { return isChecked(u"black"_s); }));
    EXPECT_EQ(around(old), cross);

    movePoint(next); // in one jump, off a control
    EXPECT_TRUE(waitFor([&] { return around(next) != nextWithoutCross; }));
    EXPECT_TRUE(waitFor([&] { return around(old) == withoutCross; }));
}

TEST_F(ToolbarTest, undoTakesMarksAwayOneByOneAndIsDisabledWhenNoneIsLeft)
{
    annotate(1, selected);
    const auto isUndoEnabled = [this] {
        const auto undo = controls().find(u"undo"_s);
        return undo && undo->isEnabled;
    };
    EXPECT_FALSE(isUndoEnabled());
    use(u"numberedPoint"_s);
    clickPoint({150, 200});
    clickPoint({200, 200});
    EXPECT_TRUE(waitFor(isUndoEnabled));

    press(u"ctrl+z"_s);
    press(u"super+z"_s);

    EXPECT_TRUE(waitFor([&] { return !isUndoEnabled(); }));
    press(u"Return"_s);
    expectSaved();
}

TEST_F(ToolbarTest, textIsKeptByValider)
{
    annotate(1, selected);
    writeText({150, 250}, u"Bonjour"_s);
    use(u"Valider"_s);

    expectSaved(marks(text(u"Bonjour"_s, {150, 262})));
}

TEST_F(ToolbarTest, textIsLostByReturn)
{
    annotate(1, selected);
    writeText({150, 250}, u"Bonjour"_s);
    press(u"Return"_s);

    expectSaved();
}

TEST_F(ToolbarTest, textStaysOpenWhileOtherControlsAreClickedAndTakesTheLastColour)
{
    annotate(1, selected);
    writeText({150, 250}, u"Bon"_s);
    use(u"rectangle"_s);
    dragPoints({120, 180}, {200, 220});
    use(u"blue"_s);
    input({u"type"_s, u"jour"_s});
    press(u"Tab"_s);
    press(u"Return"_s);

    const Rect<Canvas> drawn{canvas({120, 180}), canvas({200, 220}) - canvas({120, 180})};
    expectSaved(marks(std::make_unique<RectAnnotation>(colorOf(AnnotationColor::Red), 4, drawn),
                      text(u"Bonjour"_s, {150, 262}, AnnotationColor::Blue)));
}

TEST_F(ToolbarTest, accentsAndDeadKeysAreTyped)
{
    annotate(1, selected);
    const Answer layout = desktop->ask({u"setxkbmap"_s, u"us"_s, u"-variant"_s, u"intl"_s});
    ASSERT_EQ(layout.ending, Ending{});
    use(u"text"_s);
    clickPoint({150, 250});
    input({u"key"_s, u"dead_acute"_s, u"e"_s, u"dead_circumflex"_s, u"a"_s, u"ccedilla"_s});
    press(u"Tab"_s);
    press(u"Return"_s);

    expectSaved(marks(text(u"éâç"_s, {150, 262})));
}

TEST_F(ToolbarTest, wordsOfAnInputMethodAreTyped)
{
    withInputMethod = true;
    annotate(1, selected);
    writeText({150, 250}, u"vieetj nam"_s); // the last word is still being composed
    press(u"Tab"_s);
    press(u"Return"_s);

    expectSaved(marks(text(u"việt nam"_s, {150, 262})));
}

TEST_F(ToolbarTest, escapeClosesTheTextThenDropsTheLoupeThenCancels)
{
    annotate(1, selected);
    use(u"magnifier"_s);
    dragPoints({120, 180}, {160, 210});
    use(u"text"_s); // which adds the loupe
    use(u"magnifier"_s);
    dragPoints({220, 180}, {260, 210});
    press(u"Escape"_s); // drops the second loupe
    writeText({150, 250}, u"Bonjour"_s);
    press(u"Escape"_s); // closes the text
    press(u"Return"_s);

    auto loupe = std::make_unique<MagnifierAnnotation>(
        colorOf(AnnotationColor::Red), 4,
        Rect<Canvas>{canvas({120, 180}), canvas({160, 210}) - canvas({120, 180})}, 2,
        MagnifierShape::RoundedRect);
    loupe->autoPlaceLoupe({{0, 0}, {1400, 700}});
    expectSaved(marks(std::move(loupe)));

    openOverlay();
    use(u"text"_s);
    clickPoint({150, 250});
    press(u"Escape"_s);
    EXPECT_TRUE(overlayIsUp());
    press(u"Escape"_s);
    EXPECT_TRUE(waitFor([this] { return !overlayIsUp(); }));
    EXPECT_EQ(files().size(), 1);
}

class FrameMenuTest : public ToolbarTest,
                      public testing::WithParamInterface<std::pair<const char *, const char *>> { };

TEST_P(FrameMenuTest, aStyleChosenInTheMenuIsAroundThePicture)
{
    annotate(1, selected, {{u"defaultFrameBackground"_s, u"newspaper"_s}});
    use(u"frame"_s);
    use(u"frameBackground"_s);
    use(QString::fromUtf8(GetParam().first));
    press(u"Return"_s);
    const QImage picture = savedPicture();
    ASSERT_EQ(picture.size(), QSize(300 + 120, 200 + 36 + 120));

    // The same by the settings.
    set({{u"defaultShowFrame"_s, u"true"_s},
         {u"defaultFrameBackground"_s, QLatin1StringView(GetParam().second)}});
    ASSERT_TRUE(QFile::remove(files().first()));
    screen->placePointer({2, 2});
    openOverlay();
    dragPoints(selected.topLeft(), selected.topLeft() + QPoint(300, 200));
    press(u"Return"_s);
    EXPECT_EQ(differingPixels(savedPicture(), picture), 0);
}

INSTANTIATE_TEST_SUITE_P(Styles, FrameMenuTest,
                         testing::Values(std::pair{"Auto", "dominantColor"},
                                         std::pair{"Sombre", "darkSlate"},
                                         std::pair{"Clair", "light"}, std::pair{"Océan", "ocean"},
                                         std::pair{"Couchant", "sunset"}));

TEST_F(ToolbarTest, theNewspaperIsChosenInTheMenuToo)
{
    annotate(1, selected);
    use(u"frame"_s);
    use(u"frameBackground"_s);
    use(u"Journal"_s);
    press(u"Return"_s);

    const QImage picture = savedPicture(); // another page each time
    ASSERT_EQ(picture.size(), QSize(300 + 120, 200 + 36 + 120));
    EXPECT_GT(qGray(picture.pixel(5, 5)), 180) << "paper";
}

TEST_F(ToolbarTest, theFrameOfThePreferencesIsTurnedOffByItsSwitch)
{
    annotate(1, selected, {{u"defaultShowFrame"_s, u"true"_s}});
    EXPECT_TRUE(controls().find(u"frameBackground"_s));
    use(u"frame"_s);
    EXPECT_TRUE(waitFor([this] { return !controls().shows(u"frameBackground"_s); }));
    press(u"Return"_s);

    expectSaved();
}

TEST_F(ToolbarTest, aPressElsewhereClosesTheMenuAndDoesNothingElse)
{
    annotate(1, selected, {{u"defaultShowFrame"_s, u"true"_s}});
    use(u"numberedPoint"_s);
    use(u"frameBackground"_s);
    ASSERT_TRUE(controls().find(u"Océan"_s));
    clickPoint({700, 600});
    EXPECT_TRUE(waitFor([this] { return !controls().shows(u"Océan"_s); }));

    use(u"frameBackground"_s);
    ASSERT_TRUE(controls().find(u"Océan"_s));
    press(u"Escape"_s);
    EXPECT_TRUE(waitFor([this] { return !controls().shows(u"Océan"_s); }));
    EXPECT_TRUE(overlayIsUp());
    const auto undo = controls().find(u"undo"_s);
    EXPECT_TRUE(undo && !undo->isEnabled) << "no point was placed";
}

TEST_F(ToolbarTest, theStripIsReachedAndUsedByKeyboard)
{
    annotate(1, selected);
    press(u"Tab"_s);
    const auto focused = [this] {
        for (const AccessibleControl &control : controls().all()) {
            if (control.isFocused && control.role != u"filler"_s)
                return control.name;
        }
        return QString();
    };
    EXPECT_TRUE(waitFor([&] { return focused() == u"selection"_s; })) << focused().toStdString();
    press(u"Tab"_s);
    press(u"space"_s);
    EXPECT_TRUE(waitFor([&] { return isChecked(u"arrow"_s); }));
    press(u"Return"_s);

    EXPECT_EQ(differingPixels(expectedWith({}), savedPicture()), 0) << "Return always confirms";
}

} // namespace
} // namespace lumacap::harness
