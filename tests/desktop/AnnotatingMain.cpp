#include <QFont>
#include <QGuiApplication>

#include <gmock/gmock.h>

/// The expected pictures hold letters, for which the toolkit wants an application with fonts.
int main(int argc, char **argv)
{
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QGuiApplication::setFont(QFont(QStringLiteral("Sans Serif"), 9));
    return RUN_ALL_TESTS();
}
