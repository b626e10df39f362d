#include "platform/wlroots/sway/Messages.h"

#include <gmock/gmock.h>

#include <QRandomGenerator>

#include <vector>

namespace lumacap::sway {

using testing::ElementsAre;
using testing::Optional;

namespace {

QByteArray header(std::uint32_t size, std::uint32_t type)
{
    QByteArray bytes("i3-ipc");
    bytes.append(reinterpret_cast<const char *>(&size), sizeof size);
    bytes.append(reinterpret_cast<const char *>(&type), sizeof type);
    return bytes;
}

std::vector<Message> allOf(MessageReader &reader)
{
    std::vector<Message> all;
    while (const auto message = reader.take())
        all.push_back(*message);
    return all;
}

TEST(Messages, aRequestIsMagicSizeTypeAndPayload)
{
    EXPECT_EQ(encoded(Request::GetTree, ""), header(0, 4));
    EXPECT_EQ(encoded(Request::Subscribe, R"(["mode"])"), header(8, 2) + R"(["mode"])");
}

TEST(Messages, severalInOnePieceAreTakenApart)
{
    MessageReader reader;
    reader.append(header(2, 4) + "{}" + header(0, 0) + header(4, 0x80000005) + "null");
    EXPECT_THAT(allOf(reader),
                ElementsAre(Message{4, "{}"}, Message{0, ""}, Message{0x80000005, "null"}));
    EXPECT_FALSE(reader.isBroken());
}

TEST(Messages, onlyTheHighestBitMakesAnEvent)
{
    EXPECT_TRUE((Message{0x80000005, {}}.isEvent()));
    EXPECT_FALSE((Message{5, {}}.isEvent()));
}

TEST(Messages, anyCutsGiveTheSameMessages)
{
    QRandomGenerator random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<Message> sent;
        QByteArray bytes;
        for (int count = random.bounded(1, 6); count > 0; --count) {
            const QByteArray payload(random.bounded(0, 300), 'x');
            sent.push_back({random.bounded(20U), payload});
            bytes += header(static_cast<std::uint32_t>(payload.size()), sent.back().type) + payload;
        }
        MessageReader reader;
        std::vector<Message> taken;
        while (!bytes.isEmpty()) {
            const int piece = random.bounded(1, 40);
            reader.append(bytes.left(piece));
            bytes.remove(0, piece);
            for (const Message &message : allOf(reader))
                taken.push_back(message);
        }
        ASSERT_EQ(taken, sent);
    }
}

TEST(Messages, anIncompleteOneWaitsForItsRest)
{
    MessageReader reader;
    reader.append(header(4, 4) + "nul");
    EXPECT_EQ(reader.take(), std::nullopt);
    EXPECT_FALSE(reader.isBroken());
    reader.append("l");
    EXPECT_THAT(reader.take(), Optional(Message{4, "null"}));
}

TEST(Messages, whatIsNoMessageEndsTheReading)
{
    MessageReader reader;
    reader.append("i3-xpc");
    EXPECT_EQ(reader.take(), std::nullopt);
    EXPECT_TRUE(reader.isBroken());
    reader.append(header(0, 4));
    EXPECT_EQ(reader.take(), std::nullopt);
}

TEST(Messages, rubbishIsKnownByItsFirstByte)
{
    MessageReader reader;
    reader.append("H");
    EXPECT_EQ(reader.take(), std::nullopt);
    EXPECT_TRUE(reader.isBroken());
}

TEST(Messages, aSizeBeyondReasonEndsTheReadingBeforeTheMemoryDoes)
{
    MessageReader reader;
    reader.append(header(0xffffffff, 4) + "{}");
    EXPECT_EQ(reader.take(), std::nullopt);
    EXPECT_TRUE(reader.isBroken());
}

} // namespace

} // namespace lumacap::sway
