#include "StandInCompositor.h"
#include "platform/wayland/Connection.h"
#include "platform/wayland/Outputs.h"
#include "platform/wlroots/ScreencopyScreenCapture.h"

#include <QCoroTask>
#include <QTest>

#include <gtest/gtest.h>

#include <cstring>

#include <protocols/wlr-screencopy-unstable-v1.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::wlroots {

namespace {

/// The program's side: connected to the stand-in.
struct Client {
    std::unique_ptr<wayland::Connection> connection =
        std::move(wayland::Connection::open().value());
    wayland::Outputs outputs{*connection};
    ScreencopyScreenCapture capture{*connection, outputs};

    Result<QImage> grab()
    {
        return QCoro::waitFor(capture.grab(wayland::displayIdOf(u"STAND-IN"), QSize(1, 1)));
    }
};

QByteArray bytesOf(std::initializer_list<std::uint32_t> pixels)
{
    QByteArray bytes;
    for (const std::uint32_t pixel : pixels)
        bytes.append(reinterpret_cast<const char *>(&pixel), sizeof pixel);
    return bytes;
}

/// Red and green above blue and white, in the format XRGB8888.
QByteArray fourColours()
{
    return bytesOf({0xff0000, 0x00ff00, 0x0000ff, 0xffffff});
}

std::vector<QRgb> pixelsOf(const QImage &picture)
{
    std::vector<QRgb> pixels;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            pixels.push_back(picture.pixel(x, y));
    }
    return pixels;
}

constexpr QRgb red = 0xffff0000;
constexpr QRgb green = 0xff00ff00;
constexpr QRgb blue = 0xff0000ff;
constexpr QRgb white = 0xffffffff;

} // namespace

class ScreencopyVersion : public testing::TestWithParam<std::uint32_t> { };

TEST_P(ScreencopyVersion, givesThePictureWithThePointer)
{
    const StandInCompositor compositor({.version = GetParam(), .bytes = fourColours()});
    Client client;

    const auto picture = client.grab();

    ASSERT_TRUE(picture.has_value());
    EXPECT_EQ(picture->format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(pixelsOf(*picture), (std::vector{red, green, blue, white}));
    EXPECT_TRUE(compositor.pointerAsked());
    EXPECT_EQ(compositor.copiesAsked(), 1);
}

INSTANTIATE_TEST_SUITE_P(Screencopy, ScreencopyVersion, testing::Values(1, 2, 3),
                         [](const auto &version) { return "V" + std::to_string(version.param); });

TEST(Screencopy, namesTheDisplays)
{
    const StandInCompositor compositor({});
    Client client;

    const auto displays = QCoro::waitFor(client.capture.displays());

    ASSERT_TRUE(displays.has_value());
    EXPECT_EQ(*displays, (std::vector{DisplayInfo{wayland::displayIdOf(u"STAND-IN"), 2, 2}}));
}

TEST(Screencopy, leavesOutWhatFollowsTheRows)
{
    const StandInCompositor compositor(
        {.bytesPerLine = 12,
         .bytes = bytesOf({0xff0000, 0x00ff00, 0x123456, 0x0000ff, 0xffffff, 0x123456})});
    Client client;

    EXPECT_EQ(pixelsOf(client.grab().value()), (std::vector{red, green, blue, white}));
}

TEST(Screencopy, readsRowsThatFillNoWholeWords)
{
    const StandInCompositor compositor({.format = WL_SHM_FORMAT_BGR888,
                                        .size = {1, 2},
                                        .bytesPerLine = 3,
                                        .bytes = QByteArray::fromHex("ff00000000ff")});
    Client client;

    EXPECT_EQ(pixelsOf(client.grab().value()), (std::vector{red, blue}));
}

TEST(Screencopy, turnsOverWhatIsUpsideDown)
{
    const StandInCompositor compositor({.bytes = fourColours(), .isUpsideDown = true});
    Client client;

    EXPECT_EQ(pixelsOf(client.grab().value()), (std::vector{blue, white, red, green}));
}

TEST(Screencopy, turnsThePictureOfARotatedOutput)
{
    const StandInCompositor compositor(
        {.bytes = fourColours(), .transform = WL_OUTPUT_TRANSFORM_90});
    Client client;

    EXPECT_EQ(pixelsOf(client.grab().value()), (std::vector{blue, red, white, green}));
}

TEST(Screencopy, knowsNoDisplayThatIsNotThere)
{
    const StandInCompositor compositor({});
    Client client;

    const auto picture = QCoro::waitFor(client.capture.grab(DisplayId{7}, QSize(1, 1)));

    ASSERT_FALSE(picture.has_value());
    EXPECT_EQ(picture.error().description, u"the display has been unplugged"_s);
}

struct Fault {
    const char *name;
    Behaviour behaviour;
    QString description;
};

class ScreencopyFault : public testing::TestWithParam<Fault> { };

TEST_P(ScreencopyFault, isAFailureInPlainWords)
{
    const StandInCompositor compositor(GetParam().behaviour);
    Client client;

    const auto picture = client.grab();

    ASSERT_FALSE(picture.has_value());
    EXPECT_EQ(picture.error().description, GetParam().description);
}

namespace {

const QString unknownFormat = u"the display's pixels are of an unknown format"_s;
const QString notCopied = u"the compositor could not copy the display"_s;

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Where, ScreencopyFault,
    testing::Values(
        Fault{"ItRefuses", {.answer = Answer::Refuses}, notCopied},
        Fault{"ItIsReadyUnasked", {.answer = Answer::IsReadyUnasked}, notCopied},
        Fault{"TheOutputGoes",
              {.answer = Answer::LosesTheOutput},
              u"the display has been unplugged"_s},
        Fault{"TheConnectionEnds",
              {.answer = Answer::EndsTheConnection},
              u"the compositor has gone"_s},
        Fault{"ItHasOtherMemoryOnly", {.answer = Answer::CopiesToOthersMemoryOnly}, unknownFormat},
        Fault{"TheFormatIsUnknown", {.format = WL_SHM_FORMAT_NV12}, unknownFormat},
        Fault{"ThePictureIsEmpty", {.size = {0, 2}}, unknownFormat},
        Fault{"TheRowsAreTooShort", {.size = {3, 2}}, unknownFormat},
        Fault{"ThePictureIsBeyondAllMeasure", {.size = {2, 0x7fffffff}}, unknownFormat},
        Fault{"TheRowsAreBeyondAllMeasure", {.bytesPerLine = 0xfffffff8}, unknownFormat}),
    [](const auto &fault) { return fault.param.name; });

TEST(Screencopy, waitsNoLongerThanItsLimitForACompositorThatIsSilent)
{
    const StandInCompositor compositor({.answer = Answer::IsSilent});
    const Client client;
    const auto manager = client.connection->bind(zwlr_screencopy_manager_v1_interface, 3,
                                                 &zwlr_screencopy_manager_v1_destroy);
    const auto memory = client.connection->bind(wl_shm_interface, 1, &wl_shm_destroy);
    ScreencopyFrame frame(*client.connection, *memory,
                          wayland::owned(zwlr_screencopy_manager_v1_capture_output(
                                             manager.get(), 1, client.outputs.all().front().proxy),
                                         &zwlr_screencopy_frame_v1_destroy),
                          ScreencopyFrame::Copy::Now, 100ms);

    ASSERT_TRUE(QTest::qWaitFor([&frame] { return frame.ended().isFinished(); }, 20000));

    EXPECT_EQ(frame.takePicture().error().description, u"the compositor does not answer"_s);
}

TEST(ScreencopySettling, endsWhenNothingIsDrawnAnyMore)
{
    const StandInCompositor compositor({.drawings = 4});
    Client client;

    QCoro::waitFor(client.capture.settle());

    EXPECT_EQ(compositor.copiesAsked(), 5); // the last of them without an answer
    EXPECT_FALSE(compositor.pointerAsked());
}

TEST(ScreencopySettling, endsAlsoWhereSomethingAlwaysMoves)
{
    const StandInCompositor compositor({.drawings = 1000000});
    Client client;

    QCoro::waitFor(client.capture.settle());

    EXPECT_GT(compositor.copiesAsked(), 1);
}

TEST(ScreencopySettling, endsWhereTheCompositorDoesNotTellWhatIsDrawn)
{
    const StandInCompositor compositor({.version = 1});
    Client client;

    QCoro::waitFor(client.capture.settle());

    EXPECT_EQ(compositor.copiesAsked(), 0);
}

} // namespace lumacap::wlroots
