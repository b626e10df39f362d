#pragma once

#include <QDeadlineTimer>
#include <QEventLoop>

#include <chrono>

namespace lumacap::tests {

/// Lets the event loop turn until `isTrue` answers true or the limit is over; whether it did.
template <class Condition>
bool waitUntil(Condition isTrue, std::chrono::milliseconds limit = std::chrono::seconds{20})
{
    const QDeadlineTimer deadline(limit);
    QEventLoop loop;
    while (!isTrue()) {
        if (deadline.hasExpired())
            return false;
        loop.processEvents(QEventLoop::AllEvents, 5);
    }
    return true;
}

} // namespace lumacap::tests
