#include <QApplication>

#include <gmock/gmock.h>

/// The overlay is a widget; offscreen it is shown nowhere.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
