#include "annotation/frame/BackgroundGradient.h"

#include "annotation/frame/DominantColor.h"

#include "Pixels.h"

#include <gtest/gtest.h>

#include <vector>

namespace lumacap {
namespace {

constexpr GradientColors withoutColor{{0.93, 0.45, 0.28}, {0.65, 0.25, 0.72}};
constexpr GradientColors behindBrightGrey{{0.2, 0.15, 0.55}, {0.1, 0.45, 0.55}};
constexpr GradientColors behindDarkGrey{{0.95, 0.55, 0.35}, {0.7, 0.3, 0.75}};

void expectNear(const Rgb &color, const Rgb &expected)
{
    EXPECT_NEAR(color.red, expected.red, 1e-9);
    EXPECT_NEAR(color.green, expected.green, 1e-9);
    EXPECT_NEAR(color.blue, expected.blue, 1e-9);
}

GradientColors contrasting(const std::vector<double> &components)
{
    return contrastingGradientColors(components);
}

struct Conversion {
    const char *name;
    double hue;
    Rgb color; // at saturation 0.5 and brightness 0.8: from 0.4 to 0.8
};

class HsbToRGB : public testing::TestWithParam<Conversion> { };

TEST_P(HsbToRGB, followsTheColorWheel)
{
    expectNear(hsbToRGB(GetParam().hue, 0.5, 0.8), GetParam().color);
}

INSTANTIATE_TEST_SUITE_P(, HsbToRGB,
                         testing::Values(Conversion{"red", 0, {0.8, 0.4, 0.4}},
                                         Conversion{"orange", 0.5 / 6, {0.8, 0.6, 0.4}},
                                         Conversion{"yellowGreen", 1.25 / 6, {0.7, 0.8, 0.4}},
                                         Conversion{"springGreen", 2.5 / 6, {0.4, 0.8, 0.6}},
                                         Conversion{"azure", 3.5 / 6, {0.4, 0.6, 0.8}},
                                         Conversion{"violet", 4.25 / 6, {0.5, 0.4, 0.8}},
                                         Conversion{"rose", 5.5 / 6, {0.8, 0.4, 0.6}},
                                         Conversion{"onceAround", 1, {0.8, 0.4, 0.4}}),
                         [](const auto &conversion) { return std::string(conversion.param.name); });

TEST(BackgroundGradient, isGreyWithoutSaturation)
{
    expectNear(hsbToRGB(0.7, 0, 0.3), {0.3, 0.3, 0.3});
}

struct Contrast {
    const char *name;
    std::vector<double> components;
    GradientColors expected;
};

class ContrastingGradient : public testing::TestWithParam<Contrast> { };

TEST_P(ContrastingGradient, answersItsColor)
{
    const GradientColors colors = contrasting(GetParam().components);
    expectNear(colors.first, GetParam().expected.first);
    expectNear(colors.second, GetParam().expected.second);
}

// The hues are counted in sixths of the wheel, from which the colours' own hues can be read off.
INSTANTIATE_TEST_SUITE_P(
    , ContrastingGradient,
    testing::Values(
        Contrast{"noComponent", {}, withoutColor},
        Contrast{"twoComponents", {1, 0.5}, withoutColor},
        Contrast{"black", {0, 0, 0}, behindDarkGrey},
        Contrast{"asGoodAsBlack", {0.001, 0, 0}, behindDarkGrey},
        Contrast{"white", {1, 1, 1}, behindBrightGrey},
        Contrast{"greyAtTheLimit", {0.55, 0.55, 0.55}, behindDarkGrey},
        Contrast{"greyAboveTheLimit", {0.56, 0.56, 0.56}, behindBrightGrey},
        Contrast{"nearlyGrey", {0.8, 0.8, 0.6801}, behindBrightGrey},
        Contrast{"justColored",
                 {0.8, 0.8, 0.68},
                 {hsbToRGB(1 / 6.0 + 0.42, 0.6, 0.4), hsbToRGB(1 / 6.0 + 0.58, 0.5, 0.65)}},
        Contrast{"red", {1, 0, 0}, {hsbToRGB(0.42, 0.8, 0.4), hsbToRGB(0.58, 0.7, 0.65)}},
        Contrast{"redWithAnAlpha",
                 {1, 0, 0, 0.5},
                 {hsbToRGB(0.42, 0.8, 0.4), hsbToRGB(0.58, 0.7, 0.65)}},
        Contrast{"darkRed", {0.55, 0, 0}, {hsbToRGB(0.42, 0.8, 0.6), hsbToRGB(0.58, 0.7, 0.85)}},
        Contrast{"green",
                 {0, 1, 0},
                 {hsbToRGB(1 / 3.0 + 0.42, 0.8, 0.4), hsbToRGB(1 / 3.0 + 0.58, 0.7, 0.65)}},
        Contrast{"blueTurnsOnceAround",
                 {0, 0, 1},
                 {hsbToRGB(2 / 3.0 - 0.58, 0.8, 0.4), hsbToRGB(2 / 3.0 - 0.42, 0.7, 0.65)}},
        Contrast{"roseHasANegativeHue",
                 {1, 0, 0.5},
                 {hsbToRGB(11 / 12.0 - 0.58, 0.8, 0.4), hsbToRGB(11 / 12.0 - 0.42, 0.7, 0.65)}},
        Contrast{"halfSaturated",
                 {0.6, 0.3, 0.3},
                 {hsbToRGB(0.42, 0.6, 0.4), hsbToRGB(0.58, 0.5, 0.65)}},
        Contrast{"saturatedABitMore",
                 {0.5, 0.2, 0.2},
                 {hsbToRGB(0.42, 0.7, 0.6), hsbToRGB(0.58, 0.6, 0.85)}}),
    [](const auto &contrast) { return std::string(contrast.param.name); });

TEST(BackgroundGradient, ofPureRedHasTheHuesAcrossTheWheel)
{
    const GradientColors colors =
        gradientColors(FrameBackgroundStyle::DominantColor, filled(64, 48, qRgb(255, 0, 0)))
            .value_or(GradientColors());
    expectNear(colors.first, {0.08, 0.4, 0.08 + 0.32 * 0.52}); // hue 0.42: 2.52 sixths
    expectNear(colors.second, {0.195, 0.195 + 0.455 * 0.52, 0.65}); // hue 0.58: 3.48 sixths
}

TEST(BackgroundGradient, ofABlackImageIsThePairForDarkGrey)
{
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::DominantColor, filled(64, 48, 0xff000000U)),
              behindDarkGrey);
}

TEST(BackgroundGradient, ofANullImageIsThePairForDarkGrey)
{
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::DominantColor, QImage()), behindDarkGrey);
}

TEST(BackgroundGradient, ofANamedStyleDoesNotLookAtTheImage)
{
    const QImage red = filled(8, 8, qRgb(255, 0, 0));
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::DarkSlate, red),
              (GradientColors{{0.12, 0.13, 0.16}, {0.22, 0.23, 0.27}}));
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::Light, red),
              (GradientColors{{0.92, 0.93, 0.95}, {0.98, 0.98, 0.99}}));
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::Ocean, red),
              (GradientColors{{0.04, 0.12, 0.32}, {0.08, 0.28, 0.52}}));
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::Sunset, red),
              (GradientColors{{0.5, 0.08, 0.22}, {0.88, 0.35, 0.12}}));
}

TEST(BackgroundGradient, isMissingForTheNewspaper)
{
    EXPECT_EQ(gradientColors(FrameBackgroundStyle::Newspaper, filled(8, 8, 0xff000000U)),
              std::nullopt);
}

} // namespace
} // namespace lumacap
