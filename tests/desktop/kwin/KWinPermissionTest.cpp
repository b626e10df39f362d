#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Pictures.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/KWinDesktop.h"

#include <QFile>

#include <gmock/gmock.h>

namespace lumacap::harness {
namespace {

using namespace Qt::StringLiterals;

/// Away from the pointer, which is in the middle of a desktop that nobody has touched.
QImage upperLeft(const QImage &picture)
{
    return picture.copy(0, 0, 300, 200);
}

TEST(KWinPermissionTest, aProgramThatIsNotInstalledSaysWhatToDo)
{
    KWinDesktop desktop({.permissions = Permissions::Checked});
    const QString path = desktop.folder(u"pictures"_s) + u"/refused.png"_s;
    const Answer said = desktop.ask(program({u"full-screen"_s, u"--output"_s, path}));
    EXPECT_EQ(said.ending, Ending{.code = 1});
    EXPECT_THAT(said.errors.toStdString(), testing::HasSubstr("install Lumacap"));
    EXPECT_EQ(said.errors.count('\n'), 1);
    EXPECT_FALSE(QFile::exists(path));
}

/// A desktop that checks, on which the program has been installed.
class InstalledOnKWin : public testing::Test {
protected:
    void SetUp() override
    {
        const QStringList install{u"cmake"_s, u"--install"_s, QStringLiteral(LUMACAP_BUILD),
                                  u"--prefix"_s, prefix.path()};
        ASSERT_EQ(desktop.ask(install).ending, Ending{});
        // A desktop does this by itself, a while after an installation.
        ASSERT_EQ(desktop.ask({u"kbuildsycoca5"_s}).ending, Ending{});
    }

    const QTemporaryDir prefix;
    KWinDesktop desktop{
        {.permissions = Permissions::Checked,
         .environment = {{"XDG_DATA_DIRS", prefix.path().toLocal8Bit() + "/share:/usr/share"},
                         {"XDG_CONFIG_DIRS", "/etc/xdg"}}}};
};

TEST_F(InstalledOnKWin, theProgramTakesPictures)
{
    const TestOutput output = desktop.outputs().front();
    const QImage noise = noisePicture(output.pixels);
    desktop.paint(output.name, noise);

    const QString path = desktop.folder(u"pictures"_s) + u"/allowed.png"_s;
    const QStringList command{prefix.path() + u"/bin/lumacap"_s, u"full-screen"_s, u"--output"_s,
                              path};
    std::string said;
    EXPECT_TRUE(waitFor([&] {
        said = desktop.ask(command).errors.toStdString();
        return differingPixels(upperLeft(noise), upperLeft(QImage(path))) == 0;
    })) << said;
}

TEST_F(InstalledOnKWin, theAgentThatTheBusStartsTakesPictures)
{
    writeSettings(
        desktop,
        {{u"saveToFile"_s, u"true"_s}, {u"saveDirectory"_s, desktop.folder(u"pictures"_s)}});
    const TestOutput output = desktop.outputs().front();
    const QImage noise = noisePicture(output.pixels);
    desktop.paint(output.name, noise);
    desktop.bus().offer(prefix.path() + u"/share/dbus-1/services/app.lumacap.Lumacap.service"_s);
    ASSERT_EQ(desktop.ask({u"dbus-update-activation-environment"_s, u"--all"_s}).ending, Ending{});
    const auto activate = [this](const QString &action) {
        return desktop.ask({u"gdbus"_s, u"call"_s, u"--session"_s, u"--dest"_s,
                            u"app.lumacap.Lumacap"_s, u"--object-path"_s, u"/app/lumacap/Lumacap"_s,
                            u"--method"_s, u"org.freedesktop.Application.ActivateAction"_s, action,
                            u"[]"_s, u"{}"_s});
    };

    // KWin hears of an installation a while later.
    EXPECT_TRUE(waitFor([&] {
        activate(u"full-screen"_s);
        return waitFor([&] { return !capturesIn(desktop.folder(u"pictures"_s)).isEmpty(); },
                       std::chrono::seconds(1));
    }));

    const QStringList files = capturesIn(desktop.folder(u"pictures"_s));
    ASSERT_FALSE(files.isEmpty());
    EXPECT_EQ(differingPixels(upperLeft(noise), upperLeft(pictureIn(desktop, files.first()))), 0);
    EXPECT_EQ(activate(u"quit"_s).ending, Ending{});
}

} // namespace
} // namespace lumacap::harness
