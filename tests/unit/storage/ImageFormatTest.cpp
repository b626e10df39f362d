#include "preferences/storage/ImageFormat.h"

#include <QString>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumacap {

TEST(ImageFormat, isReadFromExactlyItsRawValue)
{
    EXPECT_EQ(imageFormat(u"png"), ImageFormat::Png);
    EXPECT_EQ(imageFormat(u"jpeg"), ImageFormat::Jpeg);
    EXPECT_EQ(imageFormat(u"tiff"), ImageFormat::Tiff);
}

TEST(ImageFormat, isNothingForAnyOtherText)
{
    for (const QString &text : {u"JPEG"_s, u"Png"_s, u"jpg"_s, u""_s, u"tif"_s, u"png "_s})
        EXPECT_EQ(imageFormat(text), std::nullopt) << text.toStdString();
}

TEST(ImageFormat, listsPngJpegTiffInThisOrder)
{
    ASSERT_EQ(imageFormats.size(), 3U);
    EXPECT_EQ(imageFormats[0].rawValue, "png"_L1);
    EXPECT_EQ(imageFormats[1].rawValue, "jpeg"_L1);
    EXPECT_EQ(imageFormats[2].rawValue, "tiff"_L1);
}

} // namespace lumacap
