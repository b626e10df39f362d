#pragma once

#include "app/Command.h"

#include <QCoroTask>
#include <QDBusConnection>

#include <optional>

namespace lumacap {

/// What became of a command given to the agent that runs already.
enum class HandOver {
    Accepted,
    /// No agent runs on this bus, or there is no bus.
    NobodyRuns,
    /// The agent refused it, or did not answer within five seconds.
    Refused,
};

/// Gives the command to the agent that owns the program's bus name; without one, only looks whether
/// it is there. Never starts an agent.
QCoro::Task<HandOver> handOverToRunningAgent(QDBusConnection bus, std::optional<Command> command);

} // namespace lumacap
