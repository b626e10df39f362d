#include "harness/Clipboard.h"
#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/PaintedScreen.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <gmock/gmock.h>

#include <array>
#include <csignal>
#include <cstring>
#include <memory>
#include <ostream>

#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

const Ending cleanEnd{};

/// A window of no use but to own and ask for selections.
std::uint32_t newWindow(const XConnection &connection)
{
    const std::uint32_t window = xcb_generate_id(connection.raw());
    xcb_create_window(connection.raw(), XCB_COPY_FROM_PARENT, window, connection.root(), 0, 0, 1, 1,
                      0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    return window;
}

/// Asks for the clipboard's picture, as it is largest, in the property PICTURE of the window
/// returned.
std::uint32_t askForPicture(const XConnection &connection)
{
    const std::uint32_t window = newWindow(connection);
    xcb_convert_selection(connection.raw(), window, connection.atom("CLIPBOARD"),
                          connection.atom("image/bmp"), connection.atom("PICTURE"),
                          XCB_CURRENT_TIME);
    connection.finish();
    return window;
}

/// An agent whose capture is on the clipboard.
struct ClipboardTest : testing::Test {
    void start(const QSize &size = {640, 480})
    {
        desktop = std::make_unique<PrivateDesktop>(DesktopOptions{.server = {.size = size}});
        screen = std::make_unique<PaintedScreen>(desktop->server().display(), noisePicture(size));
        agent = std::make_unique<Agent>(*desktop);
        agent->requireReady();
        capture();
    }

    void capture()
    {
        ClipboardWatch watch(desktop->server().display());
        ASSERT_TRUE(agent->activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([&watch] { return watch.changes() > 0; }));
        ASSERT_TRUE(waitFor([this] { return clipboardTypes(*desktop).contains("image/png"); }));
    }

    void startClipboardManager()
    {
        desktop->start(u"manager"_s, {u"xfsettingsd"_s, u"--no-daemon"_s, u"--disable-wm-check"_s});
        ASSERT_TRUE(waitFor([this] { return desktop->selectionOwner("CLIPBOARD_MANAGER") != 0; }));
    }

    /// The clipboard is whole after its owner has gone.
    void expectOutlived()
    {
        EXPECT_EQ(differingPixels(screen->expected(), clipboardPicture(*desktop)), 0);
    }

    std::unique_ptr<PrivateDesktop> desktop;
    std::unique_ptr<PaintedScreen> screen;
    std::unique_ptr<Agent> agent;
};

TEST_F(ClipboardTest, offersThePictureInTheUsualTypes)
{
    start();
    EXPECT_THAT(clipboardTypes(*desktop),
                testing::IsSupersetOf({QByteArray("TARGETS"), QByteArray("TIMESTAMP"),
                                       QByteArray("MULTIPLE"), QByteArray("SAVE_TARGETS"),
                                       QByteArray("image/png"), QByteArray("image/jpeg"),
                                       QByteArray("image/bmp"), QByteArray("image/tiff"),
                                       QByteArray("application/x-qt-image")}));
}

struct TypeCase {
    const char *name;
    const char *type;
    ImageKind kind;
};

std::ostream &operator<<(std::ostream &stream, const TypeCase &type)
{
    return stream << type.type;
}

struct TypeTest : ClipboardTest, testing::WithParamInterface<TypeCase> { };

TEST_P(TypeTest, isReadByOtherPrograms)
{
    start();
    screen->paint(photographPicture({640, 480}));
    capture();
    const auto seen =
        readImage(*desktop, clipboardBytes(*desktop, GetParam().type), GetParam().kind);
    if (GetParam().kind == ImageKind::Jpeg)
        EXPECT_LT(meanDistance(screen->expected(), seen), 2.0);
    else
        EXPECT_EQ(differingPixels(screen->expected(), seen), 0);
}

INSTANTIATE_TEST_SUITE_P(Types, TypeTest,
                         testing::Values(TypeCase{"png", "image/png", ImageKind::Png},
                                         TypeCase{"jpeg", "image/jpeg", ImageKind::Jpeg},
                                         TypeCase{"tiff", "image/tiff", ImageKind::Tiff},
                                         TypeCase{"bmp", "image/bmp", ImageKind::Bmp}),
                         [](const auto &type) { return type.param.name; });

TEST_F(ClipboardTest, aTypeThatIsNotOfferedIsRefusedAtOnce)
{
    start();
    EXPECT_TRUE(clipboardBytes(*desktop, "text/plain").isEmpty());
    EXPECT_FALSE(clipboardPicture(*desktop).isNull());
}

TEST_F(ClipboardTest, aPictureLargerThanOneRequestArrivesWhole)
{
    start({3840, 2160});
    EXPECT_EQ(differingPixels(screen->expected(), clipboardPicture(*desktop)), 0);
}

TEST_F(ClipboardTest, aReaderThatDiesHalfWayHurtsNobody)
{
    start({3840, 2160});
    // Windows of one connection: with a connection for each, the server would give the numbers of
    // the dead to the living, and their answers with them.
    const XConnection readers(desktop->server().display());
    for (int death = 0; death < 8; ++death) {
        const std::uint32_t window = askForPicture(readers);
        // The odd ones live to see the picture announced.
        const bool isPatient = death % 2 == 1;
        ASSERT_TRUE(
            waitFor([&] { return !isPatient || !readers.property(window, "PICTURE").isEmpty(); }));
        xcb_destroy_window(readers.raw(), window);
        readers.finish();
    }
    EXPECT_EQ(differingPixels(screen->expected(), clipboardPicture(*desktop)), 0);
    EXPECT_FALSE(agent->process().ending());
}

TEST_F(ClipboardTest, aReaderThatNeverFetchesDoesNotStopOthers)
{
    start({3840, 2160});
    const XConnection sleeper(desktop->server().display());
    const std::uint32_t window = askForPicture(sleeper);
    ASSERT_TRUE(waitFor([&] { return !sleeper.property(window, "PICTURE").isEmpty(); }));
    EXPECT_EQ(differingPixels(screen->expected(), clipboardPicture(*desktop)), 0);
    ASSERT_TRUE(agent->activate(u"quit"_s));
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), cleanEnd);
}

TEST_F(ClipboardTest, aNewCaptureDoesNotSpoilThePictureBeingRead)
{
    start({3840, 2160});
    const QImage first = screen->expected();
    const Process reader(
        {u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-o"_s, u"-t"_s, u"image/png"_s},
        desktop->environment(), desktop->newLog(u"reader"_s));
    screen->paint(noisePicture({3840, 2160}, 7));
    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    ASSERT_EQ(reader.waitForEnd(usualLimit), cleanEnd);
    const QImage seen = readImage(*desktop, reader.output(), ImageKind::Png);
    EXPECT_TRUE(differingPixels(first, seen) == 0
                || differingPixels(screen->expected(), seen) == 0);
}

TEST_F(ClipboardTest, isLeftToTheNextOwner)
{
    start();
    desktop->start(u"owner"_s,
                   {u"sh"_s, u"-c"_s, u"echo text | xclip -selection clipboard -quiet"_s});
    EXPECT_TRUE(waitFor([this] { return clipboardBytes(*desktop, "STRING") == "text\n"; }));
    ASSERT_TRUE(agent->activate(u"quit"_s));
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), cleanEnd);
    EXPECT_EQ(clipboardBytes(*desktop, "STRING"), "text\n");
}

TEST_F(ClipboardTest, outlivesQuitWithAClipboardManager)
{
    start();
    startClipboardManager();
    ASSERT_TRUE(agent->activate(u"quit"_s));
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), cleanEnd);
    expectOutlived();
}

TEST_F(ClipboardTest, outlivesATerminationWithAClipboardManager)
{
    start({1920, 1080});
    startClipboardManager();
    agent->process().send(SIGTERM);
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), cleanEnd);
    expectOutlived();
}

TEST_F(ClipboardTest, isGoneWithTheAgentWithoutAClipboardManager)
{
    start();
    ASSERT_TRUE(agent->activate(u"quit"_s));
    EXPECT_EQ(agent->process().waitForEnd(std::chrono::seconds(3)), cleanEnd);
    EXPECT_EQ(desktop->selectionOwner("CLIPBOARD"), 0U);
}

TEST_F(ClipboardTest, aClipboardManagerThatNeverAnswersDoesNotKeepTheAgent)
{
    start();
    const XConnection manager(desktop->server().display());
    const std::uint32_t window = newWindow(manager);
    xcb_set_selection_owner(manager.raw(), window, manager.atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    manager.finish();
    ASSERT_TRUE(agent->activate(u"quit"_s));
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), cleanEnd);
}

TEST_F(ClipboardTest, aClipboardManagerThatAnswersManyTimesIsHeardOnce)
{
    start();
    const XConnection manager(desktop->server().display());
    xcb_set_selection_owner(manager.raw(), newWindow(manager), manager.atom("CLIPBOARD_MANAGER"),
                            XCB_CURRENT_TIME);
    manager.finish();
    ASSERT_TRUE(agent->activate(u"quit"_s));

    XReply<xcb_generic_event_t> event;
    ASSERT_TRUE(waitFor([&] {
        event.reset(xcb_poll_for_event(manager.raw()));
        return event && (event->response_type & 0x7f) == XCB_SELECTION_REQUEST;
    }));
    const auto &request = reinterpret_cast<const xcb_selection_request_event_t &>(*event);
    xcb_selection_notify_event_t answer{};
    answer.response_type = XCB_SELECTION_NOTIFY;
    answer.requestor = request.requestor;
    answer.selection = request.selection;
    answer.target = request.target;
    std::array<char, 32> wire{};
    std::memcpy(wire.data(), &answer, sizeof answer);
    for (int times = 0; times < 5; ++times)
        xcb_send_event(manager.raw(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
    manager.finish();
    EXPECT_EQ(agent->process().waitForEnd(usualLimit), cleanEnd);
}

} // namespace
} // namespace lumacap::harness
