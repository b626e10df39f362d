#pragma once

#include "platform/wayland/Owned.h"

#include <QString>
#include <QtGlobal>

struct kde_output_order_v1;
struct kde_output_order_v1_listener;

namespace lumacap::wayland {
class Connection;
class Outputs;
} // namespace lumacap::wayland

namespace lumacap::kwin {

/// Keeps the outputs told which of them is the main one, as KWin's settings order them.
class OutputOrder {
public:
    /// Knows it when it is made: waits for one answer of the compositor, where that tells the
    /// order at all. Borrows both, which outlive the object.
    OutputOrder(wayland::Connection &connection, wayland::Outputs &outputs);
    Q_DISABLE_COPY_MOVE(OutputOrder)
    ~OutputOrder();

private:
    static const kde_output_order_v1_listener &listener();

    wayland::Outputs &m_outputs;
    wayland::Owned<kde_output_order_v1> m_order;
    QString m_first; // of the list under way, until its end; null before its first
};

} // namespace lumacap::kwin
