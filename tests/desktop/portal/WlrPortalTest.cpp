#include "harness/Captures.h"
#include "harness/Pictures.h"
#include "harness/WaitFor.h"
#include "harness/wayland/SwayDesktop.h"
#include "portal/PortalFixture.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QFile>

#include <gmock/gmock.h>

#include <memory>
#include <stdexcept>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// What the backend for wlroots writes each picture into.
const QString backendsFile = u"/tmp/out.png"_s;

/// A sway whose pictures are to be had through the real portal, with its backend for wlroots.
struct WlrPortal : testing::Test {
    void start(const SwayOptions &options)
    {
        QFile::remove(backendsFile);
        desktop = std::make_unique<SwayDesktop>(options);
        desktop->set("LUMACAP_SCREEN_CAPTURE", "portal");
        desktop->set("XDG_DESKTOP_PORTAL_DIR", desktop->folder(u"portals"_s).toLocal8Bit());
        bus = std::make_unique<QDBusConnection>(QDBusConnection::connectToBus(
            QString::fromLocal8Bit(desktop->bus().address()), desktop->newLog(u"bus"_s)));
        Process &pipewire = desktop->start(u"pipewire"_s, {u"pipewire"_s});
        require("PipeWire", [this, &pipewire] {
            return pipewire.ending() || QFile::exists(desktop->folder(u"run"_s) + u"/pipewire-0"_s);
        });
        startService(u"xdg-permission-store"_s, u"org.freedesktop.impl.portal.PermissionStore"_s);
        for (const QString &backend : {u"wlr"_s, u"gtk"_s}) { // the second asks the person
            const QString description = backend + u".portal"_s;
            if (!QFile::copy(u"/usr/share/xdg-desktop-portal/portals/"_s + description,
                             desktop->folder(u"portals"_s) + u'/' + description))
                throw std::runtime_error("not installed: a portal's backend");
            startService(u"xdg-desktop-portal-"_s + backend,
                         u"org.freedesktop.impl.portal.desktop."_s + backend);
        }
        startService(u"xdg-desktop-portal"_s, u"org.freedesktop.portal.Desktop"_s);
    }

    void startService(const QString &program, const QString &name)
    {
        const Process &process = desktop->start(program, {u"/usr/libexec/"_s + program});
        require("a service of the portal", [this, &process, &name] {
            if (process.ending())
                throw std::runtime_error("a portal ended: " + process.errors().toStdString());
            return bus->interface()->isServiceRegistered(name).value();
        });
    }

    /// Shows noise on every output, the pointer far from it, and answers the first one's.
    QImage paint()
    {
        QImage first;
        for (const TestOutput &output : desktop->outputs()) {
            const QImage picture = noisePicture(output.pixels);
            desktop->paint(output.name, picture);
            if (first.isNull())
                first = desktop->look(output.name);
        }
        return first;
    }

    Answer capture() { return desktop->ask(program({u"full-screen"_s, u"--output"_s, file()})); }
    QString file() const { return desktop->folder(u"pictures"_s) + u"/capture.png"_s; }

    std::unique_ptr<SwayDesktop> desktop;
    std::unique_ptr<QDBusConnection> bus;
};

TEST_F(WlrPortal, givesTheDisplayAndLeavesNoFile)
{
    start({.outputs = {{{800, 600}, 1, {0, 0}}}});
    const QImage shown = paint();
    const Answer answer = capture();
    ASSERT_EQ(answer.ending, Ending{}) << answer.errors.toStdString();
    EXPECT_EQ(differingPixels(shown, pictureIn(*desktop, file())), 0);
    EXPECT_FALSE(QFile::exists(backendsFile));
}

TEST_F(WlrPortal, givesOneOfTwoDisplays)
{
    start({.outputs = {{{800, 600}, 2, {640, 100}}, {{640, 480}, 2, {0, 0}}}});
    const QImage shown = paint();
    const Answer answer = capture();
    ASSERT_EQ(answer.ending, Ending{}) << answer.errors.toStdString();
    EXPECT_EQ(differingPixels(shown, pictureIn(*desktop, file())), 0);
    EXPECT_FALSE(QFile::exists(backendsFile));
}

TEST_F(WlrPortal, givesADisplayOfAFractionalScale)
{
    start({.outputs = {{{1500, 900}, 1.5, {0, 0}}}});
    const QImage shown = paint();
    const Answer answer = capture();
    ASSERT_EQ(answer.ending, Ending{}) << answer.errors.toStdString();
    EXPECT_EQ(differingPixels(shown, pictureIn(*desktop, file())), 0);
}

TEST_F(WlrPortal, givesNoDisplayInMixedPixels)
{
    start({.outputs = {{{640, 480}, 1, {0, 0}}, {{800, 600}, 2, {640, 0}}}});
    paint();
    const Answer answer = capture();
    EXPECT_EQ(answer.ending, (Ending{1, 0}));
    EXPECT_EQ(
        answer.errors,
        "lumacap: no picture was taken: the desktop's portal gives the picture of this display "
        "at another scale than its own\n");
    EXPECT_FALSE(QFile::exists(file()));
    EXPECT_FALSE(QFile::exists(backendsFile));
}

TEST_F(WlrPortal, servesTheAgentAgainAndAgain)
{
    start({.outputs = {{{800, 600}, 1, {0, 0}}}});
    const QImage shown = paint();
    saveCaptures(*desktop);
    Agent agent(*desktop);
    agent.requireReady();
    const QString folder = desktop->folder(u"pictures"_s);
    for (int count = 0; count < 3; ++count) {
        ASSERT_TRUE(agent.activate(u"full-screen"_s));
        ASSERT_TRUE(waitFor([&] { return !capturesIn(folder).isEmpty(); }));
        const QString saved = capturesIn(folder).first();
        EXPECT_EQ(differingPixels(shown, pictureIn(*desktop, saved)), 0);
        ASSERT_TRUE(QFile::remove(saved)); // the next one may have the same name
    }
    EXPECT_EQ(agent.process().output(), QByteArray());
    EXPECT_FALSE(QFile::exists(backendsFile));
}

} // namespace
} // namespace lumacap::harness
