#include "platform/kwin/capture/PictureLayout.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

/// What KWin says of a picture of 30 × 20 pixels.
QVariantMap reply()
{
    return {{u"type"_s, u"raw"_s}, {u"format"_s, 5u}, {u"width"_s, 30u},       {u"height"_s, 20u},
            {u"stride"_s, 120u},   {u"scale"_s, 1.0}, {u"screen"_s, u"DP-1"_s}};
}

QVariantMap replyWith(const QString &key, const QVariant &value)
{
    QVariantMap changed = reply();
    changed[key] = value;
    return changed;
}

struct Rubbish {
    const char *explanation;
    QVariantMap reply;
};

void PrintTo(const Rubbish &rubbish, std::ostream *stream)
{
    *stream << rubbish.explanation;
}

class RubbishLayout : public testing::TestWithParam<Rubbish> { };

} // namespace

TEST(PictureLayoutTest, anOrdinaryReplyIsUnderstood)
{
    const auto layout = pictureLayout(reply());
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->size, QSize(30, 20));
    EXPECT_EQ(layout->bytesPerLine, 120);
    EXPECT_EQ(layout->bytes(), 2400);
}

TEST(PictureLayoutTest, transparencyIsTakenForUnusedBits)
{
    for (const auto format :
         {QImage::Format_RGB32, QImage::Format_ARGB32, QImage::Format_ARGB32_Premultiplied}) {
        const auto layout = pictureLayout(replyWith(u"format"_s, uint{format}));
        ASSERT_TRUE(layout);
        EXPECT_EQ(layout->pixels, (PixelFormat{QImage::Format_RGB32, 32, 0xff000000}));
    }
}

TEST(PictureLayoutTest, rowsMayBePadded)
{
    const auto layout = pictureLayout(replyWith(u"stride"_s, 128u));
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->bytes(), 2560);
}

TEST(PictureLayoutTest, everyFormatCountsItsOwnBytes)
{
    EXPECT_TRUE(pictureLayout(replyWith(u"format"_s, uint{QImage::Format_RGB16})));
    // A row of 30 of these takes 240 bytes.
    EXPECT_FALSE(pictureLayout(replyWith(u"format"_s, uint{QImage::Format_RGBA64})));
}

TEST_P(RubbishLayout, isAFailure)
{
    EXPECT_FALSE(pictureLayout(GetParam().reply));
}

INSTANTIATE_TEST_SUITE_P(
    PictureLayoutTest, RubbishLayout,
    testing::Values(Rubbish{"nothing", {}}, Rubbish{"noKind", replyWith(u"type"_s, {})},
                    Rubbish{"anotherKind", replyWith(u"type"_s, u"dmabuf"_s)},
                    Rubbish{"noFormat", replyWith(u"format"_s, {})},
                    Rubbish{"formatWithAPalette",
                            replyWith(u"format"_s, uint{QImage::Format_Indexed8})},
                    Rubbish{"formatThatIsNone", replyWith(u"format"_s, 4711u)},
                    Rubbish{"formatInWords", replyWith(u"format"_s, u"RGB"_s)},
                    Rubbish{"noWidth", replyWith(u"width"_s, 0u)},
                    Rubbish{"negativeHeight", replyWith(u"height"_s, -20)},
                    Rubbish{"endlessWidth", replyWith(u"width"_s, 4'000'000'000u)},
                    Rubbish{"shortRows", replyWith(u"stride"_s, 116u)},
                    Rubbish{"rowsOfHalfWords", replyWith(u"stride"_s, 122u)},
                    Rubbish{"endlessRows", replyWith(u"stride"_s, 0x7ffffffcu)}),
    [](const auto &test) { return std::string(test.param.explanation); });

} // namespace lumacap::kwin
