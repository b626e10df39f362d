// The clipboard of compositors that let only the program with the focus fill it. GNOME is one when
// it runs no X server; KWin lets others fill it too, but not by this way.
#include "everywhere/EverywhereFixture.h"
#include "harness/Captures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/GnomeDesktop.h"
#include "harness/wayland/KWinDesktop.h"

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

constexpr QSize screen(1200, 700);

std::unique_ptr<TestDesktop> onKWin()
{
    auto desktop = std::make_unique<KWinDesktop>(KWinOptions{.size = screen});
    desktop->set("LUMACAP_PASTEBOARD", "toolkit");
    return desktop;
}

std::unique_ptr<TestDesktop> onGnome()
{
    return std::make_unique<GnomeDesktop>(
        GnomeOptions{.monitors = {screen}, .xServer = XServerInside::Absent});
}

constexpr auto text = "text/plain;charset=utf-8";
constexpr std::chrono::seconds awhile(4);

class FocusClipboard : public EverywhereFixture {
protected:
    /// Another program fills the clipboard, and stays for those who paste.
    void copyWords()
    {
        const QString script = u"wl-copy words && echo copied && exec sleep 1000"_s;
        // It needs the focus, which some desktops give now and then to none that comes.
        ASSERT_TRUE(waitFor([&] {
            const Process &copy = desktop().start(u"copy"_s, {u"sh"_s, u"-c"_s, script});
            if (waitFor([&copy] { return copy.output() == "copied\n"; }, awhile))
                return true;
            desktop().stop(copy);
            return false;
        }));
    }
    /// Whether others paste it. They need the focus, too.
    bool hasWords()
    {
        return waitFor([this] { return desktop().clipboardBytes(text, awhile) == "words"; });
    }
    void copySelection()
    {
        openOverlay();
        hands().drag({100, 100}, {402, 306});
        endOverlay(evdev::enter);
    }
    /// What `copySelection` copies.
    QImage selection() const { return shown({100, 100, 302, 206}); }
    /// Whether other programs paste it.
    bool isPasted()
    {
        return waitFor([this] {
            const QByteArray bytes = desktop().clipboardBytes("image/png", awhile);
            return !bytes.isEmpty()
                && differingPixels(selection(), readImage(desktop(), bytes, ImageKind::Png)) == 0;
        });
    }
};

TEST_P(FocusClipboard, hasTheConfirmedSelection)
{
    startAgent();

    copySelection();

    EXPECT_TRUE(isPasted());
    EXPECT_EQ(agent().process().errors(), QByteArray());
}

TEST_P(FocusClipboard, isTakenFromOthers)
{
    copyWords();
    ASSERT_TRUE(hasWords());
    startAgent();

    copySelection();

    EXPECT_TRUE(isPasted());
    EXPECT_THAT(desktop().clipboardTypes(), testing::Not(testing::Contains(text)));
}

TEST_P(FocusClipboard, staysAsItIsWithoutTheFocus)
{
    copyWords();
    ASSERT_TRUE(hasWords());
    startAgent();

    ASSERT_TRUE(agent().activate(u"full-screen"_s));

    EXPECT_TRUE(waitFor([this] { return files().size() == 1; }));
    EXPECT_TRUE(waitFor([this] {
        return agent().process().errors()
            == "lumacap: nothing was copied: this desktop lets only the program whose window has "
               "the keyboard fill the clipboard; a file can be saved instead\n";
    }));
    EXPECT_TRUE(hasWords());
    EXPECT_TRUE(agent().activate(u"preferences"_s)) << "the agent is up";
}

INSTANTIATE_TEST_SUITE_P(On, FocusClipboard,
                         testing::Values(DesktopMake{"KWin", &onKWin},
                                         DesktopMake{"GnomeWithoutXServer", &onGnome}),
                         [](const auto &make) { return make.param.name; });

class KeptClipboard : public FocusClipboard { };

TEST_P(KeptClipboard, outlivesTheAgent)
{
    startAgent();
    copySelection();
    ASSERT_TRUE(isPasted());

    EXPECT_EQ(agent().process().terminate(usualLimit), Ending{});

    EXPECT_TRUE(isPasted());
}

INSTANTIATE_TEST_SUITE_P(On, KeptClipboard,
                         testing::Values(DesktopMake{"GnomeWithoutXServer", &onGnome}),
                         [](const auto &make) { return make.param.name; });

} // namespace
} // namespace lumacap::harness
