#include "platform/HotKeyBook.h"

#include <memory>
#include <vector>

#include <gmock/gmock.h>

using namespace lumacap;
using testing::ElementsAre;

namespace {

struct Registration : HotKeyRegistration {
    int claim = 0;
};

using Book = HotKeyBook<Registration>;
using States = std::vector<HotKeyState>;

HotkeyService::Answer into(States &states)
{
    return [&states](HotKeyState state) { states.push_back(state); };
}

std::vector<std::uint32_t> idsIn(const Book &book)
{
    std::vector<std::uint32_t> ids;
    for (const auto &[ref, registration] : book)
        ids.push_back(registration.hotKey.id);
    return ids;
}

} // namespace

TEST(HotKeyBookTest, keepsTheEarliestFirstAndNumbersNoTwoAlike)
{
    Book book;
    const HotKeyRef first = book.add({.id = 7}, {});
    const HotKeyRef second = book.add({.id = 3}, {});
    book.erase(first);
    const HotKeyRef third = book.add({.id = 5}, {});
    EXPECT_THAT(idsIn(book), ElementsAre(3, 5));
    EXPECT_NE(third, first);
    EXPECT_NE(third, second);
    EXPECT_EQ(book.find(first), nullptr);
    ASSERT_NE(book.find(second), nullptr);
    EXPECT_EQ(book.find(second)->claim, 0);
}

TEST(HotKeyBookTest, tellsOnceAndKeepsWhatIsLive)
{
    Book book;
    States told;
    const HotKeyRef ref = book.add({}, into(told));
    book.answer(ref, HotKeyState::Live);
    book.answer(ref, HotKeyState::NotLive);
    EXPECT_THAT(told, ElementsAre(HotKeyState::Live));
    EXPECT_NE(book.find(ref), nullptr);
}

TEST(HotKeyBookTest, forgetsWhatIsNotLiveBeforeItTells)
{
    Book book;
    bool wasForgotten = false;
    HotKeyRef ref{};
    ref = book.add({}, [&](HotKeyState) { wasForgotten = book.find(ref) == nullptr; });
    book.answer(ref, HotKeyState::NotLive);
    EXPECT_TRUE(wasForgotten);
    EXPECT_TRUE(book.isEmpty());
}

TEST(HotKeyBookTest, tellsNobodyOfWhatWasGivenUp)
{
    Book book;
    States told;
    const HotKeyRef ref = book.add({}, into(told));
    book.erase(ref);
    book.answer(ref, HotKeyState::Live);
    EXPECT_TRUE(told.empty());
}

TEST(HotKeyBookTest, mayEndWhileItTells)
{
    auto book = std::make_unique<Book>();
    States told;
    const HotKeyRef ref = book->add({}, [&](HotKeyState state) {
        book.reset();
        told.push_back(state);
    });
    book->answer(ref, HotKeyState::Live);
    EXPECT_THAT(told, ElementsAre(HotKeyState::Live));
}
