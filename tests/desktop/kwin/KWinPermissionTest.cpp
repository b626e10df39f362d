#include "harness/Agent.h"
#include "harness/Pictures.h"
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

TEST(KWinPermissionTest, anInstalledProgramTakesPictures)
{
    const QTemporaryDir prefix;
    const QByteArray data = prefix.path().toLocal8Bit() + "/share:/usr/share";
    KWinDesktop desktop(
        {.permissions = Permissions::Checked,
         .environment = {{"XDG_DATA_DIRS", data}, {"XDG_CONFIG_DIRS", "/etc/xdg"}}});
    ASSERT_EQ(desktop
                  .ask({u"cmake"_s, u"--install"_s, QStringLiteral(LUMACAP_BUILD), u"--prefix"_s,
                        prefix.path()})
                  .ending,
              Ending{});
    // A desktop does this by itself, a while after an installation.
    ASSERT_EQ(desktop.ask({u"kbuildsycoca5"_s}).ending, Ending{});
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

} // namespace
} // namespace lumacap::harness
