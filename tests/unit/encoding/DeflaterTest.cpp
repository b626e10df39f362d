#include "capture/encoding/Deflater.h"

#include <cstring>
#include <numeric>
#include <random>
#include <vector>

#include <gtest/gtest.h>
#include <zlib.h>

using namespace lumacap;

namespace {

std::vector<uchar> randomBytes(std::size_t size, int limit)
{
    std::minstd_rand random{5};
    std::vector<uchar> bytes(size);
    for (uchar &byte : bytes)
        byte = static_cast<uchar>(random() % static_cast<unsigned>(limit));
    return bytes;
}

std::vector<uchar> inflated(const QByteArray &raw, std::size_t size)
{
    std::vector<uchar> bytes(size);
    z_stream stream{};
    EXPECT_EQ(inflateInit2(&stream, -MAX_WBITS), Z_OK);
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(raw.constData()));
    stream.avail_in = static_cast<uInt>(raw.size());
    stream.next_out = bytes.data();
    stream.avail_out = static_cast<uInt>(size);
    EXPECT_EQ(inflate(&stream, Z_FINISH), Z_STREAM_END);
    EXPECT_EQ(stream.avail_in, 0U);
    EXPECT_EQ(stream.avail_out, 0U);
    inflateEnd(&stream);
    return bytes;
}

class DeflaterOf : public ::testing::TestWithParam<DeflateLibrary> {
protected:
    std::unique_ptr<Deflater> m_deflater = makeDeflater(GetParam());
};

} // namespace

TEST_P(DeflaterOf, stripsOfOneAndOfTwoDeflatersJoinIntoOneStream)
{
    const std::vector<uchar> first = randomBytes(70'001, 3);
    const std::vector<uchar> second = randomBytes(40'003, 256);
    const std::unique_ptr<Deflater> other = makeDeflater(GetParam());
    for (Deflater *last : {m_deflater.get(), other.get()}) {
        const auto head = m_deflater->deflate(first, Repeats::Near, StripEnd::AnotherStrip);
        const auto tail = last->deflate(second, Repeats::Anywhere, StripEnd::EndOfStream);
        ASSERT_TRUE(head && tail);
        std::vector<uchar> both = first;
        both.insert(both.end(), second.begin(), second.end());
        EXPECT_EQ(inflated(*head + *tail, both.size()), both);
    }
}

TEST_P(DeflaterOf, incompressibleStripsFit)
{
    for (const std::size_t size : {1UL, 100UL, 65'535UL, 3'000'000UL}) {
        const std::vector<uchar> noise = randomBytes(size, 256);
        for (const Repeats repeats : {Repeats::Near, Repeats::Anywhere}) {
            const auto strip = m_deflater->deflate(noise, repeats, StripEnd::EndOfStream);
            ASSERT_TRUE(strip) << size;
            EXPECT_EQ(inflated(*strip, size), noise);
        }
    }
}

TEST_P(DeflaterOf, repeatsFarApartAreFoundOnlyWhereTheyAreLookedFor)
{
    std::vector<uchar> twice = randomBytes(2'000, 256);
    const std::vector<uchar> once = twice;
    twice.insert(twice.end(), once.begin(), once.end());
    const auto looked = m_deflater->deflate(twice, Repeats::Anywhere, StripEnd::EndOfStream);
    const auto near = m_deflater->deflate(twice, Repeats::Near, StripEnd::EndOfStream);
    ASSERT_TRUE(looked && near);
    EXPECT_LT(looked->size(), 2'500);
    EXPECT_GT(near->size(), 3'900);
}

TEST_P(DeflaterOf, checksumsAreThoseOfTheFormats)
{
    const std::vector<uchar> digits{'1', '2', '3', '4', '5', '6', '7', '8', '9'};
    EXPECT_EQ(m_deflater->crc32(digits), 0xcbf43926);
    EXPECT_EQ(m_deflater->adler32(digits), 0x091e01deU);
    const std::vector<uchar> many(1'000'000, 255);
    EXPECT_EQ(m_deflater->adler32(many), ::adler32(1, many.data(), static_cast<uInt>(many.size())));
}

INSTANTIATE_TEST_SUITE_P(Each, DeflaterOf, ::testing::ValuesIn(deflateLibraries()),
                         [](const auto &instance) {
                             return instance.param == DeflateLibrary::IsaL ? "Isal" : "Zlib";
                         });
