#include "platform/x11/RootPixelFormat.h"

#include <gtest/gtest.h>

namespace lumacap::x11 {

TEST(RootPixelFormat, padsRowsToWholeWords)
{
    const PixelFormat wide{QImage::Format_RGB32, 32, 0xff000000};
    const PixelFormat narrow{QImage::Format_RGB16, 16, 0};

    EXPECT_EQ(bytesPerLine(wide, 3), 12);
    EXPECT_EQ(bytesPerLine(narrow, 3), 8);
    EXPECT_EQ(bytesPerLine(narrow, 4), 8);
    EXPECT_EQ(bytesPerLine({QImage::Format_RGB555, 16, 0}, 3), 8);
}

} // namespace lumacap::x11
