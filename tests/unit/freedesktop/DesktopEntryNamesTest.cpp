#include "platform/freedesktop/DesktopEntryNames.h"

#include "Environment.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <array>

#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {

namespace {

QByteArray entryText(const QByteArray &name, const QByteArray &more = {})
{
    return "[Desktop Entry]\nType=Application\nExec=/bin/true\nName=" + name + '\n' + more + '\n';
}

class DesktopEntryNamesTest : public testing::Test {
protected:
    QString folder(const QString &name) const { return m_root.filePath(name); }

    /// Writes an entry below `user` or `system`, replacing what is there as an installer would.
    void write(const QString &path, const QByteArray &content) const
    {
        const QString whole = m_root.filePath(path);
        ASSERT_TRUE(QDir().mkpath(QFileInfo(whole).path()));
        QFile(whole).remove();
        overwrite(path, content);
    }

    void overwrite(const QString &path, const QByteArray &content) const
    {
        QFile file(m_root.filePath(path));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(content), content.size());
    }

    /// As if nothing in the folder had changed for a while: its time tells the next change.
    void age(const QString &name) const
    {
        const std::array<timespec, 2> longAgo{timespec{1'000'000, 0}, timespec{1'000'000, 0}};
        ASSERT_EQ(
            utimensat(AT_FDCWD, QFile::encodeName(folder(name)).constData(), longAgo.data(), 0), 0);
    }

    DesktopEntryNames names(const QByteArray &locale = "C") const
    {
        return DesktopEntryNames(
            {.folders = {folder(u"user"_s), folder(u"system"_s)}, .locale = locale});
    }

    std::optional<QString> nameOf(const QString &identifier) const
    {
        return names().nameOf({identifier});
    }

private:
    QTemporaryDir m_root;
};

} // namespace

TEST_F(DesktopEntryNamesTest, findsAnEntryByItsId)
{
    write(u"system/org.example.Editor.desktop"_s, entryText("Editor"));

    EXPECT_EQ(nameOf(u"org.example.Editor"_s), u"Editor"_s);
    EXPECT_EQ(nameOf(u"org.example.Other"_s), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, subfoldersArePartOfTheId)
{
    write(u"system/games/board/chess.desktop"_s, entryText("Chess"));

    EXPECT_EQ(nameOf(u"games-board-chess"_s), u"Chess"_s);
    EXPECT_EQ(nameOf(u"chess"_s), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, findsAnEntryByTheClassOfItsWindows)
{
    write(u"system/editor.desktop"_s, entryText("Editor", "StartupWMClass=ed-Window"));

    EXPECT_EQ(nameOf(u"ed-Window"_s), u"Editor"_s);
    EXPECT_EQ(nameOf(u"Ed-Window"_s), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, findsAnEntryByTheIdentifierInLowerCase)
{
    write(u"system/editor.desktop"_s, entryText("Text Editor"));

    EXPECT_EQ(nameOf(u"Editor"_s), u"Text Editor"_s);
}

TEST_F(DesktopEntryNamesTest, theIdComesBeforeTheClassAndTheClassBeforeTheLowerCase)
{
    write(u"system/editor.desktop"_s, entryText("By lower case"));
    write(u"system/other.desktop"_s, entryText("By class", "StartupWMClass=Editor"));
    EXPECT_EQ(nameOf(u"Editor"_s), u"By class"_s);

    write(u"system/Editor.desktop"_s, entryText("By id"));
    EXPECT_EQ(nameOf(u"Editor"_s), u"By id"_s);
}

TEST_F(DesktopEntryNamesTest, theFirstKnownIdentifierWins)
{
    write(u"system/one.desktop"_s, entryText("One"));
    write(u"system/two.desktop"_s, entryText("Two"));

    EXPECT_EQ(names().nameOf({u"unknown"_s, u"two"_s, u"one"_s}), u"Two"_s);
    EXPECT_EQ(names().nameOf({u"unknown"_s}), std::nullopt);
    EXPECT_EQ(names().nameOf({}), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, theMoreImportantFolderWins)
{
    write(u"user/editor.desktop"_s, entryText("Mine", "StartupWMClass=Ed"));
    write(u"system/editor.desktop"_s, entryText("Everybody's", "StartupWMClass=Ed"));

    EXPECT_EQ(nameOf(u"editor"_s), u"Mine"_s);
    EXPECT_EQ(nameOf(u"Ed"_s), u"Mine"_s);
}

TEST_F(DesktopEntryNamesTest, entriesThatNoMenuShowsCount)
{
    write(u"system/handler.desktop"_s, entryText("Handler", "NoDisplay=true\nStartupWMClass=H"));

    EXPECT_EQ(nameOf(u"handler"_s), u"Handler"_s);
    EXPECT_EQ(nameOf(u"H"_s), u"Handler"_s);
}

TEST_F(DesktopEntryNamesTest, aDeletedEntryTakesThePlaceOfTheOneBehindIt)
{
    write(u"user/editor.desktop"_s, entryText("Editor", "Hidden=true"));
    write(u"system/editor.desktop"_s, entryText("Editor", "StartupWMClass=Ed"));

    EXPECT_EQ(nameOf(u"editor"_s), std::nullopt);
    EXPECT_EQ(nameOf(u"Ed"_s), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, skipsHugeDamagedAndNamelessEntries)
{
    write(u"system/huge.desktop"_s, entryText("Huge", QByteArray(2'000'000, '#')));
    write(u"system/damaged.desktop"_s,
          QByteArray("\x7f"
                     "ELF\0\xff\n\n=\n[",
                     12));
    write(u"system/nameless.desktop"_s, "[Desktop Entry]\nType=Application\nExec=/bin/true\n");
    write(u"system/empty.desktop"_s, {});
    write(u"system/whole.desktop"_s, entryText("Whole", "StartupWMClass=W"));

    for (const QString &id : {u"huge"_s, u"damaged"_s, u"nameless"_s, u"empty"_s})
        EXPECT_EQ(nameOf(id), std::nullopt) << id.toStdString();
    EXPECT_EQ(nameOf(u"W"_s), u"Whole"_s);
}

TEST_F(DesktopEntryNamesTest, anIdentifierWithAPathLeadsNowhere)
{
    write(u"outside/editor.desktop"_s, entryText("Outside"));
    write(u"system/editor.desktop"_s, entryText("Inside"));

    EXPECT_EQ(nameOf(u"../outside/editor"_s), std::nullopt);
    EXPECT_EQ(nameOf(folder(u"system/editor"_s)), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, linksInACircleEnd)
{
    write(u"system/editor.desktop"_s, entryText("Editor"));
    ASSERT_TRUE(QFile::link(folder(u"system"_s), folder(u"system/again"_s)));

    EXPECT_EQ(nameOf(u"editor"_s), u"Editor"_s);
}

TEST_F(DesktopEntryNamesTest, noticesEntriesThatComeAndGo)
{
    write(u"system/editor.desktop"_s, entryText("Editor", "StartupWMClass=Ed"));
    age(u"system"_s);
    const DesktopEntryNames kept = names();
    EXPECT_EQ(kept.nameOf({u"Ed"_s}), u"Editor"_s);

    write(u"system/viewer.desktop"_s, entryText("Viewer", "StartupWMClass=View"));
    EXPECT_EQ(kept.nameOf({u"View"_s}), u"Viewer"_s);

    age(u"system"_s);
    EXPECT_EQ(kept.nameOf({u"viewer"_s}), u"Viewer"_s);
    ASSERT_TRUE(QFile::remove(folder(u"system/viewer.desktop"_s)));
    EXPECT_EQ(kept.nameOf({u"viewer"_s, u"View"_s}), std::nullopt);
}

TEST_F(DesktopEntryNamesTest, noticesEntriesInSubfoldersAndInFoldersThatWereNotThere)
{
    write(u"system/games/chess.desktop"_s, entryText("Chess"));
    age(u"system/games"_s);
    const DesktopEntryNames kept = names();
    EXPECT_EQ(kept.nameOf({u"games-chess"_s}), u"Chess"_s);

    write(u"system/games/go.desktop"_s, entryText("Go"));
    EXPECT_EQ(kept.nameOf({u"games-go"_s}), u"Go"_s);

    write(u"user/editor.desktop"_s, entryText("Editor"));
    EXPECT_EQ(kept.nameOf({u"editor"_s}), u"Editor"_s);
}

TEST_F(DesktopEntryNamesTest, readsNoEntryAgainWhileItsFolderIsUnchanged)
{
    write(u"system/editor.desktop"_s, entryText("Editor", "StartupWMClass=Ed"));
    const DesktopEntryNames kept = names();
    EXPECT_EQ(kept.nameOf({u"Ed"_s}), u"Editor"_s);

    overwrite(u"system/editor.desktop"_s, entryText("Another", "StartupWMClass=Ed"));
    EXPECT_EQ(kept.nameOf({u"Ed"_s}), u"Editor"_s);
    EXPECT_EQ(kept.nameOf({u"editor"_s}), u"Editor"_s);
}

namespace {

struct LocalizedCase {
    const char *testName;
    QByteArray locale;
    QString expected;
};

struct LocalizedNames : DesktopEntryNamesTest, testing::WithParamInterface<LocalizedCase> { };

} // namespace

TEST_P(LocalizedNames, areTheBestThatFitTheLocale)
{
    write(u"system/editor.desktop"_s,
          entryText("Editor",
                    "Name[fr]=\xc3\x89"
                    "diteur\n"
                    "Name[fr_CA]=\xc3\x89"
                    "diteur du Qu\xc3\xa9"
                    "bec\n"
                    "Name[sr]=\xd0\xa3\xd1\x80\n"
                    "Name[sr@latin]=Ur\n"
                    "Name[sr_RS@latin]=Ur RS\n"
                    "GenericName[de]=Bearbeiter\n"
                    "[Desktop Action New]\nName[de]=Neu\n"));

    EXPECT_EQ(names(GetParam().locale).nameOf({u"editor"_s}), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    , LocalizedNames,
    testing::Values(LocalizedCase{"noLocale", "", u"Editor"_s},
                    LocalizedCase{"posix", "C.UTF-8", u"Editor"_s},
                    LocalizedCase{"languageThatTheEntryDoesNotHave", "de_DE.UTF-8", u"Editor"_s},
                    LocalizedCase{"language", "fr", u"Éditeur"_s},
                    LocalizedCase{"countryWithoutItsOwnName", "fr_FR.UTF-8", u"Éditeur"_s},
                    LocalizedCase{"country", "fr_CA.UTF-8", u"Éditeur du Québec"_s},
                    LocalizedCase{"modifierThatTheEntryDoesNotHave", "fr_FR.UTF-8@euro",
                                  u"Éditeur"_s},
                    LocalizedCase{"languageAndModifier", "sr_ME.UTF-8@latin", u"Ur"_s},
                    LocalizedCase{"countryAndModifier", "sr_RS.UTF-8@latin", u"Ur RS"_s},
                    LocalizedCase{"modifierLeftOut", "sr_RS.UTF-8", u"Ур"_s}),
    [](const auto &each) { return std::string(each.param.testName); });

TEST(DesktopEntrySurroundings, areThoseOfTheSession)
{
    using tests::EnvironmentVariable;
    const EnvironmentVariable home("XDG_DATA_HOME", "/somewhere/mine");
    const EnvironmentVariable others("XDG_DATA_DIRS", "/somewhere/first:/somewhere/second");
    const EnvironmentVariable all("LC_ALL", "");
    const EnvironmentVariable messages("LC_MESSAGES", "fr_FR.UTF-8");
    const EnvironmentVariable language("LANG", "de_DE.UTF-8");

    EXPECT_EQ(DesktopEntrySurroundings::ofThisSession(),
              (DesktopEntrySurroundings{.folders = {u"/somewhere/mine/applications"_s,
                                                    u"/somewhere/first/applications"_s,
                                                    u"/somewhere/second/applications"_s},
                                        .locale = "fr_FR.UTF-8"}));
}

TEST(DesktopEntrySurroundings, oneLocaleStandsAboveAllOthers)
{
    using tests::EnvironmentVariable;
    const EnvironmentVariable all("LC_ALL", "it");
    const EnvironmentVariable messages("LC_MESSAGES", "fr");

    EXPECT_EQ(DesktopEntrySurroundings::ofThisSession().locale, "it");
}

TEST(DesktopEntrySurroundings, theLanguageCountsWhereNothingElseIsSet)
{
    using tests::EnvironmentVariable;
    const EnvironmentVariable all("LC_ALL", "");
    const EnvironmentVariable messages("LC_MESSAGES", "");
    const EnvironmentVariable language("LANG", "de");

    EXPECT_EQ(DesktopEntrySurroundings::ofThisSession().locale, "de");
}

} // namespace lumacap::freedesktop
