#include "platform/wayland/ProbePointerFinder.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Outputs.h"
#include "platform/wayland/PointerProbe.h"

#include <QCoroSignal>

#include <chrono>

#include <protocols/viewporter.h>
#include <protocols/wlr-layer-shell-unstable-v1.h>
#include <wayland-client-protocol.h>

using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

/// The pointer is told of within a few frames or, where another window has it for itself, not at
/// all.
constexpr auto patience = 150ms;

} // namespace

bool ProbePointerFinder::isOffered(const Connection &connection)
{
    return connection.offers(zwlr_layer_shell_v1_interface)
        && connection.offers(wp_viewporter_interface) && connection.offers(wl_seat_interface, 5);
}

ProbePointerFinder::ProbePointerFinder(Connection &connection, const Outputs &outputs)
    : m_connection(connection)
    , m_outputs(outputs)
{
}

QCoro::Task<std::optional<QPointF>> ProbePointerFinder::find()
{
    if (m_outputs.all().size() < 2)
        co_return std::nullopt;
    const PointerProbe probe(m_connection, m_outputs);
    const auto told = co_await qCoro(&probe, &PointerProbe::finished, patience);
    co_return told.value_or(std::nullopt);
}

} // namespace lumacap::wayland
