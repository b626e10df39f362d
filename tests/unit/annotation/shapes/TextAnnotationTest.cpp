#include "annotation/shapes/TextAnnotation.h"
#include "annotation/shapes/NumberedPointAnnotation.h"

#include "AnnotationPictures.h"
#include "graphics/Text.h"

#include <QPainter>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

TEST(TextAnnotation, withoutTextDrawsNothing)
{
    EXPECT_TRUE(
        inkBounds(live(TextAnnotation(Qt::red, 4, {10, 10}, QString(), 16), {80, 40})).isNull());
}

TEST(TextAnnotation, isDrawnInMediumWeightWithItsLowerLeftAtItsPosition)
{
    const QImage picture = live(TextAnnotation(Qt::red, 4, {10, 12}, u"Hg"_s, 16), {80, 40}, 2);

    const Text text(u"Hg"_s, 16, FontWeight::Medium);
    EXPECT_EQ(picture, painted({80, 40}, 2, [&](QPainter &painter) {
                  text.draw(painter, {10, 12}, Qt::red);
              }));
    const QRect ink = inkBounds(picture);
    EXPECT_GE(ink.left(), 20);
    EXPECT_LT(ink.right(), 20 + 2 * text.size().width);
    EXPECT_LT(ink.bottom(), 80 - 24);
    EXPECT_GE(ink.top(), 80 - 24 - 2 * text.size().height);
}

TEST(NumberedPointAnnotation, isADiscOfFourteenPointsWithAWhiteRim)
{
    const QImage picture = live(NumberedPointAnnotation(Qt::blue, {40, 30}, 1), {80, 60}, 2);

    EXPECT_EQ(inkBounds(picture), QRect(80 - 30, 60 - 30, 60, 60)) << "14 points and half a rim";
    EXPECT_EQ(colorAt(picture, 80, 60 - 27), QColor(Qt::white));
    EXPECT_EQ(colorAt(picture, 80, 60 - 29), QColor(Qt::white));
    EXPECT_EQ(colorAt(picture, 80, 60 - 24), QColor(Qt::blue));
    EXPECT_EQ(colorAt(picture, 80 + 24, 60), QColor(Qt::blue));
}

TEST(NumberedPointAnnotation, hasALineWidthOfTwo)
{
    EXPECT_EQ(NumberedPointAnnotation(Qt::blue, {40, 30}, 1).lineWidth, 2);
}

class NumberTest : public testing::TestWithParam<int> { };

TEST_P(NumberTest, isCentredOnTheDisc)
{
    const int scale = 2;
    const QImage picture =
        live(NumberedPointAnnotation(Qt::black, {40, 30}, GetParam()), {80, 60}, scale);

    const Text digits(QString::number(GetParam()), 14, FontWeight::Bold);
    const auto [width, height] = digits.size();
    QImage expected = live(NumberedPointAnnotation(Qt::black, {40, 30}, 0), {80, 60}, scale);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setTransform({2, 0, 0, -2, 0, 120});
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawEllipse(QPointF(40, 30), 12.5, 12.5); // over the other number, inside the rim
    digits.draw(painter, {40 - width / 2, 30 - height / 2}, Qt::white);
    painter.end();
    EXPECT_EQ(picture, expected);
}

TEST_P(NumberTest, hasItsInkInTheMiddleToHalfAPoint)
{
    constexpr int scale = 4;
    QImage picture =
        live(NumberedPointAnnotation(Qt::black, {40, 30}, GetParam()), {80, 60}, scale);
    QRect ink;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const QPoint fromCenter(x - 40 * scale, y - 30 * scale);
            const bool isInsideRim =
                QPoint::dotProduct(fromCenter, fromCenter) < 12 * 12 * scale * scale;
            if (isInsideRim && qRed(picture.pixel(x, y)) > 127)
                ink |= QRect(x, y, 1, 1);
        }
    }

    // Digits fill their advance but for their bearings, of which a 1 has uneven ones.
    EXPECT_NEAR((ink.left() + ink.right() + 1) / 2.0, 40 * scale, scale) << GetParam();
    EXPECT_NEAR((ink.top() + ink.bottom() + 1) / 2.0, 30 * scale, scale * 0.5);
}

INSTANTIATE_TEST_SUITE_P(Numbers, NumberTest, testing::Values(1, 8, 10, 42, 88),
                         testing::PrintToStringParamName());

} // namespace
} // namespace lumacap::tests
