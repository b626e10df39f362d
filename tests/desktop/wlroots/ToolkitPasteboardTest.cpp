// The clipboard of a compositor that lets only the program with the focus fill it. sway has such a
// clipboard too, and lets others look at it.
#include "SwayAgentFixture.h"
#include "harness/Captures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

const QByteArray refusal = "lumacap: nothing was copied: this desktop lets only the program whose "
                           "window has the keyboard fill the clipboard; a file can be saved "
                           "instead\n";

/// Whether a window of the program's is the focused one of sway's tree.
bool isFocused(const QJsonObject &node)
{
    if (node[u"focused"_s].toBool() && node[u"app_id"_s] == u"app.lumacap.Lumacap"_s)
        return true;
    const QJsonArray inner = node[u"nodes"_s].toArray();
    const QJsonArray floating = node[u"floating_nodes"_s].toArray();
    const auto leadsToIt = [](const QJsonValue &child) { return isFocused(child.toObject()); };
    return std::ranges::any_of(inner, leadsToIt) || std::ranges::any_of(floating, leadsToIt);
}

struct ToolkitPasteboardTest : SwayAgentFixture {
    void SetUp() override
    {
        startDesktop();
        desktop->set("LUMACAP_PASTEBOARD", "toolkit");
    }

    /// Opens the overlay, where it has the keyboard, and selects.
    void select(const QRect &area)
    {
        openOverlay();
        desktop->input().drag(area.topLeft(), area.bottomRight() + QPoint(1, 1));
    }
    void copySelection()
    {
        select({200, 150, 300, 200});
        desktop->input().press({evdev::enter});
        ASSERT_TRUE(copies({300, 200}));
    }
    void openPreferences()
    {
        ASSERT_TRUE(agent->activate(u"preferences"_s));
        ASSERT_TRUE(waitFor([this] {
            return isFocused(QJsonDocument::fromJson(desktop->answer(u"get_tree"_s)).object());
        }));
    }
    /// Another program fills the clipboard.
    void copyWords()
    {
        const QStringList command{u"wl-copy"_s, u"--foreground"_s, u"--type"_s, u"text/plain"_s,
                                  u"words"_s};
        desktop->start(u"copy"_s, command);
        ASSERT_TRUE(waitFor([this] { return hasWords(); }));
    }
    bool hasWords() { return desktop->clipboardBytes("text/plain", usualLimit) == "words"; }
    /// Whether the clipboard comes to have a picture of this size that is also in the latest file:
    /// two of the same second share one.
    bool copies(QSize size)
    {
        return waitFor([&] {
            const QImage copied = onClipboard();
            return copied.size() == size && !files().isEmpty()
                && differingPixels(pictureIn(*desktop, files().last()), copied) == 0;
        });
    }
    QImage onClipboard()
    {
        if (!desktop->clipboardTypes().contains("image/png"))
            return {};
        return readImage(*desktop, desktop->clipboardBytes("image/png", usualLimit),
                         ImageKind::Png);
    }
};

struct ToolkitPasteboardByOverlay : ToolkitPasteboardTest,
                                    testing::WithParamInterface<const char *> { };

TEST_P(ToolkitPasteboardByOverlay, copiesTheConfirmedSelectionInEveryType)
{
    desktop->set("LUMACAP_OVERLAY_SURFACE", GetParam());
    startAgent();

    copySelection();

    const QList<QByteArray> types = desktop->clipboardTypes();
    EXPECT_THAT(types,
                testing::IsSupersetOf({"image/png", "image/jpeg", "image/bmp", "image/tiff"}));
    for (const QByteArray &type : types)
        EXPECT_FALSE(desktop->clipboardBytes(type.constData(), usualLimit).isEmpty())
            << type.toStdString();
    EXPECT_EQ(agent->process().errors(), QByteArray());
}

INSTANTIATE_TEST_SUITE_P(By, ToolkitPasteboardByOverlay,
                         testing::Values("layer-shell", "full-screen"), [](const auto &by) {
                             return std::string(by.param) == "full-screen" ? "FullScreenWindow"
                                                                           : "LayerShell";
                         });

TEST_F(ToolkitPasteboardTest, copiesWhatThePointerConfirms)
{
    writeSettings(*desktop,
                  {{u"saveToFile"_s, u"true"_s},
                   {u"saveDirectory"_s, desktop->folder(u"pictures"_s)},
                   {u"autoConfirmSelection"_s, u"true"_s}});
    startAgent();

    select({200, 150, 300, 200});

    EXPECT_TRUE(copies({300, 200}));
}

TEST_F(ToolkitPasteboardTest, takesTheClipboardFromOthersEachTime)
{
    startAgent();
    for (const QSize size : {QSize(300, 200), QSize(200, 100)}) {
        copyWords();
        select({{200, 150}, size});
        desktop->input().press({evdev::enter});
        EXPECT_TRUE(copies(size));
    }
}

TEST_F(ToolkitPasteboardTest, saysThatItCanNotCopyWithoutTheFocusAndLeavesTheClipboardAsItIs)
{
    copyWords();
    startAgent();

    ASSERT_TRUE(agent->activate(u"full-screen"_s));

    EXPECT_EQ(savedPicture().size(), QSize(1280, 800));
    EXPECT_TRUE(waitFor([this] { return agent->process().errors() == refusal; }));
    EXPECT_TRUE(hasWords());
    EXPECT_TRUE(agent->activate(u"preferences"_s)) << "the agent is up";
}

TEST_F(ToolkitPasteboardTest, ownsNothingAnyMoreWhenAnotherProgramCopies)
{
    startAgent();
    copySelection();
    copyWords();

    ASSERT_TRUE(agent->activate(u"full-screen"_s)); // no window of its own has the focus

    EXPECT_TRUE(waitFor([this] { return agent->process().errors() == refusal; }));
    EXPECT_TRUE(hasWords());
}

TEST_F(ToolkitPasteboardTest, whatItOwnsItFillsAnewWithoutTheFocus)
{
    startAgent();
    copySelection();

    ASSERT_TRUE(agent->activate(u"full-screen"_s));

    EXPECT_TRUE(copies({1280, 800}));
    EXPECT_EQ(agent->process().errors(), QByteArray());
}

TEST_F(ToolkitPasteboardTest, copiesWhileThePreferencesHaveTheFocus)
{
    startAgent();
    copyWords();
    openPreferences();

    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    ASSERT_TRUE(copies({1280, 800}));
    const QImage first = onClipboard();
    desktop->input().moveTo({1200, 700}); // which is in the next picture
    ASSERT_TRUE(agent->activate(u"full-screen"_s));
    EXPECT_TRUE(waitFor([&] { return differingPixels(first, onClipboard()) > 0; }));
    EXPECT_TRUE(copies({1280, 800}));
    EXPECT_EQ(agent->process().errors(), QByteArray());
}

TEST_F(ToolkitPasteboardTest, theClipboardIsEmptyWhenTheAgentHasEnded)
{
    startAgent();
    copySelection();

    ASSERT_TRUE(agent->activate(u"quit"_s));

    EXPECT_EQ(agent->process().waitForEnd(usualLimit), Ending{});
    EXPECT_EQ(agent->process().errors(), QByteArray());
    EXPECT_TRUE(waitFor([this] { return desktop->clipboardTypes().isEmpty(); }));
}

} // namespace
} // namespace lumacap::harness
