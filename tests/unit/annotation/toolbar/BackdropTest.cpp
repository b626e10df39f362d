#include "annotation/toolbar/Backdrop.h"

#include "Toolbar.h"
#include "annotation/toolbar/ToolbarLook.h"
#include "annotation/toolbar/ToolbarTheme.h"
#include "graphics/ColorMixing.h"

namespace lumacap::tests {
namespace {

QImage stripes(QSize size, int width)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixelColor(x, y, x / width % 2 == 0 ? Qt::black : Qt::white);
    }
    return image;
}

TEST(Backdrop, ofOneColourIsOfOneColour)
{
    for (const QSize size : {QSize(1200, 50), QSize(1201, 47), QSize(3, 2)}) {
        QImage picture(size, QImage::Format_ARGB32_Premultiplied);
        picture.fill(QColor(90, 90, 90));
        Backdrop backdrop;
        backdrop.setPicture(picture, 2);

        QImage expected(size, QImage::Format_RGB32);
        expected.fill(mixed(QColor(90, 90, 90), Qt::white, toolbarlook::tintOpacity));
        const QImage material = backdrop.material(size, Qt::white);
        const QColor first = material.pixelColor(0, 0);
        expected.fill(first);
        EXPECT_EQ(material, expected);
        EXPECT_TRUE(
            areAlike(first, mixed(QColor(90, 90, 90), Qt::white, toolbarlook::tintOpacity)));
    }
}

TEST(Backdrop, withoutAPictureIsTheTint)
{
    QImage expected(40, 30, QImage::Format_RGB32);
    expected.fill(QColor(12, 34, 56));

    EXPECT_EQ(Backdrop().material({40, 30}, QColor(12, 34, 56)), expected);
}

TEST(Backdrop, letsNoLineShowThrough)
{
    Backdrop backdrop;
    backdrop.setPicture(stripes({400, 44}, 6), 1);

    const QImage material = backdrop.material({400, 44}, Qt::white);

    for (int x = 1; x < material.width(); ++x)
        EXPECT_LE(std::abs(material.pixelColor(x, 22).red() - material.pixelColor(x - 1, 22).red()),
                  1);
}

TEST(Backdrop, keepsWhereItIsDarkAndWhereItIsBright)
{
    Backdrop backdrop;
    backdrop.setPicture(stripes({400, 44}, 200), 1);

    const QImage material = backdrop.material({400, 44}, QColor(128, 128, 128));

    EXPECT_LT(material.pixelColor(20, 22).red(), 110);
    EXPECT_GT(material.pixelColor(380, 22).red(), 145);
}

TEST(Backdrop, isTheSameAtTwiceTheDensity)
{
    Backdrop once;
    once.setPicture(stripes({400, 44}, 100), 1);
    Backdrop twice;
    twice.setPicture(stripes({800, 88}, 200), 2);

    const QImage coarse = once.material({400, 44}, Qt::white);
    const QImage fine = twice.material({800, 88}, Qt::white);

    for (int x = 0; x < 400; x += 7)
        EXPECT_NEAR(coarse.pixelColor(x, 20).red(), fine.pixelColor(2 * x, 40).red(), 2);
}

} // namespace
} // namespace lumacap::tests
