#include "platform/freedesktop/AutostartLoginItem.h"

#include "Environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <ostream>

using namespace Qt::StringLiterals;
using lumacap::freedesktop::AutostartLoginItem;
using lumacap::freedesktop::AutostartSurroundings;
using lumacap::tests::EnvironmentVariable;

namespace {

const QString entryName = u"autostart/app.lumacap.Lumacap.desktop"_s;
const QByteArray plainEntry = "[Desktop Entry]\nType=Application\nName=Lumacap\nExec=lumacap\n";

class AutostartLoginItemTest : public testing::Test {
protected:
    AutostartLoginItem item(const QString &program = u"/usr/bin/lumacap"_s) const
    {
        return {program,
                {.configHome = m_root.filePath(u"home"_s),
                 .configFolders = {m_root.filePath(u"xdg-first"_s), m_root.filePath(u"xdg"_s)},
                 .desktops = {u"ubuntu"_s, u"GNOME"_s}}};
    }

    QString entry(const QString &folder) const
    {
        return m_root.filePath(folder + u'/' + entryName);
    }
    QString ownEntry() const { return entry(u"home"_s); }

    static void write(const QString &path, const QByteArray &content)
    {
        ASSERT_TRUE(QDir{}.mkpath(QFileInfo{path}.path()));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    static QByteArray contentOf(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray{"no such file"};
    }

    QStringList filesOfTheUser() const
    {
        return QDir{QFileInfo{ownEntry()}.path()}.entryList(QDir::Files | QDir::Hidden);
    }

    void expectValidEntry() const
    {
        QProcess validator;
        validator.start(u"desktop-file-validate"_s, {ownEntry()});
        ASSERT_TRUE(validator.waitForFinished());
        EXPECT_EQ(validator.readAllStandardOutput() + validator.readAllStandardError(), "");
        EXPECT_EQ(validator.exitCode(), 0);
    }

    QTemporaryDir m_root;
};

TEST_F(AutostartLoginItemTest, isOffWithoutAnEntryAndLooksWithoutWriting)
{
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(QDir{m_root.path()}.isEmpty());
}

TEST_F(AutostartLoginItemTest, registeringWritesOneValidEntry)
{
    ASSERT_TRUE(item().registerItem());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_TRUE(contentOf(ownEntry()).contains("\nExec=/usr/bin/lumacap\n"));
    EXPECT_EQ(filesOfTheUser(), QStringList{u"app.lumacap.Lumacap.desktop"_s});
    expectValidEntry();
}

TEST_F(AutostartLoginItemTest, unregisteringRemovesTheEntryAndTwiceIsNoFailure)
{
    ASSERT_TRUE(item().registerItem());
    ASSERT_TRUE(item().unregisterItem());
    EXPECT_FALSE(item().isEnabled());
    EXPECT_EQ(filesOfTheUser(), QStringList{});
    EXPECT_TRUE(item().unregisterItem());
}

TEST_F(AutostartLoginItemTest, unregisteringHidesAnEntryOfTheSystem)
{
    write(entry(u"xdg"_s), plainEntry);
    EXPECT_TRUE(item().isEnabled());
    ASSERT_TRUE(item().unregisterItem());
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(contentOf(ownEntry()).contains("\nHidden=true\n"));
    expectValidEntry();
    ASSERT_TRUE(item().registerItem());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_FALSE(contentOf(ownEntry()).contains("Hidden"));
}

TEST_F(AutostartLoginItemTest, unregisteringOnlyRemovesWhereTheSystemsEntryStartsNothing)
{
    write(entry(u"xdg"_s), plainEntry + "NotShowIn=GNOME;\n");
    ASSERT_TRUE(item().registerItem());
    ASSERT_TRUE(item().unregisterItem());
    EXPECT_EQ(filesOfTheUser(), QStringList{});
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, theFirstEntryAlongTheFoldersCounts)
{
    write(entry(u"xdg"_s), plainEntry);
    write(entry(u"xdg-first"_s), plainEntry + "Hidden=true\n");
    EXPECT_FALSE(item().isEnabled());
    write(ownEntry(), plainEntry);
    EXPECT_TRUE(item().isEnabled());
    write(ownEntry(), "broken");
    EXPECT_FALSE(item().isEnabled());
}

TEST_F(AutostartLoginItemTest, aMaskedEntryIsOffAndRegisteringReplacesTheMask)
{
    ASSERT_TRUE(QDir{}.mkpath(QFileInfo{ownEntry()}.path()));
    ASSERT_TRUE(QFile::link(u"/dev/null"_s, ownEntry()));
    write(entry(u"xdg"_s), plainEntry);
    EXPECT_FALSE(item().isEnabled());
    ASSERT_TRUE(item().registerItem());
    EXPECT_TRUE(item().isEnabled());
    EXPECT_FALSE(QFileInfo{ownEntry()}.isSymLink());
}

TEST_F(AutostartLoginItemTest, aLinkedEntryIsReplacedAndItsTargetLeftAlone)
{
    const QString target = m_root.filePath(u"installed.desktop"_s);
    write(target, plainEntry);
    ASSERT_TRUE(QDir{}.mkpath(QFileInfo{ownEntry()}.path()));
    ASSERT_TRUE(QFile::link(target, ownEntry()));
    EXPECT_TRUE(item().isEnabled());
    ASSERT_TRUE(item().registerItem());
    ASSERT_TRUE(item().unregisterItem());
    EXPECT_EQ(contentOf(target), plainEntry);
}

TEST_F(AutostartLoginItemTest, aFailureSaysWhyAndChangesNothing)
{
    write(m_root.filePath(u"home"_s), "a file where the folder should be");
    const auto registered = item().registerItem();
    ASSERT_FALSE(registered);
    EXPECT_TRUE(registered.error().description.contains(u"Not a directory"_s)
                || registered.error().description.contains(u"File exists"_s))
        << registered.error().description.toStdString();
    EXPECT_FALSE(item().isEnabled());
    EXPECT_TRUE(item().unregisterItem());
}

TEST_F(AutostartLoginItemTest, aFolderInTheEntrysPlaceIsOffAndFailsToBeReplaced)
{
    ASSERT_TRUE(QDir{}.mkpath(ownEntry()));
    EXPECT_FALSE(item().isEnabled());
    EXPECT_FALSE(item().registerItem());
    EXPECT_FALSE(item().unregisterItem());
    EXPECT_EQ(filesOfTheUser(), QStringList{});
}

struct Entry {
    const char *name;
    QByteArray content;
    bool isEnabled;

    friend std::ostream &operator<<(std::ostream &out, const Entry &shown)
    {
        return out << shown.name;
    }
};

class EntryTest : public AutostartLoginItemTest, public testing::WithParamInterface<Entry> { };

TEST_P(EntryTest, isReadAsSessionManagersDo)
{
    write(ownEntry(), GetParam().content);
    EXPECT_EQ(item().isEnabled(), GetParam().isEnabled);
}

INSTANTIATE_TEST_SUITE_P(
    Entries, EntryTest,
    testing::Values(
        Entry{"plain", plainEntry, true},
        Entry{"windowsLineEnds", QByteArray{plainEntry}.replace("\n", "\r\n"), true},
        Entry{"hidden", plainEntry + "Hidden=true\n", false},
        Entry{"hiddenWithSpaces", plainEntry + "Hidden = true \n", false},
        Entry{"notHidden", plainEntry + "Hidden=false\n", true},
        Entry{"keyInOtherCase", plainEntry + "hidden=true\n", true},
        Entry{"hiddenInAComment", plainEntry + "#Hidden=true\n", true},
        Entry{"hiddenInAnotherGroup", plainEntry + "[Desktop Action x]\nHidden=true\n", true},
        Entry{"hiddenInAnEarlierGroup", "[Other]\nHidden=true\n" + plainEntry, true},
        Entry{"onlyElsewhere", plainEntry + "OnlyShowIn=KDE;XFCE;\n", false},
        Entry{"onlyHere", plainEntry + "OnlyShowIn=KDE;GNOME;\n", true},
        Entry{"onlyHereWithoutLastSemicolon", plainEntry + "OnlyShowIn=GNOME\n", true},
        Entry{"partOfAName", plainEntry + "OnlyShowIn=GNOME-Classic;\n", false},
        Entry{"notHere", plainEntry + "NotShowIn=GNOME;\n", false},
        Entry{"notElsewhere", plainEntry + "NotShowIn=KDE;\n", true},
        Entry{"moreSpecificNameWins", plainEntry + "OnlyShowIn=ubuntu;\nNotShowIn=GNOME;\n", true},
        Entry{"programThere", plainEntry + "TryExec=/bin/sh\n", true},
        Entry{"programOnThePath", plainEntry + "TryExec=sh\n", true},
        Entry{"programMissing", plainEntry + "TryExec=/nowhere/lumacap\n", false},
        Entry{"programNotOnThePath", plainEntry + "TryExec=no-such-program\n", false},
        Entry{"programNotExecutable", plainEntry + "TryExec=/etc/passwd\n", false},
        Entry{"switchedOffByGnome", plainEntry + "X-GNOME-Autostart-enabled=false\n", false},
        Entry{"switchedOnByGnome", plainEntry + "X-GNOME-Autostart-enabled=true\n", true},
        Entry{"empty", "", false}, Entry{"text", "lumacap\n", false},
        Entry{"lineWithoutValue", plainEntry + "nonsense\n", false},
        Entry{"valueBeforeAnyGroup", "Hidden=false\n" + plainEntry, false},
        Entry{"withoutProgram", "[Desktop Entry]\nType=Application\nName=Lumacap\n", false},
        Entry{"link", "[Desktop Entry]\nType=Link\nName=a\nExec=a\nURL=b\n", false}),
    [](const auto &instance) { return std::string{instance.param.name}; });

struct Program {
    const char *name;
    QString path;
    QByteArray value;

    friend std::ostream &operator<<(std::ostream &out, const Program &shown)
    {
        return out << shown.name;
    }
};

class ProgramPathTest : public AutostartLoginItemTest,
                        public testing::WithParamInterface<Program> { };

TEST_P(ProgramPathTest, isQuotedByTheRulesOfDesktopEntries)
{
    ASSERT_TRUE(item(GetParam().path).registerItem());
    const QByteArray content = contentOf(ownEntry());
    EXPECT_TRUE(content.contains("\nExec=" + GetParam().value + "\n")) << content.toStdString();
    EXPECT_TRUE(item().isEnabled());
    expectValidEntry();
}

INSTANTIATE_TEST_SUITE_P(
    Paths, ProgramPathTest,
    testing::Values(Program{"space", u"/opt/my apps/lumacap"_s, R"("/opt/my apps/lumacap")"},
                    Program{"doubleQuote", u"/opt/a\"b"_s, R"("/opt/a\\"b")"},
                    Program{"singleQuote", u"/opt/it's"_s, R"("/opt/it's")"},
                    Program{"dollar", u"/opt/$HOME"_s, R"("/opt/\\$HOME")"},
                    Program{"backquote", u"/opt/a`b"_s, R"("/opt/a\\`b")"},
                    Program{"backslash", uR"(/opt/a\b)"_s, R"("/opt/a\\\\b")"},
                    Program{"percent", u"/opt/100%/f"_s, "/opt/100%%/f"},
                    Program{"parentheses", u"/opt/a(1)"_s, "\"/opt/a(1)\""},
                    Program{"plain", u"/opt/a-b_c.d+e,f:g@h"_s, "/opt/a-b_c.d+e,f:g@h"}),
    [](const auto &instance) { return std::string{instance.param.name}; });

TEST(AutostartSurroundings, comeFromTheEnvironment)
{
    const EnvironmentVariable home("XDG_CONFIG_HOME", "/home/me/settings");
    const EnvironmentVariable folders("XDG_CONFIG_DIRS", "/a:relative::/b");
    const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
    const AutostartSurroundings expected{.configHome = u"/home/me/settings"_s,
                                         .configFolders = {u"/a"_s, u"/b"_s},
                                         .desktops = {u"ubuntu"_s, u"GNOME"_s}};
    EXPECT_EQ(AutostartSurroundings::ofThisSession(), expected);
}

TEST(AutostartSurroundings, areTheUsualFoldersWhereTheEnvironmentIsSilent)
{
    const EnvironmentVariable user("HOME", "/home/me");
    const EnvironmentVariable home("XDG_CONFIG_HOME", "relative");
    const EnvironmentVariable folders("XDG_CONFIG_DIRS", "");
    const EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "");
    const AutostartSurroundings expected{
        .configHome = u"/home/me/.config"_s, .configFolders = {u"/etc/xdg"_s}, .desktops = {}};
    EXPECT_EQ(AutostartSurroundings::ofThisSession(), expected);
}

} // namespace
