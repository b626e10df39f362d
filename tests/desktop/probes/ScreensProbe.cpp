// A program that says on standard output how the screens are arranged, once it has looked for the
// pointer:
//   pointer X Y             global points; "pointer unknown" where nobody tells
//   screen X Y WIDTH HEIGHT FACTOR   one line a screen, the main one first
#include "app/Desktop.h"
#include "app/Session.h"
#include "platform/Spawn.h"

#include <QGuiApplication>

#include <cstdio>

using namespace lumacap;

namespace {

QCoro::Task<> tell(Screens &screens)
{
    co_await screens.prepare();
    if (const auto pointer = screens.pointerPosition())
        std::printf("pointer %g %g\n", pointer->x, pointer->y);
    else
        std::puts("pointer unknown");
    for (const Screen &screen : screens.screens()) {
        const Rect<Global> &frame = screen.frame;
        std::printf("screen %g %g %g %g %g\n", frame.minX(), frame.minY(), frame.width(),
                    frame.height(), screen.backingScaleFactor);
    }
    std::fflush(stdout);
    QCoreApplication::quit();
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const Session session = Session::open();
    const Desktop desktop = makeDesktop(session);
    QMetaObject::invokeMethod(
        QCoreApplication::instance(), [&desktop] { spawn(tell(*desktop.screens)); },
        Qt::QueuedConnection);
    return QGuiApplication::exec();
}
