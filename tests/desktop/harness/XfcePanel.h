#pragma once

#include "harness/PrivateDesktop.h"
#include "harness/XConnection.h"

#include <QPoint>

namespace lumacap::harness {

/// The panel of Xfce along the screen's top, with nothing in it but the tray.
class XfcePanel {
public:
    /// The panel keeps to this many rows of the screen, its border included.
    static constexpr int height = 48;

    /// Starts it in `desktop`, which outlives the object; does not wait.
    explicit XfcePanel(PrivateDesktop &desktop);

    /// Waits until the tray shows one coloured icon; throws when none comes.
    void requireIcon();
    /// Where to click on the icon, in root pixels.
    static QPoint iconCentre();

private:
    XConnection m_connection;
};

} // namespace lumacap::harness
