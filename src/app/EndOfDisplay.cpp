#include "app/EndOfDisplay.h"

#include "app/Session.h"

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

} // namespace

EndOfDisplay::EndOfDisplay(const Session &session)
{
    session.onDisplayEnded(&m_context, &endWell);
    isWatching = true;
    std::ignore = std::atexit(&endWellAfterExit);
}

EndOfDisplay::~EndOfDisplay()
{
    isWatching = false;
}

} // namespace lumacap
