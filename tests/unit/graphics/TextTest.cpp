#include "graphics/Text.h"

#include "graphics/CanvasPainting.h"

#include <QFile>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace lumacap {
namespace {

constexpr QSize canvas(260, 60);

QImage drawn(const Text &text, Point<Canvas> lowerLeft, int scale, const QColor &color = Qt::black)
{
    QImage picture(canvas * scale, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setTransform(canvasToPixels({0, 0}, scale, picture.height()));
    text.draw(painter, lowerLeft, color);
    return picture;
}

/// The smallest rectangle around all that is drawn, in canvas points.
QRectF inkOf(const QImage &picture, int scale)
{
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (qAlpha(picture.pixel(x, y)) > 40)
                ink |= QRect(x, y, 1, 1);
        }
    }
    const double s = scale;
    return {ink.left() / s, (picture.height() - ink.bottom() - 1) / s, ink.width() / s,
            ink.height() / s};
}

struct Script {
    const char *name;
    const char *text;
};

class ScriptTest : public testing::TestWithParam<Script> { };

TEST_P(ScriptTest, isDrawnInsideTheBoxItWasMeasuredWith)
{
    const Text text(QString::fromUtf8(GetParam().text), 16, FontWeight::Medium);
    ASSERT_GT(text.size().width, 8);

    const QRectF ink = inkOf(drawn(text, {20, 15}, 2), 2);

    EXPECT_GT(ink.width(), text.size().width * 0.6);
    EXPECT_GE(ink.left(), 20 - 1);
    EXPECT_LE(ink.right(), 20 + text.size().width + 1);
    EXPECT_GE(ink.top(), 15 - 1);
    EXPECT_LE(ink.bottom(), 15 + text.size().height + 1);
}

TEST_P(ScriptTest, hasGlyphsForItsLetters)
{
    // What no font has is drawn as a box, the same for every letter.
    const auto *const missing = "\U0010FFF0\U0010FFF1\U0010FFF2";
    const Text text(QString::fromUtf8(GetParam().text), 16, FontWeight::Medium);
    const Text boxes(QString::fromUtf8(missing), 16, FontWeight::Medium);

    EXPECT_NE(drawn(text, {20, 15}, 2), drawn(boxes, {20, 15}, 2));
}

INSTANTIATE_TEST_SUITE_P(Scripts, ScriptTest,
                         testing::Values(Script{"latin", "Lumacap"},
                                         Script{"accents", "Été Ångström"},
                                         Script{"cjk", "屏幕截图"}, Script{"arabic", "لقطة الشاشة"},
                                         Script{"emoji", "🙂📷🎉"}),
                         [](const auto &instance) { return instance.param.name; });

TEST(Text, measuresTheSameAtEveryScaleAndPlace)
{
    const Text text(u"Capture 42"_s, 13, FontWeight::Medium);
    const QRectF atOne = inkOf(drawn(text, {20, 20}, 4), 4);
    const QRectF moved = inkOf(drawn(text, {23.5, 24.25}, 4), 4);

    EXPECT_NEAR(moved.left() - atOne.left(), 3.5, 0.26);
    EXPECT_NEAR(moved.top() - atOne.top(), 4.25, 0.26);
    EXPECT_NEAR(moved.width(), atOne.width(), 0.26);
}

TEST(Text, growsWithItsSizeAlsoByFractions)
{
    const double width = Text(u"Capture"_s, 16, FontWeight::Medium).size().width;

    EXPECT_NEAR(Text(u"Capture"_s, 32, FontWeight::Medium).size().width, 2 * width, 0.5);
    EXPECT_NEAR(Text(u"Capture"_s, 16.5, FontWeight::Medium).size().width, width * 16.5 / 16, 0.3);
}

TEST(Text, boldIsWiderThanMedium)
{
    EXPECT_GT(Text(u"Capture"_s, 16, FontWeight::Bold).size().width,
              Text(u"Capture"_s, 16, FontWeight::Medium).size().width);
}

TEST(Text, lineFeedsBeginNewLines)
{
    const Size one = Text(u"Capture"_s, 16, FontWeight::Medium).size();
    const Size two = Text(u"Capture\nof it"_s, 16, FontWeight::Medium).size();

    EXPECT_NEAR(two.height, 2 * one.height, 0.1);
    EXPECT_DOUBLE_EQ(two.width, one.width);
}

TEST(Text, isDrawnInItsColour)
{
    const Text text(u"■"_s, 30, FontWeight::Bold);
    const QImage picture = drawn(text, {20, 5}, 2, QColor(10, 200, 30));
    const QRectF ink = inkOf(picture, 2);
    const QPointF center = ink.center() * 2;

    EXPECT_EQ(picture.pixelColor(static_cast<int>(center.x()),
                                 picture.height() - static_cast<int>(center.y())),
              QColor(10, 200, 30));
}

TEST(Text, ofNothingHasNoWidth)
{
    const Text text(QString(), 16, FontWeight::Medium);

    EXPECT_EQ(text.size().width, 0);
    EXPECT_TRUE(std::isfinite(text.size().height));
}

TEST(Text, isBrokenBetweenWordsIntoLinesThatFit)
{
    const QString words = u"Capture directement apres la selection de zone"_s;
    const QString lines = brokenIntoLines(words, 10, FontWeight::Regular, 120);

    EXPECT_GT(lines.count(u'\n'), 0);
    EXPECT_LE(Text(lines, 10, FontWeight::Regular).size().width, 120);
    EXPECT_EQ(QString(lines).replace(u'\n', u' '), words);
    EXPECT_EQ(brokenIntoLines(words, 10, FontWeight::Regular, 1000), words);
}

TEST(Text, isBrokenWithinAWordThatIsWiderThanTheLine)
{
    const QString word(40, u'm');
    const QString lines = brokenIntoLines(word, 10, FontWeight::Regular, 60);

    EXPECT_LE(Text(lines, 10, FontWeight::Regular).size().width, 60);
    EXPECT_EQ(QString(lines).remove(u'\n'), word);
}

TEST(Text, losesItsMiddleWhereItIsTooLong)
{
    const QString name = u"Captures of the year and of the one before"_s;
    const QString elided = elidedInMiddle(name, 13, FontWeight::Regular, 100);

    EXPECT_LE(Text(elided, 13, FontWeight::Regular).size().width, 101);
    EXPECT_TRUE(elided.startsWith(u"Cap"_s));
    EXPECT_TRUE(elided.endsWith(u"ore"_s));
    EXPECT_EQ(elidedInMiddle(name, 13, FontWeight::Regular, 1000), name);
}

/// Ends the process, which finds no font, with 0 when a text was measured and drawn all the same,
/// with 2 when there is a font.
[[noreturn]] void drawWithoutFonts()
{
    const QStringList aliases{u"Monospace"_s, u"Sans Serif"_s, u"Serif"_s}; // always listed
    for (const QString &family : QFontDatabase::families()) {
        if (!aliases.contains(family))
            std::_Exit(2);
    }
    const Text text(u"Capture 42 屏幕"_s, 16, FontWeight::Medium);
    drawn(text, {20, 15}, 2);
    const bool isMeasured = text.size().width > 0 && std::isfinite(text.size().height);
    std::_Exit(isMeasured ? 0 : 1);
}

TEST(TextDeathTest, worksWithoutAnyFont)
{
    QTemporaryDir folder;
    QFile settings(folder.filePath(u"fonts.conf"_s));
    ASSERT_TRUE(settings.open(QIODevice::WriteOnly));
    settings.write("<?xml version=\"1.0\"?><fontconfig><cachedir>" + folder.path().toUtf8()
                   + "</cachedir></fontconfig>");
    settings.close();
    // The process is started anew for the statement, and reads this then.
    qputenv("FONTCONFIG_FILE", QFile::encodeName(settings.fileName()));
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(drawWithoutFonts(), testing::ExitedWithCode(0), "");
    qunsetenv("FONTCONFIG_FILE");
}

} // namespace
} // namespace lumacap
