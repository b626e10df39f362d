#pragma once

#include "graphics/Fatal.h"

#include <QCoroTask>

#include <exception>
#include <utility>

namespace lumacap {

/// Starts a task nobody awaits. An exception that escapes it stops the program, instead of being
/// swallowed.
inline void spawn(QCoro::Task<> task)
{
    [](QCoro::Task<> running) -> QCoro::Task<> {
        try {
            co_await running;
        } catch (const std::exception &escaped) {
            fatal(escaped.what());
        } catch (...) {
            fatal("an exception escaped a task");
        }
    }(std::move(task));
}

} // namespace lumacap
