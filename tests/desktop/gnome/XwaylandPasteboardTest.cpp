// The clipboard by way of an X server, which comes, goes and comes back. GNOME Shell starts one on
// demand only where systemd runs the session, so that a server of the tests' stands in for that.
#include "platform/gnome/XwaylandPasteboard.h"
#include "harness/PrivateDesktop.h"
#include "harness/WaitFor.h"
#include "platform/gnome/XServerStart.h"

#include <QCoreApplication>
#include <QCoroTask>
#include <QDir>

#include <gmock/gmock.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

class Words final : public PasteboardItem {
public:
    explicit Words(QByteArray words)
        : m_words(std::move(words))
    {
    }
    QList<QByteArray> types() const override { return {"text/words"}; }
    QByteArray bytes(const QByteArray & /*type*/) override { return m_words; }

private:
    QByteArray m_words;
};

std::unique_ptr<PrivateDesktop> desktopWithoutWindows()
{
    return std::make_unique<PrivateDesktop>(DesktopOptions{.windowManager = WindowManager::Nobody});
}

void useServerOf(const PrivateDesktop &desktop)
{
    qputenv("DISPLAY", desktop.environment().at("DISPLAY"));
}

/// What an X11 program pastes now, with the event loop turning.
QByteArray pasted(PrivateDesktop &desktop)
{
    const Process reader(
        {u"xclip"_s, u"-selection"_s, u"clipboard"_s, u"-t"_s, u"text/words"_s, u"-o"_s},
        desktop.environment(), desktop.newLog(u"xclip"_s));
    const bool hasEnded = waitFor(
        [&reader] {
            QCoreApplication::processEvents();
            return reader.ending().has_value();
        },
        std::chrono::seconds(5));
    return hasEnded ? reader.output() : QByteArray();
}

bool isPasted(PrivateDesktop &desktop, const QByteArray &words)
{
    return waitFor([&] { return pasted(desktop) == words; });
}

int openFiles()
{
    return static_cast<int>(QDir(u"/proc/self/fd"_s).count());
}

} // namespace

TEST(XwaylandPasteboard, asksForTheServerAtTheFirstCopy)
{
    const auto desktop = desktopWithoutWindows();
    useServerOf(*desktop);
    const int filesBefore = openFiles();

    gnome::XwaylandPasteboard pasteboard;
    QCoreApplication::processEvents();
    EXPECT_EQ(openFiles(), filesBefore);

    pasteboard.clearContents();
    pasteboard.write(std::make_unique<Words>("first"));
    EXPECT_TRUE(isPasted(*desktop, "first"));
}

TEST(XwaylandPasteboard, offersWhatWasWrittenLast)
{
    const auto desktop = desktopWithoutWindows();
    useServerOf(*desktop);
    gnome::XwaylandPasteboard pasteboard;

    pasteboard.write(std::make_unique<Words>("first"));
    pasteboard.write(std::make_unique<Words>("second"));
    EXPECT_TRUE(isPasted(*desktop, "second"));

    pasteboard.write(std::make_unique<Words>("third"));
    EXPECT_TRUE(isPasted(*desktop, "third"));
}

TEST(XwaylandPasteboard, findsTheNextServer)
{
    auto desktop = desktopWithoutWindows();
    useServerOf(*desktop);
    gnome::XwaylandPasteboard pasteboard;
    pasteboard.write(std::make_unique<Words>("first"));
    ASSERT_TRUE(isPasted(*desktop, "first"));

    desktop->server().end();
    pasteboard.write(std::make_unique<Words>("lost")); // nobody has told yet
    QCoreApplication::processEvents();
    desktop = desktopWithoutWindows();
    useServerOf(*desktop);

    EXPECT_TRUE(waitFor([&] {
        pasteboard.write(std::make_unique<Words>("second"));
        return pasted(*desktop) == "second";
    }));
}

TEST(XwaylandPasteboard, handsNothingOverWithoutAServer)
{
    qputenv("DISPLAY", ":9999999");
    gnome::XwaylandPasteboard pasteboard;

    pasteboard.write(std::make_unique<Words>("words"));
    QCoro::waitFor(pasteboard.handOver());
}

TEST(XServerStart, tellsWhetherAServerAnswers)
{
    const auto desktop = desktopWithoutWindows();
    const QByteArray display = desktop->environment().at("DISPLAY");

    EXPECT_TRUE(QCoro::waitFor(gnome::xServerAnswers(display)));
    EXPECT_TRUE(QCoro::waitFor(gnome::xServerAnswers(display + ".0")));
    for (const char *const none : {"", ":", ":x", ":9999999", "elsewhere:0", "nonsense"})
        EXPECT_FALSE(QCoro::waitFor(gnome::xServerAnswers(none))) << none;
}

} // namespace lumacap::harness
