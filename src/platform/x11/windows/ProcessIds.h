#pragma once

#include "platform/x11/windows/ClientWindows.h"

#include <QHash>

#include <cstdint>
#include <optional>
#include <vector>

namespace lumacap::x11 {

/// Which process made a window, as the server knows of programs on its own machine.
class ProcessIds {
public:
    ProcessIds() = default;
    /// `clientMask` has the bits of an id that tell the client; `processes` are by these bits.
    ProcessIds(std::uint32_t clientMask, QHash<std::uint32_t, std::int64_t> processes);

    /// Nothing for a window of a program on another machine.
    std::optional<std::int64_t> of(std::uint32_t window) const;

private:
    std::uint32_t m_clientMask = 0;
    QHash<std::uint32_t, std::int64_t> m_processes;
};

/// Has the server's answer to what `queryProcessIds` asks prepared, so that it need not wait.
void prepareProcessIds(xcb::Connection &connection);

/// The processes of these windows, in one question; nobody's where the server has no X-Resource
/// 1.2.
QCoro::Task<ProcessIds> queryProcessIds(xcb::Connection &connection,
                                        std::vector<SeenWindow> windows);

} // namespace lumacap::x11
