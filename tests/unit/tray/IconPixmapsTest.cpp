#include "platform/freedesktop/tray/IconPixmaps.h"

#include <QColor>
#include <QIcon>
#include <QImage>
#include <QPixmap>

#include <gmock/gmock.h>

#include <vector>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

namespace {

QIcon iconOf(const QColor &colour, QSize size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(colour);
    QIcon icon;
    icon.addPixmap(QPixmap::fromImage(image));
    return icon;
}

std::vector<int> widths(const IconPixmapList &pixmaps)
{
    std::vector<int> all;
    for (const IconPixmap &pixmap : pixmaps)
        all.push_back(pixmap.width);
    return all;
}

TEST(IconPixmaps, areThereForEveryPanelSize)
{
    EXPECT_THAT(widths(iconPixmaps(iconOf(Qt::red, QSize(64, 64)))),
                testing::ElementsAre(16, 18, 20, 22, 24, 32, 36, 44, 48, 64));
}

TEST(IconPixmaps, areNotEnlargedBeyondTheIcon)
{
    EXPECT_THAT(widths(iconPixmaps(iconOf(Qt::red, QSize(20, 20)))),
                testing::ElementsAre(16, 18, 20));
}

TEST(IconPixmaps, areAlphaRedGreenBlueWithoutPremultiplication)
{
    const IconPixmapList pixmaps =
        iconPixmaps(iconOf(QColor(0xff, 0x00, 0x00, 0x80), QSize(16, 16)));
    ASSERT_EQ(pixmaps.size(), 1);
    QByteArray pixels;
    for (int i = 0; i < 16 * 16; ++i)
        pixels += QByteArray::fromHex("80ff0000");
    EXPECT_EQ(pixmaps.first().pixels, pixels);
}

TEST(IconPixmaps, areNoneForAnEmptyIcon)
{
    EXPECT_TRUE(iconPixmaps(QIcon()).isEmpty());
}

} // namespace

} // namespace lumacap::freedesktop
