#include "platform/portal/DisplayCut.h"

#include <gtest/gtest.h>

namespace lumacap::portal {

using namespace Qt::StringLiterals;
using wayland::Output;

namespace {

const Output plain{u"DP-1"_s, {1920, 1080}, {0, 0, 1920, 1080}};
const Output dense{u"eDP-1"_s, {3840, 2160}, {1920, 0, 1920, 1080}};
const Output fractional{u"DP-2"_s, {2560, 1440}, {3840, 0, 1707, 960}}; // at 1.5
const Output halfAgain{u"DP-3"_s, {1920, 1080}, {0, 0, 1280, 720}}; // at 1.5
const Output above{u"DP-4"_s, {1280, 1024}, {-300, -1024, 1280, 1024}};
const Output upright{u"DP-5"_s, {1080, 1920}, {1920, -400, 1080, 1920}};

struct Case {
    const char *name;
    Output display;
    std::vector<Output> outputs;
    QSize picture;
    std::optional<DisplayCut> cut;
};

class DisplayCutOf : public testing::TestWithParam<Case> { };

TEST_P(DisplayCutOf, findsTheDisplaysOwnPixelsOrNone)
{
    const Case &that = GetParam();
    const auto cut = cutOf(that.display.id(), that.outputs, that.picture);
    EXPECT_EQ(cut ? std::optional(*cut) : std::nullopt, that.cut);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, DisplayCutOf,
    testing::Values(
        Case{"aSingleDisplay", plain, {plain}, {1920, 1080}, DisplayCut{{0, 0, 1920, 1080}}},
        Case{"aSingleDenseDisplay", dense, {dense}, {3840, 2160}, DisplayCut{{0, 0, 3840, 2160}}},
        Case{"aSingleFractionalDisplay",
             fractional,
             {fractional},
             {2560, 1440},
             DisplayCut{{0, 0, 2560, 1440}}},
        Case{"aSingleDisplayShrunkToItsUnits", dense, {dense}, {1920, 1080}, std::nullopt},
        Case{"aSingleDisplayEnlarged", plain, {plain}, {3840, 2160}, std::nullopt},
        Case{"twoOfTheSameScale",
             above,
             {plain, above},
             {2220, 2104},
             DisplayCut{{0, 0, 1280, 1024}}},
        Case{"aDisplayBelowAndBesideTheOrigin",
             plain,
             {plain, above},
             {2220, 2104},
             DisplayCut{{300, 1024, 1920, 1080}}},
        Case{"aTurnedDisplay",
             upright,
             {plain, upright},
             {3000, 1920},
             DisplayCut{{1920, 0, 1080, 1920}}},
        Case{"theDenseOneOfTwo",
             dense,
             {plain, dense},
             {7680, 2160},
             DisplayCut{{3840, 0, 3840, 2160}}},
        Case{"thePlainOneOfTwoEnlarged",
             plain,
             {plain, dense},
             {7680, 2160},
             DisplayCut{{0, 0, 3840, 2160}, 2}},
        Case{"thePlainOneOfTwoWhereAllIsInUnits",
             plain,
             {plain, dense},
             {3840, 1080},
             DisplayCut{{0, 0, 1920, 1080}}},
        Case{"theDenseOneWhereAllIsInUnits", dense, {plain, dense}, {3840, 1080}, std::nullopt},
        Case{"twoFractionalOnesOfTheSameScale",
             halfAgain,
             {halfAgain, Output{u"DP-6"_s, {1920, 1080}, {1280, 0, 1280, 720}}},
             {3840, 1080},
             DisplayCut{{0, 0, 1920, 1080}}},
        Case{"aPlainOneBesideAFractionalOne",
             plain,
             {plain, Output{u"DP-6"_s, {1920, 1080}, {1920, 0, 1280, 720}}},
             {4800, 1620},
             std::nullopt},
        Case{"aFractionalOneAmongDenseOnes",
             fractional,
             {dense, fractional},
             {7254, 2160},
             std::nullopt},
        Case{"aPictureOfSomethingElse", plain, {plain, dense}, {640, 480}, std::nullopt},
        Case{"aPictureOfOneDisplayAmongTwo", dense, {above, dense}, {3840, 2160}, std::nullopt},
        Case{"aDisplayThatHasGone", upright, {plain}, {1920, 1080}, std::nullopt},
        Case{"noDisplayAtAll", plain, {}, {1920, 1080}, std::nullopt}),
    [](const auto &tested) { return std::string(tested.param.name); });

TEST(DisplayCut, saysInWordsWhyADisplayIsNotInThePicture)
{
    const auto shrunk = cutOf(dense.id(), {plain, dense}, {3840, 1080});
    ASSERT_FALSE(shrunk);
    EXPECT_EQ(
        shrunk.error().description,
        u"the desktop's portal gives the picture of this display at another scale than its own"_s);
    const auto another = cutOf(plain.id(), {plain}, {640, 480});
    ASSERT_FALSE(another);
    EXPECT_EQ(another.error().description,
              u"the desktop's portal gives a picture that is not one of the screens"_s);
}

/// A picture in which each pixel tells its place.
QImage places(QSize size, QImage::Format format = QImage::Format_RGB32)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb(x, y, 7));
    }
    return image.convertToFormat(format);
}

TEST(DisplayCut, cutsWithoutChangingAPixel)
{
    const QImage picture = places({60, 40}, QImage::Format_RGB888);
    const auto image = cutOut(picture, {{10, 20, 30, 15}});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->format(), QImage::Format_ARGB32_Premultiplied);
    EXPECT_EQ(image->size(), QSize(30, 15));
    EXPECT_EQ(image->pixel(0, 0), qRgb(10, 20, 7));
    EXPECT_EQ(image->pixel(29, 14), qRgb(39, 34, 7));
}

TEST(DisplayCut, isOpaqueWhateverThePicturesFormat)
{
    QImage picture(4, 4, QImage::Format_RGBA8888);
    picture.fill(QColor(200, 100, 50, 0));
    const auto image = cutOut(picture, {{0, 0, 4, 4}});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->pixel(1, 1), qRgb(200, 100, 50));
}

TEST(DisplayCut, undoesAnEnlargementThatRepeatedPixels)
{
    const QImage own = places({20, 10});
    const QImage enlarged = own.scaled(60, 30);
    const auto image = cutOut(enlarged, {{30, 0, 30, 30}, 3});
    ASSERT_TRUE(image);
    EXPECT_EQ(image->convertToFormat(QImage::Format_RGB32), own.copy(10, 0, 10, 10));
}

TEST(DisplayCut, refusesAnEnlargementThatMixedPixels)
{
    const QImage enlarged =
        places({20, 10}).scaled(40, 20, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const auto image = cutOut(enlarged, {{0, 0, 40, 20}, 2});
    ASSERT_FALSE(image);
    EXPECT_EQ(
        image.error().description,
        u"the desktop's portal gives the picture of this display at another scale than its own"_s);
}

} // namespace

} // namespace lumacap::portal
