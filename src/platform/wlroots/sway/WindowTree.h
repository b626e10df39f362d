#pragma once

#include <QRectF>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class QJsonObject;

namespace lumacap::sway {

/// A window as the compositor's tree has it.
struct TreeWindow {
    std::int64_t id = 0;
    std::optional<std::int64_t> processId;
    QRectF frame; ///< the compositor's units, y down; with its border and title bar
    QString title;
    // Programs of the X server have the last two, all others the first.
    QString applicationId;
    QString className;
    QString classInstance;

    friend bool operator==(const TreeWindow &, const TreeWindow &) = default;
};

/// The windows that are to be seen, frontmost first: what floats before what is tiled, and nothing
/// of other workspaces, behind other tabs, behind a full-screen window, or put away. In a container
/// that shows one of several windows, that one has the title bars of all, as it is under them that
/// it is seen.
std::vector<TreeWindow> windowsOf(const QJsonObject &tree);

} // namespace lumacap::sway
