#include "platform/kwin/OutputOrder.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Outputs.h"

#include <tuple>
#include <utility>

#include <protocols/kde-output-order-v1.h>

namespace lumacap::kwin {

OutputOrder::OutputOrder(wayland::Connection &connection, wayland::Outputs &outputs)
    : m_outputs(outputs)
    , m_order(connection.bind(kde_output_order_v1_interface, 1, &kde_output_order_v1_destroy))
{
    if (m_order == nullptr)
        return;
    kde_output_order_v1_add_listener(m_order.get(), &listener(), this);
    std::ignore = connection.roundTrip(); // an order that is late comes as a change
}

OutputOrder::~OutputOrder() = default;

const kde_output_order_v1_listener &OutputOrder::listener()
{
    static constexpr kde_output_order_v1_listener listener{
        .output =
            [](void *self, kde_output_order_v1 * /*order*/, const char *name) {
                auto &order = *static_cast<OutputOrder *>(self);
                if (order.m_first.isNull())
                    order.m_first = QString::fromUtf8(name);
            },
        .done =
            [](void *self, kde_output_order_v1 * /*order*/) {
                auto &order = *static_cast<OutputOrder *>(self);
                order.m_outputs.setMain(std::exchange(order.m_first, QString()));
            },
    };
    return listener;
}

} // namespace lumacap::kwin
