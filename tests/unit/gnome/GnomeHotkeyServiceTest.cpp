#include "platform/gnome/GnomeHotkeyService.h"

#include "platform/CarbonModifiers.h"

#include <QCoreApplication>

#include <map>

#include <gmock/gmock.h>

namespace lumacap::gnome {

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

constexpr std::uint32_t virtualKeyOne = 18;
constexpr std::uint32_t virtualKeyTwo = 19;
constexpr KeyChord one{2, carbon::controlKey | carbon::shiftKey};

/// The person's settings, in memory.
struct Stored {
    std::map<QString, CommandBinding> bindings;
    std::vector<KeyChord> taken;
    int stores = 0;

    QStringList ids() const
    {
        QStringList ids;
        for (const auto &[id, binding] : bindings)
            ids.append(id);
        return ids;
    }
};

class FakeKeybindings final : public Keybindings {
public:
    explicit FakeKeybindings(Stored &stored)
        : m_stored(stored)
    {
    }

    bool isTaken(const KeyChord &chord) const override
    {
        return std::ranges::find(m_stored.taken, chord) != m_stored.taken.end();
    }
    void add(const QString &id, const CommandBinding &binding) override
    {
        m_stored.bindings[id] = binding;
    }
    void remove(const QString &id) override { m_stored.bindings.erase(id); }
    void removeAll() override { m_stored.bindings.clear(); }
    void store() override { ++m_stored.stores; }

private:
    Stored &m_stored;
};

class GnomeHotkeys : public testing::Test {
protected:
    GnomeHotkeys()
    {
        stored.bindings[u"left-over"_s] = {};
        service = std::make_unique<GnomeHotkeyService>(
            std::make_unique<FakeKeybindings>(stored), u"/opt/it's here/lumacap"_s,
            std::vector<HotkeyCommand>{{1, u"full-screen"_s, u"Everything"_s},
                                       {2, u"selection"_s, u"A part"_s}});
    }

    HotKeyRef add(std::uint32_t id, std::uint32_t keyCode)
    {
        return service->registerHotKey({id, keyCode, carbon::controlKey | carbon::shiftKey},
                                       [this, id](HotKeyState state) { answers[id] = state; });
    }
    static void turn() { QCoreApplication::processEvents(); }

    Stored stored;
    std::map<std::uint32_t, HotKeyState> answers;
    std::unique_ptr<GnomeHotkeyService> service;
};

} // namespace

TEST_F(GnomeHotkeys, removeWhatAnEarlierAgentLeft)
{
    EXPECT_THAT(stored.ids(), IsEmpty());
}

TEST_F(GnomeHotkeys, startTheProgramWithTheCommand)
{
    std::ignore = add(1, virtualKeyOne);
    EXPECT_THAT(answers, IsEmpty()); // never within the call

    turn();

    EXPECT_EQ(answers.at(1), HotKeyState::Live);
    ASSERT_THAT(stored.ids(), ElementsAre(u"full-screen"_s));
    const CommandBinding &binding = stored.bindings.at(u"full-screen"_s);
    EXPECT_EQ(binding.name, u"Everything"_s);
    EXPECT_EQ(binding.command, u"'/opt/it'\\''s here/lumacap' full-screen"_s);
    EXPECT_EQ(binding.chord, one);
}

TEST_F(GnomeHotkeys, areNotLiveWhereTheKeysAreTaken)
{
    stored.taken = {one};

    std::ignore = add(1, virtualKeyOne);
    turn();

    EXPECT_EQ(answers.at(1), HotKeyState::NotLive);
    EXPECT_THAT(stored.ids(), IsEmpty());
}

TEST_F(GnomeHotkeys, areNotLiveForKeysAndNumbersThatNobodyKnows)
{
    std::ignore = add(1, 9999);
    std::ignore = add(77, virtualKeyTwo);
    turn();

    EXPECT_EQ(answers.at(1), HotKeyState::NotLive);
    EXPECT_EQ(answers.at(77), HotKeyState::NotLive);
    EXPECT_THAT(stored.ids(), IsEmpty());
}

TEST_F(GnomeHotkeys, areLiveForTheEarlierOfTwoWithTheSameKeys)
{
    std::ignore = add(1, virtualKeyOne);
    std::ignore = add(2, virtualKeyOne);
    turn();

    EXPECT_EQ(answers.at(1), HotKeyState::Live);
    EXPECT_EQ(answers.at(2), HotKeyState::NotLive);
}

TEST_F(GnomeHotkeys, areNotAnsweredOnceGivenUp)
{
    const auto ref = add(1, virtualKeyOne);

    service->unregisterHotKey(ref);
    turn();

    EXPECT_THAT(answers, IsEmpty());
    EXPECT_THAT(stored.ids(), IsEmpty());
}

TEST_F(GnomeHotkeys, canTakeTheKeysOfOneThatWasGivenUp)
{
    const auto first = add(1, virtualKeyOne);
    turn();

    service->unregisterHotKey(first);
    std::ignore = add(1, virtualKeyOne);
    turn();

    EXPECT_EQ(answers.at(1), HotKeyState::Live);
    EXPECT_THAT(stored.ids(), ElementsAre(u"full-screen"_s));
}

TEST_F(GnomeHotkeys, rest)
{
    std::ignore = add(1, virtualKeyOne);
    turn();

    service->suspend();
    std::ignore = add(2, virtualKeyTwo);
    turn();
    EXPECT_THAT(stored.ids(), IsEmpty());
    EXPECT_FALSE(answers.contains(2));

    service->resume();
    turn();
    EXPECT_THAT(stored.ids(), ElementsAre(u"full-screen"_s, u"selection"_s));
    EXPECT_EQ(answers.at(2), HotKeyState::Live);
}

TEST_F(GnomeHotkeys, areGoneFromTheSettingsAtTheEnd)
{
    std::ignore = add(1, virtualKeyOne);

    service.reset();

    EXPECT_THAT(stored.ids(), IsEmpty());
    EXPECT_EQ(stored.stores, 1);
}

} // namespace lumacap::gnome
