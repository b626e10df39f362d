#include "annotation/frame/NewspaperBackground.h"

#include "annotation/frame/AlignedFill.h"
#include "annotation/frame/RandomSource.h"

#include <algorithm>
#include <cmath>

namespace lumacap {
namespace {

// Lengths in points, y counted from the lower edge of the page; colours from 0 to 1.
namespace look {
constexpr Rgb paper{0.94, 0.9, 0.82};
constexpr Rgb ink{0.12, 0.1, 0.08};
constexpr double solidInk = 0.85; // alpha of the masthead, the headlines and the sub-headings

constexpr double specksInASquarePoint = 0.06;
constexpr double speckSide = 1;
constexpr double speckAlpha = 0.15;
constexpr Rgb speckTint{1, 0.96, 0.88}; // times its random brightness

constexpr double margin = 16;
constexpr double gutter = 12;
constexpr int columns = 3;

constexpr double mastheadRuleBelowTop = 34;
constexpr double mastheadRuleHeight = 4;
constexpr double titleBelowTop = 50;
constexpr double titleHeight = 12;
constexpr double titleIndent = 36; // from either edge of the page
constexpr double thinRuleBelowTop = 56;
constexpr double thinRuleHeight = 1;

constexpr Rgb separator{0.15, 0.12, 0.1};
constexpr double separatorAlpha = 0.5;
constexpr double separatorWidth = 0.5;
constexpr double separatorBelowTop = 60;

constexpr double textBelowTop = 70;
constexpr double textBelowHeadline = 82; // from the page's upper edge too
constexpr double headlineHeight = 6;
constexpr double headlineGap = 6;
constexpr double headlineRoom = 20; // of a column, left free to the right of the first bar

constexpr double textEndsAbove = 21;
constexpr double wordHeight = 1.2;
constexpr double wordRoom = 5; // less than this at the end of a line stays empty
constexpr double lineAdvance = 4.5;
constexpr double paragraphAdvance = 6.75;
constexpr double paragraphChance = 0.08;
constexpr double subheadingChance = 0.03;
constexpr double subheadingHeight = 4;
constexpr double subheadingAdvance = 9;

constexpr double foldHeight = 0.5;
constexpr double foldAlpha = 0.4;
} // namespace look

/// One page while it is being drawn. The order of the random numbers is part of what a page is.
class Page {
public:
    Page(AlignedFill &fill, Size size, RandomSource &random)
        : m_fill{fill}
        , m_size{size}
        , m_random{random}
        , m_contentWidth{size.width - 2 * look::margin}
        , m_columnWidth{(m_contentWidth - (look::columns - 1) * look::gutter) / look::columns}
    {
    }

    void draw();

private:
    void drawSpecks();
    void drawMasthead();
    void drawSeparators();
    void drawColumn(double x);
    /// Answers where the first line of text goes.
    double drawHeadline(double x);
    void drawLine(double x, double y);
    /// Answers how much lower the next line goes.
    double drawSubheading(double x, double y);
    void drawFold();

    double columnX(int column) const
    {
        return look::margin + column * (m_columnWidth + look::gutter);
    }
    void drawInk(double x, double y, double width, double height, double alpha = look::solidInk)
    {
        m_fill.fill({{x, y}, {width, height}}, look::ink, alpha);
    }
    bool isTossed(double chance) { return m_random.uniform(0, 1) < chance; }

    AlignedFill &m_fill;
    Size m_size;
    RandomSource &m_random;
    double m_contentWidth;
    double m_columnWidth;
};

void Page::draw()
{
    m_fill.fillEverything(look::paper);
    drawSpecks();
    drawMasthead();
    drawSeparators();
    for (int column = 0; column < look::columns; ++column)
        drawColumn(columnX(column));
    drawFold();
}

void Page::drawSpecks()
{
    const auto count = static_cast<long long>(
        std::floor(m_size.width * m_size.height * look::specksInASquarePoint));
    for (long long speck = 0; speck < count; ++speck) {
        const double x = m_random.uniform(0, m_size.width);
        const double y = m_random.uniform(0, m_size.height);
        const double brightness = m_random.uniform(0.7, 0.92);
        m_fill.fill({{x, y}, {look::speckSide, look::speckSide}},
                    {brightness * look::speckTint.red, brightness * look::speckTint.green,
                     brightness * look::speckTint.blue},
                    look::speckAlpha);
    }
}

void Page::drawMasthead()
{
    drawInk(look::margin, m_size.height - look::mastheadRuleBelowTop, m_contentWidth,
            look::mastheadRuleHeight);
    for (double x = look::titleIndent; x < m_size.width - look::titleIndent;) {
        const double width = m_random.uniform(20, 60);
        drawInk(x, m_size.height - look::titleBelowTop, width, look::titleHeight);
        x += width + m_random.uniform(8, 16);
    }
    drawInk(look::margin, m_size.height - look::thinRuleBelowTop, m_contentWidth,
            look::thinRuleHeight);
}

void Page::drawSeparators()
{
    for (int column = 1; column < look::columns; ++column) {
        const double x = columnX(column) - look::gutter / 2;
        m_fill.fill(
            {{x - look::separatorWidth / 2, look::margin},
             {look::separatorWidth, m_size.height - look::separatorBelowTop - look::margin}},
            look::separator, look::separatorAlpha);
    }
}

void Page::drawColumn(double x)
{
    double y = drawHeadline(x);
    while (y > look::textEndsAbove) {
        drawLine(x, y);
        y -= look::lineAdvance;
        if (isTossed(look::paragraphChance))
            y -= look::paragraphAdvance;
        if (isTossed(look::subheadingChance))
            y -= drawSubheading(x, y);
    }
}

double Page::drawHeadline(double x)
{
    if (!isTossed(0.5))
        return m_size.height - look::textBelowTop;
    const double y = m_size.height - look::textBelowTop;
    // The first range is empty on a narrow page. That is kept: wider bars would be another page.
    const double first = m_random.uniform(30, m_columnWidth * 0.6);
    drawInk(x, y, first, look::headlineHeight);
    const double secondX = x + first + look::headlineGap;
    if (secondX < x + m_columnWidth - look::headlineRoom)
        drawInk(secondX, y, m_random.uniform(15, m_columnWidth * 0.3), look::headlineHeight);
    return m_size.height - look::textBelowHeadline;
}

void Page::drawLine(double x, double y)
{
    const double end = x + m_columnWidth;
    for (double wordX = x; wordX < end - look::wordRoom;) {
        const double width = std::min(m_random.uniform(8, 30), end - wordX);
        drawInk(wordX, y, width, look::wordHeight, m_random.uniform(0.55, 0.8));
        wordX += width + m_random.uniform(2.5, 5);
    }
}

double Page::drawSubheading(double x, double y)
{
    const double width = m_random.uniform(m_columnWidth * 0.3, m_columnWidth * 0.7);
    drawInk(x, y, width, look::subheadingHeight);
    return look::subheadingAdvance;
}

void Page::drawFold()
{
    const double y = m_random.uniform(m_size.height * 0.3, m_size.height * 0.5);
    drawInk(look::margin, y, m_contentWidth, look::foldHeight, look::foldAlpha);
}

} // namespace

void drawNewspaperBackground(QImage &picture, Size size, double scale, RandomSource &random,
                             const QRect &hidden)
{
    AlignedFill fill(picture, scale, hidden);
    Page(fill, size, random).draw();
}

} // namespace lumacap
