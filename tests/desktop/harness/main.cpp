#include <QCoreApplication>

#include <gmock/gmock.h>

/// Desktop tests have no window of their own: what they show they draw on the X server themselves.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    const QCoreApplication application(argc, argv);
    return RUN_ALL_TESTS();
}
