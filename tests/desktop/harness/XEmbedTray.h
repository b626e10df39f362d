#pragma once

#include "harness/XConnection.h"

#include <QPoint>

#include <vector>

namespace lumacap::harness {

/// A tray of the older kind: a window that icons' windows are put into.
class XEmbedTray {
public:
    /// Becomes the tray of `display` and says so to everybody. The tray lies at the screen's top
    /// left.
    explicit XEmbedTray(const QByteArray &display);

    /// Takes in the icons that have asked since the last call, and says how many it has taken in
    /// all.
    int dockedCount();
    /// Whether the first icon shows: its window is viewable and painted with more than one colour.
    bool isFirstIconVisible();
    /// Where to click on the first icon, in root pixels.
    static QPoint firstIconCentre();

private:
    void dock(std::uint32_t icon);

    XConnection m_connection;
    std::uint32_t m_window = 0;
    std::vector<std::uint32_t> m_icons;
};

} // namespace lumacap::harness
