// Where a desktop refuses its own way to take a picture, and has a portal.
#include "harness/Captures.h"
#include "harness/Pictures.h"
#include "harness/wayland/GnomeDesktop.h"
#include "harness/wayland/KWinDesktop.h"
#include "portal/PortalFixture.h"

#include <QFile>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

Answer take(TestDesktop &desktop, const QString &file)
{
    return desktop.ask(program({u"full-screen"_s, u"--output"_s, file}));
}

TEST(RefusedCapture, isTakenByThePortalWhereKWinPermitsNone)
{
    KWinDesktop desktop({.permissions = Permissions::Checked});
    const QImage picture = noisePicture(desktop.outputs().front().pixels);
    startStandInPortal(desktop, picture);
    const QString file = desktop.folder(u"pictures"_s) + u"/capture.png"_s;

    const Answer answer = take(desktop, file);

    EXPECT_EQ(answer.errors, QByteArray());
    EXPECT_EQ(differingPixels(picture, pictureIn(desktop, file)), 0);
}

TEST(RefusedCapture, isTakenByThePortalWhereMutterHasNoPipeWire)
{
    GnomeDesktop desktop;
    desktop.pipeWire().terminate();
    const QImage picture = noisePicture(desktop.outputs().front().pixels);
    startStandInPortal(desktop, picture);
    const QString file = desktop.folder(u"pictures"_s) + u"/capture.png"_s;

    const Answer answer = take(desktop, file);

    EXPECT_EQ(answer.errors, QByteArray());
    EXPECT_EQ(differingPixels(picture, pictureIn(desktop, file)), 0);
}

TEST(RefusedCapture, saysWhatKWinAndThePortalSay)
{
    KWinDesktop desktop({.permissions = Permissions::Checked});
    startStandInPortal(desktop, noisePicture({8, 8}), {u"Screenshot=cancels"_s});
    const QString file = desktop.folder(u"pictures"_s) + u"/capture.png"_s;

    const Answer answer = take(desktop, file);

    EXPECT_EQ(answer.ending, Ending{.code = 1});
    EXPECT_THAT(answer.errors.toStdString(), testing::HasSubstr("install Lumacap"));
    EXPECT_EQ(answer.errors.count('\n'), 1);
    EXPECT_FALSE(QFile::exists(file));
}

} // namespace
} // namespace lumacap::harness
