#include "app/EndOfDisplay.h"

#include "app/Session.h"

#include <cstdio>
#include <cstdlib>
#include <tuple>

namespace lumacap {

namespace {

const Session *watchedSession = nullptr;

/// Runs first in exit(), before any static object goes. Nothing is left to do: files are written
/// whole within one turn of the loop, and the clipboard ended with the server.
void endWell()
{
    if (watchedSession == nullptr || !watchedSession->hasDisplayEnded())
        return;
    std::fflush(nullptr);
    std::_Exit(EXIT_SUCCESS);
}

} // namespace

EndOfDisplay::EndOfDisplay(const Session &session)
{
    watchedSession = &session;
    std::ignore = std::atexit(&endWell);
}

EndOfDisplay::~EndOfDisplay()
{
    watchedSession = nullptr;
}

} // namespace lumacap
