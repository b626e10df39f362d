#include <QGuiApplication>

#include <gmock/gmock.h>

/// Unit tests run without a display: fonts, images and the event loop are there, windows are not.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
