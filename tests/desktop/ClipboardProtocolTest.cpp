#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/PaintedScreen.h"
#include "harness/WaitFor.h"
#include "harness/XConnection.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <ostream>

#include <xcb/xcb.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// An agent whose capture is on the clipboard, and a client that speaks the protocol by hand.
struct ClipboardProtocolTest : testing::Test {
    void SetUp() override
    {
        agent.requireReady();
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([this] { return client.selectionOwner("CLIPBOARD") != 0; }));
    }

    std::uint32_t newWindow() const
    {
        const std::uint32_t window = xcb_generate_id(client.raw());
        xcb_create_window(client.raw(), XCB_COPY_FROM_PARENT, window, client.root(), 0, 0, 1, 1, 0,
                          XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
        return window;
    }

    /// Waits for the answer to a conversion; the property it names, 0 for a refusal.
    std::uint32_t answeredProperty() const
    {
        XReply<xcb_generic_event_t> event;
        const bool isAnswered = waitFor([&] {
            event.reset(xcb_poll_for_event(client.raw()));
            return event && (event->response_type & 0x7f) == XCB_SELECTION_NOTIFY;
        });
        if (!isAnswered)
            return 0;
        return reinterpret_cast<const xcb_selection_notify_event_t &>(*event).property;
    }

    PrivateDesktop desktop{smallScreen()};
    PaintedScreen screen{desktop.server().display(), noisePicture({640, 480})};
    Agent agent{desktop};
    XConnection client{desktop.server().display()};
};

TEST_F(ClipboardProtocolTest, aForgedNoticeOfLossIsNotBelieved)
{
    const std::uint32_t owner = client.selectionOwner("CLIPBOARD");
    xcb_selection_clear_event_t forged{};
    forged.response_type = XCB_SELECTION_CLEAR;
    forged.owner = owner;
    forged.selection = client.atom("CLIPBOARD");
    std::array<char, 32> wire{};
    std::memcpy(wire.data(), &forged, sizeof forged);
    xcb_send_event(client.raw(), 0, owner, XCB_EVENT_MASK_NO_EVENT, wire.data());
    client.finish();
    EXPECT_EQ(client.selectionOwner("CLIPBOARD"), owner);
    EXPECT_EQ(differingPixels(screen.expected(), clipboardPicture(desktop)), 0);
}

struct MultipleTest : ClipboardProtocolTest, testing::WithParamInterface<const char *> { };

TEST_P(MultipleTest, isAnsweredPairByPair)
{
    const std::uint32_t window = newWindow();
    const std::array pairs{client.atom("TIMESTAMP"),  client.atom("FIRST"),
                           client.atom("text/plain"), client.atom("SECOND"),
                           client.atom("TARGETS"),    client.atom("THIRD")};
    xcb_change_property(client.raw(), XCB_PROP_MODE_REPLACE, window, client.atom("PAIRS"),
                        client.atom(GetParam()), 32, pairs.size(), pairs.data());
    xcb_convert_selection(client.raw(), window, client.atom("CLIPBOARD"), client.atom("MULTIPLE"),
                          client.atom("PAIRS"), XCB_CURRENT_TIME);
    client.finish();
    EXPECT_EQ(answeredProperty(), client.atom("PAIRS"));
    EXPECT_EQ(client.property(window, "FIRST").size(), 4);
    EXPECT_TRUE(client.property(window, "SECOND").isEmpty());
    EXPECT_GT(client.property(window, "THIRD").size(), 4);
    // The pair that is not served says so.
    auto answered = pairs;
    answered[3] = XCB_NONE;
    EXPECT_EQ(client.property(window, "PAIRS"),
              QByteArray(reinterpret_cast<const char *>(answered.data()), sizeof answered));
}

INSTANTIATE_TEST_SUITE_P(TypesOfThePairs, MultipleTest, testing::Values("ATOM_PAIR", "ATOM"),
                         [](const auto &type) { return std::string(type.param); });

} // namespace
} // namespace lumacap::harness
