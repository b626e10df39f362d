#include "platform/x11/windows/PropertyValues.h"

#include "platform/x11/windows/WindowAtoms.h"

#include <gmock/gmock.h>

#include <cstring>
#include <limits>

#include <xcb/xcb.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using testing::IsEmpty;

namespace lumacap::x11 {

namespace {

constexpr WindowAtoms atoms{.utf8 = 300};

/// A property as the server sends it: the reply's head, then the value.
class Reply {
public:
    Reply(std::uint32_t type, std::uint8_t format, const QByteArray &value)
        : m_wire(sizeof(xcb_get_property_reply_t), '\0')
    {
        auto *const head = reinterpret_cast<xcb_get_property_reply_t *>(m_wire.data());
        head->format = format;
        head->type = type;
        head->value_len = format == 0 ? 0 : static_cast<std::uint32_t>(value.size() * 8 / format);
        m_wire += value;
    }

    operator const xcb_get_property_reply_t *() const
    {
        return reinterpret_cast<const xcb_get_property_reply_t *>(m_wire.constData());
    }

private:
    QByteArray m_wire;
};

Reply numbers(const std::vector<std::uint32_t> &values)
{
    const auto bytes = static_cast<qsizetype>(values.size()) * 4;
    return {XCB_ATOM_CARDINAL, 32,
            QByteArray(reinterpret_cast<const char *>(values.data()), bytes)};
}

Reply bytes(std::uint32_t type, const QByteArray &value)
{
    return {type, 8, value};
}

const Reply absent(XCB_ATOM_NONE, 0, {});

} // namespace

TEST(PropertyValues, readsNumbers)
{
    EXPECT_THAT(numbersIn(numbers({1, 0xffffffff})), ElementsAre(1U, 0xffffffffU));
    EXPECT_EQ(numberIn(numbers({5, 6})), 5U);
}

TEST(PropertyValues, findsNoNumbersWhereThereAreNone)
{
    for (const auto *reply : {static_cast<const xcb_get_property_reply_t *>(nullptr),
                              static_cast<const xcb_get_property_reply_t *>(absent)}) {
        EXPECT_THAT(numbersIn(reply), IsEmpty());
        EXPECT_EQ(numberIn(reply), std::nullopt);
    }
    EXPECT_THAT(numbersIn(bytes(XCB_ATOM_STRING, "text")), IsEmpty());
    EXPECT_EQ(numberIn(numbers({})), std::nullopt);
}

TEST(PropertyValues, readsMarginsInTheOrderLeftRightTopBottom)
{
    EXPECT_EQ(marginsIn(numbers({1, 2, 3, 4})), QMargins(1, 3, 2, 4));
}

TEST(PropertyValues, takesNoMarginsThatAreNone)
{
    EXPECT_EQ(marginsIn(nullptr), std::nullopt);
    EXPECT_EQ(marginsIn(absent), std::nullopt);
    EXPECT_EQ(marginsIn(numbers({1, 2, 3})), std::nullopt);
    EXPECT_EQ(marginsIn(numbers({1, 2, 3, 4, 5})), std::nullopt);
    EXPECT_EQ(marginsIn(numbers({1, 2, 3, std::numeric_limits<std::uint32_t>::max()})),
              std::nullopt);
}

TEST(PropertyValues, readsBytes)
{
    EXPECT_EQ(bytesIn(bytes(XCB_ATOM_STRING, QByteArray("a\0b", 3))), QByteArray("a\0b", 3));
    EXPECT_EQ(bytesIn(nullptr), QByteArray());
    EXPECT_EQ(bytesIn(absent), QByteArray());
    EXPECT_EQ(bytesIn(numbers({1})), QByteArray());
}

TEST(PropertyValues, readsTextAsItsTypeSays)
{
    EXPECT_EQ(textIn(bytes(atoms.utf8, "\xc3\xa9t\xc3\xa9"), atoms), u"été"_s);
    EXPECT_EQ(textIn(bytes(XCB_ATOM_STRING, "\xe9t\xe9"), atoms), u"été"_s);
}

TEST(PropertyValues, readsTextUpToAnEndThatSomeProgramsWrite)
{
    EXPECT_EQ(textIn(bytes(atoms.utf8, QByteArray("title\0", 6)), atoms), u"title"_s);
}

TEST(PropertyValues, readsNoTextWhereThereIsNoneOrNoneItCanRead)
{
    EXPECT_EQ(textIn(nullptr, atoms), std::nullopt);
    EXPECT_EQ(textIn(absent, atoms), std::nullopt);
    EXPECT_EQ(textIn(bytes(atoms.utf8, {}), atoms), std::nullopt);
    EXPECT_EQ(textIn(bytes(XCB_ATOM_STRING, "\x1b$(B$3"), atoms), std::nullopt);
}

} // namespace lumacap::x11
