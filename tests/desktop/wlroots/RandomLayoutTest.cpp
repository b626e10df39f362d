#include "SwayAgentFixture.h"
#include "harness/Captures.h"
#include "harness/WaitFor.h"

#include <QFile>
#include <QRandomGenerator>

#include <array>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr std::array scales{1.0, 1.25, 1.5, 2.0};
constexpr std::array sizes{QSize(640, 480), QSize(720, 600), QSize(800, 500)}; // in units

/// Two or three outputs in a row or a column, anywhere, one beside the other.
std::vector<SwayOutput> randomOutputs(QRandomGenerator &random)
{
    const bool isRow = random.bounded(2) == 0;
    QPoint place(random.bounded(-1000, 1000), random.bounded(-1000, 1000));
    std::vector<SwayOutput> outputs;
    for (int left = random.bounded(2, 4); left > 0; --left) {
        const QSize size = sizes.at(random.bounded(quint32{sizes.size()}));
        const double scale = scales.at(random.bounded(quint32{scales.size()}));
        outputs.push_back({(size.toSizeF() * scale).toSize(), scale, place});
        place += isRow ? QPoint(size.width(), random.bounded(-200, 200))
                       : QPoint(random.bounded(-200, 200), size.height());
    }
    return outputs;
}

/// The seed of a layout.
struct RandomLayoutTest : SwayAgentFixture, testing::WithParamInterface<int> { };

TEST_P(RandomLayoutTest, everyOutputComesBackPixelForPixel)
{
    QRandomGenerator random(static_cast<quint32>(GetParam()));
    startDesktop({.outputs = randomOutputs(random)});
    startAgent();
    for (const TestOutput &output : desktop->outputs()) {
        desktop->input().moveTo(output.frame.topLeft() + QPoint(5, 5));
        openOverlay(output.name);

        desktop->input().press({evdev::enter});

        const QRect aroundPointer(0, 0, 160, 160); // in pixels, at the highest scale
        EXPECT_EQ(differingOutside(aroundPointer, painted[output.name], savedPicture()), 0)
            << output.name.toStdString();
        ASSERT_TRUE(waitFor([&] { return showsPlainly(output.name); }));
        for (const QString &file : files())
            ASSERT_TRUE(QFile::remove(file));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomLayoutTest, testing::Range(1, 6));

} // namespace
} // namespace lumacap::harness
