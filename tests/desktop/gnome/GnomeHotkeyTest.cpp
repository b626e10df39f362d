// Shortcuts in the settings of a GNOME desktop, pressed on its keyboard.
#include "harness/Agent.h"
#include "harness/Captures.h"
#include "harness/Input.h"
#include "harness/Settings.h"
#include "harness/WaitFor.h"
#include "harness/wayland/GnomeDesktop.h"

#include <csignal>

#include <gmock/gmock.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

const QString mediaKeys = u"org.gnome.settings-daemon.plugins.media-keys"_s;
const QString folder = u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/"_s;

/// A person at a GNOME desktop with shortcuts of their own.
class GnomeHotkeys : public testing::Test {
protected:
    GnomeHotkeys() { m_desktop.startShortcuts(); }

    GnomeDesktop &desktop() { return m_desktop; }

    void startAgent()
    {
        writeSettings(m_desktop,
                      {{u"saveToFile"_s, u"true"_s},
                       {u"copyToClipboard"_s, u"false"_s},
                       {u"saveDirectory"_s, m_desktop.folder(u"pictures"_s)}});
        m_agent = std::make_unique<Agent>(m_desktop);
        m_agent->requireReady();
    }
    Agent &agent() { return *m_agent; }

    /// The list of the person's shortcuts, as the settings hold it.
    QString list() { return m_desktop.setting(mediaKeys, u"custom-keybindings"_s); }
    QString value(const QString &entry, const QString &key)
    {
        return m_desktop.setting(schemaOf(entry), key);
    }
    /// Gives the person a shortcut.
    void addOwn(const QString &entry, const QString &binding)
    {
        m_desktop.changeSetting(schemaOf(entry), u"name"_s, u"'Mine'"_s);
        m_desktop.changeSetting(schemaOf(entry), u"command"_s, u"'true'"_s);
        m_desktop.changeSetting(schemaOf(entry), u"binding"_s, u"'%1'"_s.arg(binding));
        m_own.append(u"'%1%2/'"_s.arg(folder, entry));
        m_desktop.changeSetting(mediaKeys, u"custom-keybindings"_s,
                                u'[' + m_own.join(u", "_s) + u']');
    }
    /// The list of the person's own shortcuts and then these of ours.
    QString ownAnd(const QStringList &ours) const
    {
        QStringList entries = m_own;
        for (const QString &entry : ours)
            entries.append(u"'%1lumacap-%2/'"_s.arg(folder, entry));
        return entries.isEmpty() ? u"@as []"_s : u'[' + entries.join(u", "_s) + u']';
    }
    testing::AssertionResult becomes(const QString &expected)
    {
        if (waitFor([&] { return list() == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << list().toStdString();
    }
    int captures() { return static_cast<int>(capturesIn(m_desktop.folder(u"pictures"_s)).size()); }
    /// Presses the shortcut of the full-screen capture until it has taken one: the desktop learns
    /// of changed settings in its own time. Not sooner than it may have been slow: what a press
    /// starts is an agent where none runs any more.
    bool takesAPicture()
    {
        const int before = captures();
        return waitFor([&] {
            m_desktop.input().press({evdev::control, evdev::shift, evdev::one});
            return waitFor([&] { return captures() > before; }, std::chrono::seconds(6));
        });
    }

private:
    static QString schemaOf(const QString &entry)
    {
        return mediaKeys + u".custom-keybinding:"_s + folder + entry + u'/';
    }

    GnomeDesktop m_desktop;
    QStringList m_own;
    std::unique_ptr<Agent> m_agent;
};

} // namespace

TEST_F(GnomeHotkeys, takeAPicture)
{
    startAgent();
    ASSERT_TRUE(becomes(ownAnd({u"full-screen"_s, u"selection"_s})));

    EXPECT_TRUE(takesAPicture());
}

TEST_F(GnomeHotkeys, goByThePlaceOfTheKeyInEveryLayout)
{
    desktop().changeSetting(u"org.gnome.desktop.input-sources"_s, u"sources"_s,
                            u"[('xkb', 'fr+oss')]"_s);
    startAgent();

    EXPECT_TRUE(takesAPicture());
}

TEST_F(GnomeHotkeys, standBesideThePersonsOwnAndGoWithTheAgent)
{
    addOwn(u"custom7"_s, u"<Super>x"_s);
    addOwn(u"custom3"_s, u"<Super>y"_s);
    startAgent();
    ASSERT_TRUE(becomes(ownAnd({u"full-screen"_s, u"selection"_s})));
    EXPECT_EQ(value(u"lumacap-full-screen"_s, u"binding"_s), u"'<Control><Shift>0x0a'"_s);

    EXPECT_EQ(agent().process().terminate(usualLimit), Ending{});

    EXPECT_EQ(list(), ownAnd({}));
    EXPECT_EQ(value(u"lumacap-full-screen"_s, u"command"_s), u"''"_s);
    EXPECT_EQ(value(u"custom7"_s, u"binding"_s), u"'<Super>x'"_s);
    EXPECT_EQ(value(u"custom3"_s, u"binding"_s), u"'<Super>y'"_s);
}

TEST_F(GnomeHotkeys, leaveThePersonWhatWasAddedMeanwhile)
{
    startAgent();
    const QString ours = ownAnd({u"full-screen"_s, u"selection"_s});
    ASSERT_TRUE(becomes(ours));
    const QString entry = u"'%1custom0/'"_s.arg(folder);
    desktop().changeSetting(mediaKeys, u"custom-keybindings"_s,
                            QString(ours).replace(u"]"_s, u", "_s + entry + u']'));

    EXPECT_EQ(agent().process().terminate(usualLimit), Ending{});

    EXPECT_EQ(list(), u'[' + entry + u']');
}

TEST_F(GnomeHotkeys, leaveTheirKeysToOthersWhoHaveThem)
{
    addOwn(u"custom0"_s, u"<Primary><Shift>exclam"_s); // stands on the key of the one
    desktop().changeSetting(u"org.gnome.desktop.wm.keybindings"_s, u"close"_s,
                            u"['<Shift><Control>2']"_s);

    startAgent();
    ASSERT_TRUE(agent().activate(u"full-screen"_s)); // what was registered is decided by then
    ASSERT_TRUE(waitFor([this] { return captures() == 1; }));

    EXPECT_EQ(list(), ownAnd({}));
}

TEST_F(GnomeHotkeys, ofAKilledAgentAreReplaced)
{
    addOwn(u"custom0"_s, u"<Super>x"_s);
    startAgent();
    ASSERT_TRUE(becomes(ownAnd({u"full-screen"_s, u"selection"_s})));
    agent().process().send(SIGKILL);
    ASSERT_TRUE(agent().process().waitForEnd(std::chrono::seconds(5)));
    EXPECT_EQ(list(), ownAnd({u"full-screen"_s, u"selection"_s}));

    startAgent();

    EXPECT_TRUE(becomes(ownAnd({u"full-screen"_s, u"selection"_s})));
    EXPECT_TRUE(takesAPicture());
    EXPECT_EQ(agent().process().terminate(usualLimit), Ending{});
    EXPECT_EQ(list(), ownAnd({}));
}

} // namespace lumacap::harness
