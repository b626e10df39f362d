#include "graphics/SymbolImage.h"

#include <gmock/gmock.h>

#include <array>

using namespace Qt::StringLiterals;

namespace lumacap::tests {
namespace {

constexpr std::array names{"rectangle.dashed",
                           "arrow.up.right",
                           "rectangle",
                           "circle",
                           "1.circle.fill",
                           "pencil.tip",
                           "textformat",
                           "magnifyingglass",
                           "eye.slash",
                           "rectangle.portrait",
                           "arrow.uturn.backward",
                           "macwindow",
                           "chevron.down",
                           "checkmark",
                           "wand.and.stars",
                           "moon.fill",
                           "sun.max.fill",
                           "water.waves",
                           "sunset.fill",
                           "newspaper.fill",
                           "gearshape",
                           "keyboard",
                           "camera.viewfinder",
                           "square.and.arrow.down",
                           "folder"};

class EverySymbol : public testing::TestWithParam<const char *> { };

INSTANTIATE_TEST_SUITE_P(SymbolImage, EverySymbol, testing::ValuesIn(names), [](const auto &named) {
    QString name = QString::fromLatin1(named.param);
    return name.replace(u'.', u'_').toStdString();
});

TEST_P(EverySymbol, isDrawnInOneColourWithAnEmptyEdge)
{
    const QImage image = symbolImage(QString::fromLatin1(GetParam()), 48, 1, Qt::red);

    ASSERT_EQ(image.size(), QSize(48, 48));
    int inked = 0;
    for (int y = 0; y < 48; ++y) {
        for (int x = 0; x < 48; ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (pixel.alpha() == 0)
                continue;
            ++inked;
            EXPECT_GE(pixel.red(), 250);
            EXPECT_EQ(pixel.green() + pixel.blue(), 0);
            EXPECT_TRUE(x > 0 && y > 0 && x < 47 && y < 47) << x << ", " << y;
        }
    }
    EXPECT_GT(inked, 100);
}

TEST(SymbolImage, isAsManyPixelsAsPointsTimesTheRatio)
{
    const QImage image = symbolImage(u"circle"_s, 15.6, 1.5, Qt::black);

    EXPECT_EQ(image.size(), QSize(23, 23));
    EXPECT_EQ(image.devicePixelRatio(), 1.5);
}

TEST(SymbolImage, ofAnUnknownNameIsNull)
{
    EXPECT_TRUE(symbolImage(u"square.and.pencil"_s, 18, 1, Qt::black).isNull());
    EXPECT_TRUE(symbolImage(QString(), 18, 1, Qt::black).isNull());
}

TEST(SymbolImage, inAnotherColourHasTheSameShape)
{
    const QImage black = symbolImage(u"eye.slash"_s, 18, 2, Qt::black);
    const QImage white = symbolImage(u"eye.slash"_s, 18, 2, Qt::white);

    EXPECT_NE(black, white);
    EXPECT_EQ(black.convertToFormat(QImage::Format_Alpha8),
              white.convertToFormat(QImage::Format_Alpha8));
}

TEST(SymbolImage, isTheSameWhenAskedForAgain)
{
    const QImage first = symbolImage(u"moon.fill"_s, 18, 1, Qt::blue);

    EXPECT_EQ(symbolImage(u"moon.fill"_s, 18, 1, Qt::blue), first);
}

TEST(SymbolImage, keepsTheTransparencyOfItsColour)
{
    const QImage image = symbolImage(u"1.circle.fill"_s, 48, 1, QColor(0, 0, 0, 100));

    EXPECT_EQ(image.pixelColor(24, 6).alpha(), 100);
}

} // namespace
} // namespace lumacap::tests
