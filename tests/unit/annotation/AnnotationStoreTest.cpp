#include "annotation/AnnotationStore.h"

#include "annotation/shapes/NumberedPointAnnotation.h"
#include "annotation/shapes/RectAnnotation.h"
#include "fakes/FakeDefaultsStore.h"
#include "fakes/FakeLoginItem.h"
#include "preferences/storage/PreferencesStorage.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

class AnnotationStoreTest : public testing::Test {
protected:
    std::unique_ptr<AnnotationStore> newStore() const
    {
        return std::make_unique<AnnotationStore>(m_preferences);
    }

    /// Adds a rectangle and returns its id.
    static QUuid addRect(AnnotationStore &store)
    {
        auto rect = std::make_unique<RectAnnotation>(Qt::red, 4, Rect<Canvas>{});
        const QUuid id = rect->id();
        store.add(std::move(rect));
        return id;
    }

    static std::vector<QUuid> idsOf(const AnnotationStore &store)
    {
        std::vector<QUuid> ids;
        for (const auto &annotation : store.annotations())
            ids.push_back(annotation->id());
        return ids;
    }

    FakeDefaultsStore m_defaults;
    FakeLoginItem m_loginItem;
    PreferencesStorage m_preferences{m_defaults, m_loginItem};
};

TEST_F(AnnotationStoreTest, startsEveryCaptureTheSame)
{
    const auto store = newStore();

    EXPECT_EQ(store->currentTool(), AnnotationTool::Selection);
    EXPECT_EQ(store->currentColor(), AnnotationColor::Red);
    EXPECT_EQ(store->currentThickness(), LineThickness::Medium);
    EXPECT_EQ(store->magnifierShape(), MagnifierShape::RoundedRect);
    EXPECT_EQ(store->magnifierZoom(), MagnifierZoom::X2);
    EXPECT_TRUE(store->annotations().empty());
    EXPECT_TRUE(store->undoStack().empty());
    EXPECT_EQ(store->selectedViewRect, std::nullopt);
    EXPECT_EQ(store->sourceAppName, std::nullopt);
    EXPECT_EQ(store->numberCounter, 0);
    EXPECT_FALSE(store->confirmCallback);
    EXPECT_FALSE(store->cancelCallback);
    EXPECT_FALSE(store->needsRedraw);
}

TEST_F(AnnotationStoreTest, withNothingStoredShowsNoFrameAndTheDominantColour)
{
    EXPECT_FALSE(newStore()->showFrame());
    EXPECT_EQ(newStore()->frameBackground(), FrameBackgroundStyle::DominantColor);
}

TEST_F(AnnotationStoreTest, startsWithTheStoredFrame)
{
    ASSERT_TRUE(m_defaults.set(u"defaultShowFrame"_s, true));
    ASSERT_TRUE(m_defaults.set(u"defaultFrameBackground"_s, u"ocean"_s));

    EXPECT_TRUE(newStore()->showFrame());
    EXPECT_EQ(newStore()->frameBackground(), FrameBackgroundStyle::Ocean);
}

TEST_F(AnnotationStoreTest, aStoredTextThatNamesNoStyleIsTheDominantColour)
{
    for (const DefaultsValue &stored : {DefaultsValue(u"Ocean"_s), DefaultsValue(QString()),
                                        DefaultsValue(true), DefaultsValue(QByteArray("ocean"))}) {
        ASSERT_TRUE(m_defaults.set(u"defaultFrameBackground"_s, stored));
        EXPECT_EQ(newStore()->frameBackground(), FrameBackgroundStyle::DominantColor);
    }
}

TEST_F(AnnotationStoreTest, keepsItsFrameWhenTheSettingsChangeAndNeverWritesThem)
{
    const auto store = newStore();
    ASSERT_TRUE(m_defaults.set(u"defaultShowFrame"_s, true));
    ASSERT_TRUE(m_defaults.set(u"defaultFrameBackground"_s, u"light"_s));

    EXPECT_FALSE(store->showFrame());
    EXPECT_EQ(store->frameBackground(), FrameBackgroundStyle::DominantColor);
    store->setFrameBackground(FrameBackgroundStyle::Sunset);
    store->setShowFrame(false);
    EXPECT_EQ(m_defaults.string(u"defaultFrameBackground"_s), u"light"_s);
    EXPECT_TRUE(m_defaults.boolean(u"defaultShowFrame"_s));
}

TEST_F(AnnotationStoreTest, undoOnAFreshStoreChangesNothingAndAsksForNoRedraw)
{
    const auto store = newStore();
    testing::MockFunction<void()> redraw;
    store->needsRedraw = redraw.AsStdFunction();
    EXPECT_CALL(redraw, Call).Times(0);
    int changes = 0;
    QObject::connect(store.get(), &AnnotationStore::objectWillChange, store.get(),
                     [&changes] { ++changes; });

    store->undo();

    EXPECT_TRUE(store->annotations().empty());
    EXPECT_EQ(changes, 0);
}

TEST_F(AnnotationStoreTest, undoTakesTheLastAddedUntilNothingIsLeft)
{
    const auto store = newStore();
    const QUuid first = addRect(*store);
    const QUuid second = addRect(*store);
    const QUuid third = addRect(*store);
    EXPECT_EQ(idsOf(*store), (std::vector{first, second, third}));
    EXPECT_EQ(store->undoStack(), (std::vector{first, second, third}));

    store->undo();
    store->undo();
    EXPECT_EQ(idsOf(*store), std::vector{first});
    EXPECT_EQ(store->undoStack(), std::vector{first});
    store->undo();
    EXPECT_TRUE(store->annotations().empty());
    EXPECT_TRUE(store->undoStack().empty());
    store->undo();
    EXPECT_TRUE(store->annotations().empty());
}

TEST_F(AnnotationStoreTest, addAndUndoAskForARedrawOnceEachAfterTheChange)
{
    const auto store = newStore();
    std::vector<std::size_t> sizesSeen;
    store->needsRedraw = [&] { sizesSeen.push_back(store->annotations().size()); };

    addRect(*store);
    addRect(*store);
    store->undo();

    EXPECT_THAT(sizesSeen, testing::ElementsAre(1, 2, 1));
}

TEST_F(AnnotationStoreTest, numbersGivenStayGivenAfterUndo)
{
    const auto store = newStore();
    const auto addPoint = [&] {
        store->add(std::make_unique<NumberedPointAnnotation>(Qt::red, Point<Canvas>{},
                                                             ++store->numberCounter));
    };
    addPoint();
    addPoint();
    store->undo();
    addPoint();

    const auto &last = dynamic_cast<const NumberedPointAnnotation &>(*store->annotations().back());
    EXPECT_EQ(last.number, 3);
    EXPECT_EQ(store->annotations().size(), 2U);
}

TEST_F(AnnotationStoreTest, announcesAWriteBeforeTheValueIsInPlace)
{
    const auto store = newStore();
    std::vector<std::pair<AnnotationTool, AnnotationTool>> oldAndNew;
    QObject::connect(
        store.get(), &AnnotationStore::currentToolWillChange, store.get(),
        [&](AnnotationTool next) { oldAndNew.emplace_back(store->currentTool(), next); });

    store->setCurrentTool(AnnotationTool::Blur);
    store->setCurrentTool(AnnotationTool::Blur);

    EXPECT_THAT(oldAndNew,
                testing::ElementsAre(std::pair(AnnotationTool::Selection, AnnotationTool::Blur),
                                     std::pair(AnnotationTool::Blur, AnnotationTool::Blur)));
    EXPECT_EQ(store->currentTool(), AnnotationTool::Blur);
}

TEST_F(AnnotationStoreTest, announcesTheListOfAnnotationsBeforeItChanges)
{
    const auto store = newStore();
    std::vector<std::size_t> sizesBefore;
    QObject::connect(store.get(), &AnnotationStore::annotationsWillChange, store.get(),
                     [&] { sizesBefore.push_back(store->annotations().size()); });

    addRect(*store);
    addRect(*store);
    store->undo();

    EXPECT_THAT(sizesBefore, testing::ElementsAre(0, 1, 2));
}

TEST_F(AnnotationStoreTest, aSubscriptionOnTheMainLoopGetsTheValueOnTheNextTurn)
{
    const auto store = newStore();
    std::vector<std::pair<AnnotationTool, AnnotationTool>> inPlaceAndSent;
    QObject::connect(
        store.get(), &AnnotationStore::currentToolWillChange, store.get(),
        [&](AnnotationTool sent) { inPlaceAndSent.emplace_back(store->currentTool(), sent); },
        Qt::QueuedConnection);

    store->setCurrentTool(AnnotationTool::Arrow);
    store->setCurrentTool(AnnotationTool::Text);
    EXPECT_TRUE(inPlaceAndSent.empty());
    QCoreApplication::sendPostedEvents();

    EXPECT_THAT(inPlaceAndSent,
                testing::ElementsAre(std::pair(AnnotationTool::Text, AnnotationTool::Arrow),
                                     std::pair(AnnotationTool::Text, AnnotationTool::Text)));
}

TEST_F(AnnotationStoreTest, announcesAnyChangeBeforeItIsInPlace)
{
    const auto store = newStore();
    std::vector<std::pair<AnnotationTool, std::size_t>> seen;
    QObject::connect(store.get(), &AnnotationStore::objectWillChange, store.get(),
                     [&] { seen.emplace_back(store->currentTool(), store->annotations().size()); });

    store->setCurrentTool(AnnotationTool::Blur);
    addRect(*store);
    store->undo();

    EXPECT_THAT(seen,
                testing::ElementsAre(std::pair(AnnotationTool::Selection, 0U),
                                     std::pair(AnnotationTool::Blur, 0U),
                                     std::pair(AnnotationTool::Blur, 1U)));
}

TEST_F(AnnotationStoreTest, everyPublishedPropertyAnnouncesItself)
{
    const auto store = newStore();
    int changes = 0;
    QObject::connect(store.get(), &AnnotationStore::objectWillChange, store.get(),
                     [&changes] { ++changes; });

    store->setCurrentTool(AnnotationTool::Text);
    store->setCurrentColor(AnnotationColor::Blue);
    store->setCurrentThickness(LineThickness::Thick);
    store->setMagnifierShape(MagnifierShape::Circle);
    store->setMagnifierZoom(MagnifierZoom::X4);
    store->setShowFrame(true);
    store->setFrameBackground(FrameBackgroundStyle::Light);
    EXPECT_EQ(changes, 7);
    addRect(*store);
    EXPECT_EQ(changes, 8);
    store->undo();
    EXPECT_EQ(changes, 9);

    EXPECT_EQ(store->currentColor(), AnnotationColor::Blue);
    EXPECT_EQ(store->currentThickness(), LineThickness::Thick);
    EXPECT_EQ(store->magnifierShape(), MagnifierShape::Circle);
    EXPECT_EQ(store->magnifierZoom(), MagnifierZoom::X4);
    EXPECT_TRUE(store->showFrame());
    EXPECT_EQ(store->frameBackground(), FrameBackgroundStyle::Light);
}

TEST_F(AnnotationStoreTest, plainPropertiesAnnounceNothing)
{
    const auto store = newStore();
    int changes = 0;
    QObject::connect(store.get(), &AnnotationStore::objectWillChange, store.get(),
                     [&changes] { ++changes; });

    store->selectedViewRect = Rect<Canvas>{{1, 2}, {3, 4}};
    store->sourceAppName = u"Editor"_s;
    store->numberCounter = 5;

    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace lumacap::tests
