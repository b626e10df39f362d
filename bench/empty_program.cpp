#include <QApplication>
#include <QTimer>

#include <cstdio>

// What a program of Qt Widgets takes to start that does nothing at all: it says so in the first
// turn of its event loop, and stays.

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    QTimer::singleShot(0, &application, [] {
        std::puts("ready");
        std::fflush(stdout);
    });
    return QApplication::exec();
}
