#include "app/AppIcon.h"

#include <QImage>

#include <gtest/gtest.h>

#include <set>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

std::set<QRgb> coloursOf(const QIcon &icon)
{
    const QImage image = icon.pixmap(64, 64).toImage();
    std::set<QRgb> colours;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (qAlpha(image.pixel(x, y)) == 255)
                colours.insert(image.pixel(x, y));
        }
    }
    return colours;
}

} // namespace

TEST(AppIcon, isDrawnForEverySizeThatTraysUse)
{
    const QIcon icon = appIcon(u":/AppIcon.svg"_s);

    for (const int size : {16, 18, 22, 24, 32, 44, 48, 64})
        EXPECT_EQ(icon.pixmap(size, size).size(), QSize(size, size)) << size;
}

TEST(AppIcon, isInColour)
{
    EXPECT_GT(coloursOf(appIcon(u":/AppIcon.svg"_s)).size(), 10U);
}

TEST(AppIcon, isTheViewfinderSymbolWhereItsPictureIsMissing)
{
    const QIcon fallback = appIcon(u":/no-such-picture.svg"_s);

    EXPECT_EQ(fallback.pixmap(18, 18).size(), QSize(18, 18));
    EXPECT_EQ(coloursOf(fallback).size(), 1U) << "a symbol of one colour";
}

} // namespace lumacap
