#pragma once

#include "harness/XConnection.h"

#include <QRect>

#include <cstdint>

namespace lumacap::harness {

/// Another program's open menu: a window that holds pointer and keyboard until a press outside it.
class OpenMenu {
public:
    /// Shows it over `area` (root pixels) of the screen of `display` and asks for pointer and
    /// keyboard until it has both; throws when it does not get them.
    OpenMenu(const QByteArray &display, const QRect &area);

    /// Sees to what has come in, and tells whether the menu is still open: it closes at a press
    /// outside it.
    bool isOpen();
    /// How many keys were pressed for the menu, as far as `isOpen` has seen.
    int keys() const { return m_keys; }

private:
    bool takeInput();
    void close();

    XConnection m_connection;
    QRect m_area;
    std::uint32_t m_window = 0;
    bool m_isOpen = true;
    int m_keys = 0;
};

} // namespace lumacap::harness
