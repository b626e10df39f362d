#include "platform/wayland/Output.h"

#include <gmock/gmock.h>

#include <QRandomGenerator>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

using namespace Qt::StringLiterals;

namespace lumacap::wayland {

void PrintTo(const Output &output, std::ostream *stream)
{
    *stream << output.name.toStdString() << ' ' << output.pixels.width() << 'x'
            << output.pixels.height() << " as " << output.frame.width() << 'x'
            << output.frame.height() << " at " << output.frame.x() << ',' << output.frame.y();
}

namespace {

using testing::IsEmpty;

constexpr std::array scales{1.0, 1.1, 1.25, 1.5, 1.75, 2.0, 2.25, 2.5, 3.0};
constexpr std::array modes{QSize(640, 480),   QSize(1366, 768),  QSize(1920, 1080),
                           QSize(2256, 1504), QSize(3440, 1440), QSize(3840, 2160)};

template <class Choices>
auto oneOf(QRandomGenerator &random, const Choices &choices)
{
    return choices.at(random.bounded(static_cast<quint32>(choices.size())));
}

/// Outputs that touch or leave gaps but never overlap, anywhere, in any order; some on their side.
std::vector<Output> randomOutputs(QRandomGenerator &random)
{
    std::vector<Output> outputs;
    const bool isRow = random.bounded(2) == 0;
    int along = random.bounded(-5000, 1000);
    for (int count = random.bounded(1, 6); count > 0; --count) {
        QSize pixels = oneOf(random, modes);
        if (random.bounded(2) == 0)
            pixels.transpose();
        const double scale = oneOf(random, scales);
        const QSize size(static_cast<int>(pixels.width() / scale),
                         static_cast<int>(pixels.height() / scale));
        const int across = random.bounded(-2000, 2000);
        const QPoint place = isRow ? QPoint(along, across) : QPoint(across, along);
        outputs.push_back({u"DP-%1"_s.arg(count), pixels, QRect(place, size)});
        along += (isRow ? size.width() : size.height()) + random.bounded(2) * random.bounded(100);
    }
    std::ranges::shuffle(outputs, random);
    return outputs;
}

/// The outputs whose screens have this place of the compositor's.
std::vector<QString> namesAt(QPointF place, const std::vector<Output> &outputs)
{
    std::vector<QString> names;
    const std::vector<Screen> screens = screensOf(outputs);
    for (std::size_t index = 0; index < outputs.size(); ++index) {
        if (screens.at(index).frame.contains(globalPoint(place, outputs)))
            names.push_back(outputs.at(index).name);
    }
    return names;
}

/// Runs `check` on many arrangements of outputs, saying which one failed.
void forManyOutputs(const std::function<void(const std::vector<Output> &)> &check)
{
    QRandomGenerator random(20);
    for (int round = 0; round < 500; ++round) {
        const std::vector<Output> outputs = randomOutputs(random);
        SCOPED_TRACE(testing::PrintToString(outputs));
        check(outputs);
        if (testing::Test::HasFailure())
            return;
    }
}

TEST(Outputs, pointsTimesTheFactorAreTheNativePixelsExactly)
{
    forManyOutputs([](const std::vector<Output> &outputs) {
        const std::vector<DisplayInfo> displays = displaysOf(outputs);
        for (std::size_t index = 0; index < outputs.size(); ++index) {
            const double factor = outputs.at(index).backingFactor();
            EXPECT_EQ(displays.at(index).width * factor, outputs.at(index).pixels.width());
            EXPECT_EQ(displays.at(index).height * factor, outputs.at(index).pixels.height());
        }
    });
}

TEST(Outputs, theFactorIsTheScaleRoundedWithHalvesUp)
{
    const auto factorAt = [](double scale) {
        const QSize frame(static_cast<int>(3840 / scale), static_cast<int>(2160 / scale));
        return Output{u"DP-1"_s, {3840, 2160}, QRect({0, 0}, frame)}.backingFactor();
    };
    EXPECT_EQ(factorAt(1), 1);
    EXPECT_EQ(factorAt(1.25), 1);
    EXPECT_EQ(factorAt(1.5), 2);
    EXPECT_EQ(factorAt(2), 2);
    EXPECT_EQ(factorAt(2.25), 2);
    EXPECT_EQ(factorAt(2.5), 3);
    EXPECT_EQ(factorAt(3), 3);
    EXPECT_EQ(factorAt(0.5), 1);
    EXPECT_EQ((Output{u"DP-1"_s, {3840, 2160}, {}}.backingFactor()), 1);
}

TEST(Outputs, displaysAndScreensHaveTheirOrderAndTheirNumbers)
{
    forManyOutputs([](const std::vector<Output> &outputs) {
        const std::vector<DisplayInfo> displays = displaysOf(outputs);
        const std::vector<Screen> screens = screensOf(outputs);
        ASSERT_EQ(displays.size(), outputs.size());
        ASSERT_EQ(screens.size(), outputs.size());
        std::set<DisplayId> numbers;
        for (std::size_t index = 0; index < outputs.size(); ++index) {
            EXPECT_EQ(displays.at(index).displayID, displayIdOf(outputs.at(index).name));
            EXPECT_EQ(screens.at(index).number, displays.at(index).displayID);
            EXPECT_EQ(screens.at(index).backingScaleFactor, outputs.at(index).backingFactor());
            numbers.insert(displays.at(index).displayID);
        }
        EXPECT_EQ(numbers.size(), outputs.size());
    });
}

TEST(Outputs, theFirstScreensLowerLeftIsTheOrigin)
{
    forManyOutputs([](const std::vector<Output> &outputs) {
        const QSize size = outputs.front().frame.size();
        EXPECT_EQ(
            screensOf(outputs).front().frame,
            (Rect<Global>{
                {0, 0}, {static_cast<double>(size.width()), static_cast<double>(size.height())}}));
    });
}

TEST(Outputs, framesGoToWindowSpaceAndGlobalSpaceAndBack)
{
    forManyOutputs([](const std::vector<Output> &outputs) {
        const double height = outputs.front().frame.height();
        const std::vector<Screen> screens = screensOf(outputs);
        for (std::size_t index = 0; index < outputs.size(); ++index) {
            const QRect &frame = outputs.at(index).frame;
            const Rect<TopLeftGlobal> windows = topLeftFrame(frame, outputs);
            EXPECT_EQ(toGlobal(windows, height), screens.at(index).frame);
            const QPoint main = outputs.front().frame.topLeft();
            EXPECT_EQ(QRectF(windows.minX() + main.x(), windows.minY() + main.y(), windows.width(),
                             windows.height()),
                      QRectF(frame));
        }
    });
}

TEST(Outputs, everyCornersUnitIsOnItsOwnScreenAlone)
{
    forManyOutputs([](const std::vector<Output> &outputs) {
        for (const Output &output : outputs) {
            const QRect &frame = output.frame;
            for (const QPoint corner : {frame.topLeft(), frame.topRight(), frame.bottomLeft(),
                                        frame.bottomRight(), frame.center()}) {
                for (const double within : {0.0, 0.25, 0.99})
                    EXPECT_THAT(namesAt(QPointF(corner) + QPointF(within, within), outputs),
                                testing::ElementsAre(output.name));
            }
        }
    });
}

TEST(Outputs, whatIsBesideAllOutputsIsOnNoScreen)
{
    const std::vector<Output> outputs{{u"DP-1"_s, {1920, 1080}, {0, 0, 1920, 1080}},
                                      {u"DP-2"_s, {1920, 1080}, {2000, 0, 1920, 1080}}};
    for (const QPointF place : {QPointF(-0.1, 5), QPointF(1920, 5), QPointF(1999.9, 5),
                                QPointF(5, 1080), QPointF(5, -0.1)})
        EXPECT_THAT(namesAt(place, outputs), IsEmpty()) << place.x() << ',' << place.y();
}

TEST(Outputs, everyScreenIsItsOutput)
{
    forManyOutputs([](const std::vector<Output> &outputs) {
        const std::vector<Screen> screens = screensOf(outputs);
        for (std::size_t index = 0; index < outputs.size(); ++index)
            EXPECT_EQ(outputOf(screens.at(index), outputs), outputs.at(index));
    });
}

TEST(Outputs, aScreenThatHasChangedIsNoOutput)
{
    const std::vector<Output> before{{u"DP-1"_s, {1920, 1080}, {0, 0, 1920, 1080}},
                                     {u"DP-2"_s, {1920, 1080}, {1920, 0, 1920, 1080}}};
    std::vector<Output> moved = before;
    moved.back().frame.translate(0, 10);
    std::vector<Output> scaled = before;
    scaled.back().frame.setSize({960, 540});
    const Screen screen = screensOf(before).back();
    EXPECT_EQ(outputOf(screen, moved), std::nullopt);
    EXPECT_EQ(outputOf(screen, scaled), std::nullopt);
    EXPECT_EQ(outputOf(screen, {before.front()}), std::nullopt);
    EXPECT_EQ(outputOf(screen, {}), std::nullopt);
}

TEST(Outputs, thereMayBeNone)
{
    EXPECT_THAT(displaysOf({}), IsEmpty());
    EXPECT_THAT(screensOf({}), IsEmpty());
    EXPECT_EQ(topLeftFrame({1, 2, 3, 4}, {}), (Rect<TopLeftGlobal>{{1, 2}, {3, 4}}));
}

TEST(Outputs, aNumberIsTheSameInEveryProcess)
{
    EXPECT_EQ(displayIdOf(u"DP-1"), DisplayId{0x1dbad777});
    EXPECT_NE(displayIdOf(u"DP-1"), displayIdOf(u"DP-2"));
}

} // namespace

} // namespace lumacap::wayland
