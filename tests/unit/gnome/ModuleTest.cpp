#include "platform/gnome/Module.h"

#include "platform/gnome/FrameReader.h"

#include <QCoroTask>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

namespace lumacap::gnome {

using namespace Qt::StringLiterals;

TEST(GnomeModule, makesAReader)
{
    const Module module(QStringLiteral(LUMACAP_GNOME_MODULE));

    EXPECT_TRUE(module.isLoaded());
    EXPECT_NE(module.makeFrameReader(), nullptr);
}

TEST(GnomeModule, makesNothingWhereItIsMissing)
{
    const Module module(u"/nowhere/gnome.so"_s);

    EXPECT_FALSE(module.isLoaded());
    EXPECT_EQ(module.makeFrameReader(), nullptr);
}

TEST(GnomeModule, makesNothingOfAFileThatIsNoLibrary)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"gnome.so"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("not a library");
    file.close();

    EXPECT_FALSE(Module(file.fileName()).isLoaded());
}

TEST(FrameReader, saysThatPipeWireDoesNotRun)
{
    const QTemporaryDir empty;
    qputenv("XDG_RUNTIME_DIR", QFile::encodeName(empty.path()));
    qunsetenv("PIPEWIRE_RUNTIME_DIR");
    qunsetenv("PIPEWIRE_REMOTE");
    const auto reader = Module(QStringLiteral(LUMACAP_GNOME_MODULE)).makeFrameReader();
    const auto openFiles = [] { return QDir(u"/proc/self/fd"_s).count(); };
    const auto threads = [] { return QDir(u"/proc/self/task"_s).count(); };
    ASSERT_NE(reader, nullptr);
    EXPECT_FALSE(QCoro::waitFor(reader->read(1)));
    const auto filesBefore = openFiles();
    const auto threadsBefore = threads();

    for (int times = 0; times < 20; ++times)
        EXPECT_EQ(QCoro::waitFor(reader->read(1)).error(), Failure{u"PipeWire does not run"_s});

    EXPECT_EQ(openFiles(), filesBefore);
    EXPECT_EQ(threads(), threadsBefore);
}

} // namespace lumacap::gnome
