#pragma once

#include <QString>

#include <cstdint>
#include <optional>

namespace lumacap {

class ApplicationNames;

/// What a window tells of the program it belongs to; empty where it does not.
struct WindowOwner {
    QString applicationId;
    QString className;
    QString classInstance;
    std::optional<std::int64_t> processId;
};

/// The program's name for the person: of its desktop entry, else what the window calls it, else
/// what its process is called; empty where nothing tells.
QString ownerName(const WindowOwner &owner, const ApplicationNames &names);

} // namespace lumacap
