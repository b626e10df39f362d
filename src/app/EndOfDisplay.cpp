#include "app/EndOfDisplay.h"

#include "app/Session.h"

#include <QString>

#include <cstdio>
#include <cstdlib>
#include <tuple>

namespace lumacap {

namespace {

bool isWatching = false;

[[noreturn]] void endWell()
{
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

/// The toolkit, where it finds the server gone first, calls exit(1) from the middle of its event
/// loop, and nothing else in this program calls exit. This runs before any static object goes.
void endWellAfterExit()
{
    if (isWatching)
        endWell();
}

QtMessageHandler &handlerBefore()
{
    static QtMessageHandler handler = nullptr;
    return handler;
}

/// Under Wayland the toolkit leaves by _exit(1), past all that could be done at the end. Right
/// before it says so.
void endWellAfterMessage(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (isWatching && message.startsWith(QLatin1StringView("The Wayland connection broke")))
        endWell();
    if (handlerBefore() != nullptr)
        handlerBefore()(type, context, message);
}

} // namespace

EndOfDisplay::EndOfDisplay(const Session &session)
{
    handlerBefore() = qInstallMessageHandler(&endWellAfterMessage);
    session.onDisplayEnded(&m_context, &endWell);
    isWatching = true;
    std::ignore = std::atexit(&endWellAfterExit);
}

EndOfDisplay::~EndOfDisplay()
{
    isWatching = false;
    qInstallMessageHandler(handlerBefore());
}

} // namespace lumacap
