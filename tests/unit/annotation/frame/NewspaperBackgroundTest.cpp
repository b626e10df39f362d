#include "annotation/frame/NewspaperBackground.h"

#include "Pixels.h"
#include "ScriptedRandom.h"

#include <gmock/gmock.h>

namespace lumacap {
namespace {

constexpr Rgb paper{0.94, 0.9, 0.82};
constexpr Rgb ink{0.12, 0.1, 0.08};
constexpr Rgb separator{0.15, 0.12, 0.1};

constexpr Size pageSize{300, 120};
constexpr std::size_t specks = 2160; // 300 × 120 × 0.06
constexpr std::size_t speckDraws = 3 * specks;
constexpr double columnWidth = 244.0 / 3;
constexpr std::array columnX{16.0, 28 + columnWidth, 40 + 2 * columnWidth};
constexpr int scale = 4;

constexpr AskedRange chance{0, 1};
constexpr AskedRange titleWidth{20, 60};
constexpr AskedRange titleGap{8, 16};
constexpr AskedRange firstHeadline{30, columnWidth * 0.6};
constexpr AskedRange secondHeadline{15, columnWidth * 0.3};
constexpr AskedRange wordWidth{8, 30};
constexpr AskedRange wordInk{0.55, 0.8};
constexpr AskedRange wordGap{2.5, 5};
constexpr AskedRange subheading{columnWidth * 0.3, columnWidth * 0.7};
constexpr AskedRange fold{0.3 * 120, 0.5 * 120};

QImage page(RandomSource &random, Size size = pageSize, const QRect &hidden = QRect())
{
    QImage picture = filled(static_cast<int>(size.width) * scale,
                            static_cast<int>(size.height) * scale, 0xffff00ffU);
    drawNewspaperBackground(picture, size, scale, random, hidden);
    return picture;
}

/// The pixel around a point of the page.
QRgb pixelAt(const QImage &picture, double x, double y)
{
    return picture.pixel(static_cast<int>(x * scale),
                         picture.height() - 1 - static_cast<int>(y * scale));
}

void expectInk(const QImage &picture, double x, double y, double alpha)
{
    EXPECT_LE(distance(pixelAt(picture, x, y), levelsOver(paper, ink, alpha)), 1) << x << ", " << y;
}

void expectPaper(const QImage &picture, double x, double y)
{
    EXPECT_LE(distance(pixelAt(picture, x, y), levelsOver(paper)), 1) << x << ", " << y;
}

void append(std::vector<AskedRange> &ranges, std::size_t times,
            const std::vector<AskedRange> &group)
{
    for (std::size_t time = 0; time < times; ++time)
        ranges.insert(ranges.end(), group.begin(), group.end());
}

/// Lower ends everywhere, but for the specks: they lie in the upper right corner, out of the way.
double lowerEndsWithSpecksAside(const AskedRange &range, std::size_t index)
{
    return index < speckDraws ? range.upper : range.lower;
}

TEST(NewspaperBackground, asksForItsNumbersInOrderWhenAllAreLowest)
{
    ScriptedRandom random(lowerEnd);
    page(random);
    std::vector<AskedRange> expected;
    append(expected, specks, {{0, 300}, {0, 120}, {0.7, 0.92}});
    append(expected, 9, {titleWidth, titleGap}); // from 36 in steps of 28, below 264
    for (int column = 0; column < 3; ++column) {
        append(expected, 1, {chance, firstHeadline, secondHeadline});
        append(expected, 8, {wordWidth, wordInk, wordGap}); // in steps of 10.5, below 76.3
        append(expected, 1, {chance, chance, subheading}); // y: 38, then 26.75, then 17.75
    }
    append(expected, 1, {fold});
    EXPECT_EQ(random.asked(), expected);
}

TEST(NewspaperBackground, asksForItsNumbersInOrderWhenAllAreHighest)
{
    ScriptedRandom random(upperEnd);
    page(random);
    std::vector<AskedRange> expected;
    append(expected, specks, {{0, 300}, {0, 120}, {0.7, 0.92}});
    append(expected, 3, {titleWidth, titleGap}); // in steps of 76
    for (int column = 0; column < 3; ++column) {
        append(expected, 1, {chance});
        for (int line = 0; line < 7; ++line) { // from 50 in steps of 4.5, above 21
            append(expected, 3, {wordWidth, wordInk, wordGap}); // in steps of 35
            append(expected, 1, {chance, chance});
        }
    }
    append(expected, 1, {fold});
    EXPECT_EQ(random.asked(), expected);
}

TEST(NewspaperBackground, hasNoSecondHeadlineBarWithoutRoomForIt)
{
    // In a column of 60 points a bar of 36 and a gap of 6 leave less than 20 points.
    ScriptedRandom random([](const AskedRange &range, std::size_t) {
        return range == chance ? range.lower : range.upper;
    });
    page(random, {236, 120});
    EXPECT_EQ(std::ranges::count(random.asked(), AskedRange{30, 36}), 3);
    EXPECT_EQ(std::ranges::count(random.asked(), AskedRange{15, 18}), 0);
}

TEST(NewspaperBackground, tossesAtTheProbabilitiesThemselves)
{
    // The three tosses of a column: a headline below 0.5, a paragraph below 0.08, a sub-heading
    // below 0.03. Just at them nothing happens.
    constexpr std::array tosses{0.5, 0.08, 0.03};
    std::size_t toss = 0;
    ScriptedRandom random([&](const AskedRange &range, std::size_t) {
        if (!(range == chance))
            return range.upper;
        const bool isFirstOfItsColumn = toss % 15 == 0;
        const std::size_t kind = isFirstOfItsColumn ? 0 : 1 + (toss % 15 - 1) % 2;
        ++toss;
        return tosses.at(kind);
    });
    page(random);
    EXPECT_EQ(toss, 45U); // seven lines in each of the three columns
    EXPECT_EQ(std::ranges::count(random.asked(), firstHeadline), 0);
    EXPECT_EQ(std::ranges::count(random.asked(), subheading), 0);
}

TEST(NewspaperBackground, drawsTheMastheadAcrossThePage)
{
    ScriptedRandom random(lowerEndsWithSpecksAside);
    const QImage picture = page(random);
    expectInk(picture, 16.1, 86.1, 0.85); // the rule from 86 to 90
    expectInk(picture, 283.9, 89.9, 0.85);
    expectPaper(picture, 15.9, 88);
    expectPaper(picture, 284.1, 88);
    expectPaper(picture, 150, 90.1);
    expectPaper(picture, 150, 85.9);
    expectInk(picture, 36.1, 70.1, 0.85); // the title from 70 to 82, of blocks 20 wide and 8 apart
    expectInk(picture, 55.9, 81.9, 0.85);
    expectPaper(picture, 35.9, 75);
    expectPaper(picture, 56.1, 75);
    expectInk(picture, 64.1, 75, 0.85);
    expectInk(picture, 279.9, 75, 0.85); // the ninth
    expectPaper(picture, 281, 75);
    expectInk(picture, 150, 64.1, 0.85); // the thin rule from 64 to 65
    expectInk(picture, 150, 64.9, 0.85);
    expectPaper(picture, 150, 65.1);
    expectPaper(picture, 150, 63.9);
}

TEST(NewspaperBackground, separatesTheColumnsByThinLines)
{
    ScriptedRandom random(lowerEndsWithSpecksAside);
    const QImage picture = page(random);
    for (const double x : {columnWidth + 22, 2 * columnWidth + 34}) {
        EXPECT_LE(distance(pixelAt(picture, x, 16.1), levelsOver(paper, separator, 0.5)), 1);
        EXPECT_LE(distance(pixelAt(picture, x, 59.9), levelsOver(paper, separator, 0.5)), 1);
        expectPaper(picture, x, 15.9);
        expectPaper(picture, x, 60.1);
        expectPaper(picture, x - 0.55, 40);
        expectPaper(picture, x + 0.55, 40);
    }
}

TEST(NewspaperBackground, drawsAColumnsHeadlineWordsAndSubheading)
{
    ScriptedRandom random(lowerEndsWithSpecksAside);
    const QImage picture = page(random);
    for (const double x : columnX) {
        expectInk(picture, x + 0.3, 50.1, 0.85); // the first bar, 30 wide, from 50 to 56
        expectInk(picture, x + 29.5, 55.9, 0.85);
        expectPaper(picture, x + 30.5, 53);
        expectInk(picture, x + 36.5, 53, 0.85); // the second, 15 wide
        expectInk(picture, x + 50.5, 53, 0.85);
        expectPaper(picture, x + 51.5, 53);
        expectPaper(picture, x + 5, 49.9);
        expectInk(picture, x + 0.3, 38.1, 0.55); // words of 8, 2.5 apart, from 38 to 39.2
        expectInk(picture, x + 7.5, 38.9, 0.55);
        expectPaper(picture, x + 8.5, 38.5);
        expectInk(picture, x + 11, 38.5, 0.55);
        expectPaper(picture, x + 4, 39.6);
        expectInk(picture, x + 0.3, 26.8, 0.85); // the sub-heading from 26.75 to 30.75
        expectInk(picture, x + columnWidth * 0.3 - 0.5, 30.5, 0.85);
        expectPaper(picture, x + columnWidth * 0.3 + 0.5, 28);
        expectPaper(picture, x + 4, 31.1);
    }
}

TEST(NewspaperBackground, endsALineWithItsColumn)
{
    ScriptedRandom random([](const AskedRange &range, std::size_t index) {
        return index < speckDraws ? range.lower : range.upper;
    });
    const QImage picture = page(random);
    expectInk(picture, 16.3 + 70, 50.3, 0.8); // the third word, cut to 11.3
    expectInk(picture, 16 + columnWidth - 0.5, 50.3, 0.8);
    expectPaper(picture, 16 + columnWidth + 0.5, 50.3);
    expectInk(picture, 20, 23.2, 0.8); // the seventh line, and no eighth
    expectPaper(picture, 20, 18.6);
}

TEST(NewspaperBackground, foldsThePageByAFaintLine)
{
    ScriptedRandom random(lowerEndsWithSpecksAside);
    const QImage picture = page(random);
    for (const double x : {16.1, 100.0, 283.9}) {
        expectInk(picture, x, 36.1, 0.4);
        expectInk(picture, x, 36.4, 0.4);
        expectPaper(picture, x, 36.6);
        expectPaper(picture, x, 35.9);
    }
    expectPaper(picture, 15.9, 36.1);
}

TEST(NewspaperBackground, sprinklesSpecksOfTheirRandomBrightness)
{
    ScriptedRandom random([](const AskedRange &range, std::size_t index) {
        constexpr std::array firstSpeck{150.5, 10.5, 0.8};
        return index < firstSpeck.size() ? firstSpeck.at(index) : range.upper;
    });
    const QImage picture = page(random);
    const std::array<double, 3> speck = levelsOver(paper, {0.8, 0.96 * 0.8, 0.88 * 0.8}, 0.15);
    EXPECT_LE(distance(pixelAt(picture, 150.6, 10.6), speck), 1);
    EXPECT_LE(distance(pixelAt(picture, 151.4, 11.4), speck), 1);
    expectPaper(picture, 150.4, 11);
    expectPaper(picture, 151.6, 11);
    expectPaper(picture, 151, 10.4);
    expectPaper(picture, 151, 11.6);
}

TEST(NewspaperBackground, leavesNoTitleBlocksOnTheNarrowestPage)
{
    ScriptedRandom random(upperEnd);
    page(random, {72, 100});
    EXPECT_EQ(std::ranges::count(random.asked(), titleWidth), 0);
}

TEST(NewspaperBackground, survivesOnANarrowPageWithoutHeadlines)
{
    ScriptedRandom random(upperEnd);
    page(random, {150, 200});
    EXPECT_EQ(random.asked().back(), (AskedRange{60, 100}));
}

TEST(NewspaperBackgroundDeathTest, stopsTheProgramAtAHeadlineOnANarrowPage)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    ScriptedRandom random(lowerEnd);
    EXPECT_DEATH(page(random, {205, 200}), "random range must not end below its start");
    page(random, {207, 200}); // the first width whose column holds a bar of 30 points
}

TEST(NewspaperBackground, isTheSamePageForTheSameNumbersAndAnotherForOthers)
{
    ScriptedRandom one(seeded(1));
    ScriptedRandom again(seeded(1));
    ScriptedRandom other(seeded(2));
    const QImage picture = page(one);
    EXPECT_EQ(picture, page(again));
    EXPECT_NE(picture, page(other));
}

TEST(NewspaperBackground, drawsTheSamePageAroundWhatIsHidden)
{
    const QRect hidden(300, 100, 600, 300);
    ScriptedRandom random(seeded(3));
    ScriptedRandom again(seeded(3));
    QImage picture = page(random);
    QImage partial = page(again, pageSize, hidden);
    EXPECT_EQ(random.asked(), again.asked());
    for (QImage *image : {&picture, &partial}) {
        for (int y = hidden.top(); y <= hidden.bottom(); ++y)
            std::fill_n(reinterpret_cast<QRgb *>(image->scanLine(y)) + hidden.left(),
                        hidden.width(), 0U);
    }
    EXPECT_EQ(picture, partial);
}

} // namespace
} // namespace lumacap
