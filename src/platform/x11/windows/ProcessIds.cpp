#include "platform/x11/windows/ProcessIds.h"

#include "platform/xcb/Connection.h"

#include <utility>

#include <xcb/res.h>
#include <xcb/xcb.h>

namespace lumacap::x11 {

ProcessIds::ProcessIds(std::uint32_t clientMask, QHash<std::uint32_t, std::int64_t> processes)
    : m_clientMask(clientMask)
    , m_processes(std::move(processes))
{
}

std::optional<std::int64_t> ProcessIds::of(std::uint32_t window) const
{
    const auto process = m_processes.constFind(window & m_clientMask);
    return process == m_processes.cend() ? std::nullopt : std::optional(*process);
}

void prepareProcessIds(xcb::Connection &connection)
{
    xcb_prefetch_extension_data(connection.raw(), &xcb_res_id);
    connection.flush();
}

QCoro::Task<ProcessIds> queryProcessIds(xcb::Connection &connection,
                                        std::vector<SeenWindow> windows)
{
    auto *const raw = connection.raw();
    // libxcb ends a connection that asks an extension which is not there.
    const auto *const extension = xcb_get_extension_data(raw, &xcb_res_id);
    if (extension == nullptr || extension->present == 0)
        co_return ProcessIds();
    std::vector<xcb_res_client_id_spec_t> specifications;
    specifications.reserve(windows.size());
    for (const SeenWindow &window : windows)
        specifications.push_back({window.id, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID});
    const auto asked = xcb_res_query_client_ids(
        raw, static_cast<std::uint32_t>(specifications.size()), specifications.data());
    const auto reply = co_await connection.reply<xcb_res_query_client_ids_reply_t>(asked);
    if (!reply)
        co_return ProcessIds();

    const std::uint32_t clientMask = ~xcb_get_setup(raw)->resource_id_mask;
    QHash<std::uint32_t, std::int64_t> processes;
    for (auto item = xcb_res_query_client_ids_ids_iterator(reply->get()); item.rem > 0;
         xcb_res_client_id_value_next(&item)) {
        if (xcb_res_client_id_value_value_length(item.data) > 0)
            processes.insert(item.data->spec.client & clientMask,
                             *xcb_res_client_id_value_value(item.data));
    }
    co_return ProcessIds(clientMask, std::move(processes));
}

} // namespace lumacap::x11
