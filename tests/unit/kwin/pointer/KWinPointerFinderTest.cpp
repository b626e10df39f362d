#include "platform/kwin/pointer/KWinPointerFinder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

TEST(KWinPointerFinderTest, twoNumbersAreTheMiddleOfAPixel)
{
    EXPECT_EQ(pointerPlace(u"959 539"_s), QPointF(959.5, 539.5));
    EXPECT_EQ(pointerPlace(u"-0.5 10.99"_s), QPointF(-0.5, 10.5));
}

TEST(KWinPointerFinderTest, anythingElseIsNone)
{
    for (const QString &words : {u""_s, u"959"_s, u"undefined undefined"_s, u"1 2 3"_s, u"1 NaN"_s,
                                 u"nan 2"_s, u"inf 2"_s, u"1  2"_s, u"1,2"_s})
        EXPECT_FALSE(pointerPlace(words)) << words.toStdString();
}

} // namespace lumacap::kwin
