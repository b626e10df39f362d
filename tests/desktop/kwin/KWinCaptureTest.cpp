#include "harness/Agent.h"
#include "harness/Input.h"
#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <QFile>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// The first display as the program takes it; null when it takes none.
QImage taken(KWinDesktop &desktop)
{
    const QString path = desktop.folder(u"pictures"_s) + u"/taken.png"_s;
    QFile::remove(path);
    const Answer said = desktop.ask(program({u"full-screen"_s, u"--output"_s, path}));
    EXPECT_EQ(said.ending, Ending{}) << said.errors.toStdString();
    return QImage(path);
}

/// Whether the program takes what another one sees, pixel for pixel, with the pointer. The display
/// has `pixels`, as it is turned.
void expectSameAsSeen(KWinDesktop &desktop, const QString &output, const QSize &pixels)
{
    const QImage noise = noisePicture(pixels);
    desktop.paint(output, noise);
    constexpr qsizetype pointersPixels = 48 * 48;
    require("the noise",
            [&] { return differingPixels(noise, desktop.look(output)) <= pointersPixels; });
    QImage seen;
    QImage picture;
    // The pointer comes and takes its shape in its own time.
    require("a display that rests while its picture is taken", [&] {
        seen = desktop.look(output);
        picture = taken(desktop);
        return differingPixels(seen, desktop.look(output)) == 0;
    });
    EXPECT_EQ(picture.size(), pixels);
    EXPECT_EQ(differingPixels(seen, picture), 0);
}

class KWinScale : public testing::TestWithParam<double> { };

TEST_P(KWinScale, aPictureHasTheDisplaysOwnPixels)
{
    KWinDesktop desktop({.size = {960, 600}, .scale = GetParam()});
    const TestOutput output = desktop.outputs().front();
    expectSameAsSeen(desktop, output.name, output.pixels);
}

INSTANTIATE_TEST_SUITE_P(KWinCaptureTest, KWinScale, testing::Values(1.0, 1.25, 1.5, 2.0),
                         [](const auto &scale) {
                             return "at" + std::to_string(static_cast<int>(scale.param * 100));
                         });

TEST(KWinCaptureTest, aTurnedDisplayIsTakenAsItIsSeen)
{
    KWinDesktop desktop({.size = {960, 600}});
    const QString name = desktop.outputs().front().name;
    desktop.configure({u"output."_s + name + u".rotation.left"_s});
    require("the turn", [&] { return desktop.look(name).size() == QSize(600, 960); });
    expectSameAsSeen(desktop, name, {600, 960});
}

TEST(KWinCaptureTest, aScaleThatCutsPixelsInTwoStillGivesAPicture)
{
    KWinDesktop desktop({.size = {1920, 1080}});
    const QString name = desktop.outputs().front().name;
    desktop.configure({u"output."_s + name + u".scale.2.25"_s});
    require("the scale", [&] { return desktop.outputs().front().frame.width() < 1000; });
    const QSize size = taken(desktop).size();
    EXPECT_NEAR(size.width(), 1920, 2);
    EXPECT_NEAR(size.height(), 1080, 2);
}

TEST(KWinCaptureTest, theFirstDisplayIsTheOneThatItsPersonPutsFirst)
{
    KWinDesktop desktop({.size = {960, 600}, .outputs = 2});
    const std::vector<TestOutput> outputs = desktop.outputs();
    ASSERT_EQ(outputs.size(), 2U);
    for (const TestOutput &output : outputs) {
        const QImage noise = noisePicture(output.pixels, output.frame.x() == 0 ? 1 : 2);
        desktop.paint(output.name, noise);
    }
    desktop.configure({u"output."_s + outputs[1].name + u".scale.2"_s});
    desktop.configure({u"output."_s + outputs[1].name + u".priority.1"_s,
                       u"output."_s + outputs[0].name + u".priority.2"_s});
    EXPECT_TRUE(waitFor(
        [&] { return differingPixels(desktop.look(outputs[1].name), taken(desktop)) == 0; }));
}

TEST(KWinCaptureTest, whereKWinTakesNoPicturesThereIsAPlainFailure)
{
    // Without the service's name the program looks for other ways, and this desktop has none.
    KWinDesktop desktop({.size = {960, 600}});
    desktop.set("LUMACAP_SCREEN_CAPTURE", "none");
    const QString path = desktop.folder(u"pictures"_s) + u"/none.png"_s;
    const Answer said = desktop.ask(program({u"full-screen"_s, u"--output"_s, path}));
    EXPECT_EQ(said.ending, Ending{.code = 1});
    EXPECT_FALSE(QFile::exists(path));
}

} // namespace
} // namespace lumacap::harness
