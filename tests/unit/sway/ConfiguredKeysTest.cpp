#include "platform/wlroots/sway/hotkeys/ConfiguredKeys.h"

#include <gmock/gmock.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

ConfiguredKey symbol(std::uint32_t modifiers, const QString &key)
{
    return {ConfiguredKey::By::Symbol, modifiers, key};
}

ConfiguredKey code(std::uint32_t modifiers, const QString &key)
{
    return {ConfiguredKey::By::Code, modifiers, key};
}

std::vector<ConfiguredKey> keysOf(const char *text)
{
    return configuredKeys(QString::fromUtf8(text), u"/nowhere/config"_s);
}

/// A folder of configuration files.
class Folder {
public:
    void write(const QString &name, const QByteArray &text)
    {
        QDir(m_folder.path()).mkpath(QFileInfo(path(name)).path());
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        ASSERT_EQ(file.write(text), text.size());
    }
    QString path(const QString &name) const { return m_folder.filePath(name); }
    std::vector<ConfiguredKey> keysOf(const QByteArray &text) const
    {
        return configuredKeys(QString::fromUtf8(text), path(u"config"_s));
    }

private:
    QTemporaryDir m_folder;
};

TEST(ConfiguredKeys, symbolsAndCodesWithTheirModifiers)
{
    EXPECT_THAT(keysOf("bindsym Ctrl+Shift+3 exec a\n"
                       "  bindcode Mod4+12 exec b\n"
                       "bindsym Print exec c"),
                ElementsAre(symbol(modifier::control | modifier::shift, u"3"_s),
                            code(modifier::logo, u"12"_s), symbol(0, u"Print"_s)));
}

TEST(ConfiguredKeys, aModifierHasSeveralNamesInAnyCase)
{
    EXPECT_THAT(keysOf("bindsym mod1+a x\nbindsym ALT+a x\nbindsym control+a x\nbindsym Super+a x"),
                ElementsAre(symbol(modifier::alt, u"a"_s), symbol(modifier::alt, u"a"_s),
                            symbol(modifier::control, u"a"_s), symbol(modifier::logo, u"a"_s)));
}

TEST(ConfiguredKeys, flagsAndGroupsAreNoPartOfTheKey)
{
    EXPECT_THAT(keysOf("bindsym --locked --no-repeat --input-device=1:1:kbd Group2+Mod4+x exec y"),
                ElementsAre(symbol(modifier::logo, u"x"_s)));
}

TEST(ConfiguredKeys, variablesAreReplacedTheLongestNameFirst)
{
    EXPECT_THAT(keysOf("set $mod Mod4\nset $mod2 Mod1\nset $key 3\n"
                       "bindsym $mod+$key exec a\nbindsym $mod2+$key exec b\n"
                       "set $both $mod+Shift\nbindsym $both+4 exec c\nbindsym $unknown+4 exec d"),
                ElementsAre(symbol(modifier::logo, u"3"_s), symbol(modifier::alt, u"3"_s),
                            symbol(modifier::logo | modifier::shift, u"4"_s)));
}

TEST(ConfiguredKeys, keysOfOtherModesDoNotCount)
{
    EXPECT_THAT(keysOf("mode \"re size\" {\n bindsym a exec x\n bindsym {\n  b exec x\n }\n}\n"
                       "mode --pango_markup \"<b>x</b>\" bindsym c exec x\n"
                       "mode default bindsym d exec x\n"
                       "mode \"default\" {\n bindsym e exec x\n}\nbindsym f exec x"),
                ElementsAre(symbol(0, u"d"_s), symbol(0, u"e"_s), symbol(0, u"f"_s)));
}

TEST(ConfiguredKeys, keysInBlocksOfBindings)
{
    EXPECT_THAT(keysOf("bindsym --to-code {\n Mod4+a exec x\n Mod4+b exec y\n}\n"
                       "bindcode\n{\n 12 exec z\n}\n"),
                ElementsAre(symbol(modifier::logo, u"a"_s), symbol(modifier::logo, u"b"_s),
                            code(0, u"12"_s)));
}

TEST(ConfiguredKeys, blocksOfOtherCommandsHaveNone)
{
    EXPECT_THAT(keysOf("bar {\n bindsym button4 nop\n}\ninput * {\n xkb_layout us\n}\n"
                       "for_window [app_id=x] bindsym y\nexec bindsym z"),
                IsEmpty());
}

TEST(ConfiguredKeys, whatIsUnboundAgainIsFree)
{
    EXPECT_THAT(keysOf("bindsym Mod4+a exec x\nbindsym Mod4+b exec x\nunbindsym Mod4+a"),
                ElementsAre(symbol(modifier::logo, u"b"_s)));
}

TEST(ConfiguredKeys, commentsAndContinuedLines)
{
    EXPECT_THAT(keysOf("# bindsym a exec x\nbindsym \\\n  Mod4+b \\\n exec x\n"
                       "# comment \\\nbindsym c exec x"),
                ElementsAre(symbol(modifier::logo, u"b"_s), symbol(0, u"c"_s)));
}

TEST(ConfiguredKeys, severalKeysHeldTogetherAreNoShortcutOfOurs)
{
    EXPECT_THAT(keysOf("bindsym Mod4+a+b exec x"), IsEmpty());
}

TEST(ConfiguredKeys, nonsenseHasNone)
{
    EXPECT_THAT(keysOf("}\n}\n{\nbindsym\nbindsym --locked\nbindsym +++\nmode\nmode x\nset\n"
                       "include\ninclude $(touch /tmp/x)\n\"\n'unfinished\nbindsym Mod4+"),
                IsEmpty());
}

TEST(ConfiguredKeys, filesAreIncludedByPatternBesideTheOneThatNamesThem)
{
    Folder folder;
    folder.write(u"config.d/10-a.conf"_s, "set $mod Mod4\nbindsym $mod+a exec x\n");
    folder.write(u"config.d/20-b.conf"_s, "bindsym $mod+b exec x\ninclude inner/*\n");
    folder.write(u"config.d/inner/c"_s, "bindsym $mod+c exec x\n");
    folder.write(u"inner/wrong"_s, "bindsym $mod+d exec x\n");
    EXPECT_THAT(folder.keysOf("include config.d/*\nbindsym $mod+z exec x\n"),
                ElementsAre(symbol(modifier::logo, u"a"_s), symbol(modifier::logo, u"b"_s),
                            symbol(modifier::logo, u"c"_s), symbol(modifier::logo, u"z"_s)));
}

TEST(ConfiguredKeys, includesMayNameTheHomeFolderAndVariables)
{
    Folder folder;
    folder.write(u"sway/keys"_s, "bindsym a exec x\n");
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(folder.path(QString())));
    EXPECT_THAT(keysOf("include ~/sway/keys"), SizeIs(1));
    EXPECT_THAT(keysOf("include $HOME/sway/keys"), SizeIs(1));
    qputenv("HOME", before);
}

TEST(ConfiguredKeys, filesThatIncludeOneAnotherAreReadOnce)
{
    Folder folder;
    folder.write(u"config"_s, "include one\n");
    folder.write(u"one"_s, "bindsym a exec x\ninclude two\ninclude config\n");
    folder.write(u"two"_s, "include one\nbindsym b exec x\n");
    EXPECT_THAT(folder.keysOf("include one\ninclude two\n"),
                ElementsAre(symbol(0, u"a"_s), symbol(0, u"b"_s)));
}

TEST(ConfiguredKeys, whatIsNoFileIsNotRead)
{
    EXPECT_THAT(keysOf("include /dev/zero\ninclude /tmp\ninclude /no/such/file\nbindsym a x"),
                ElementsAre(symbol(0, u"a"_s)));
}

} // namespace

} // namespace lumacap::sway
