#include "StandInCompositor.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <utility>

#include <screencopy-server.h>
#include <sys/eventfd.h>
#include <unistd.h>
#include <wayland-server-core.h>
#include <wayland-server-protocol.h>

namespace lumacap::wlroots {

/// What the compositor does of each request, on its own thread.
struct Requests {
    static StandInCompositor &of(wl_resource *resource)
    {
        return *static_cast<StandInCompositor *>(wl_resource_get_user_data(resource));
    }

    static void destroy(wl_client * /*client*/, wl_resource *resource)
    {
        wl_resource_destroy(resource);
    }

    static void bindOutput(wl_client *client, void *data, std::uint32_t version,
                           std::uint32_t number)
    {
        static constexpr struct wl_output_interface requests{.release = &destroy};
        const Behaviour &behaviour = static_cast<StandInCompositor *>(data)->m_behaviour;
        wl_resource *const output =
            wl_resource_create(client, &wl_output_interface, static_cast<int>(version), number);
        wl_resource_set_implementation(output, &requests, data, nullptr);
        wl_output_send_geometry(output, 0, 0, 0, 0, 0, "", "", behaviour.transform);
        wl_output_send_mode(output, WL_OUTPUT_MODE_CURRENT, 2, 2, 60000);
        wl_output_send_scale(output, 1);
        wl_output_send_name(output, "STAND-IN");
        wl_output_send_done(output);
    }

    static void bindManager(wl_client *client, void *data, std::uint32_t version,
                            std::uint32_t number)
    {
        static constexpr struct zwlr_screencopy_manager_v1_interface requests{
            .capture_output = &captureOutput,
            .capture_output_region = nullptr,
            .destroy = &destroy,
        };
        wl_resource *const manager = wl_resource_create(
            client, &zwlr_screencopy_manager_v1_interface, static_cast<int>(version), number);
        wl_resource_set_implementation(manager, &requests, data, nullptr);
    }

    static void captureOutput(wl_client *client, wl_resource *manager, std::uint32_t number,
                              std::int32_t withPointer, wl_resource * /*output*/)
    {
        static constexpr struct zwlr_screencopy_frame_v1_interface requests{
            .copy = &copy, .destroy = &destroy, .copy_with_damage = &copyOnceDrawn};
        StandInCompositor &self = of(manager);
        self.m_pointerAsked = withPointer != 0;
        const Behaviour &behaviour = self.m_behaviour;
        const int version = wl_resource_get_version(manager);
        wl_resource *const frame =
            wl_resource_create(client, &zwlr_screencopy_frame_v1_interface, version, number);
        wl_resource_set_implementation(frame, &requests, &self, nullptr);
        if (behaviour.answer == Answer::IsReadyUnasked)
            return zwlr_screencopy_frame_v1_send_ready(frame, 0, 0, 0);
        if (behaviour.answer != Answer::CopiesToOthersMemoryOnly)
            zwlr_screencopy_frame_v1_send_buffer(
                frame, behaviour.format, static_cast<std::uint32_t>(behaviour.size.width()),
                static_cast<std::uint32_t>(behaviour.size.height()), behaviour.bytesPerLine);
        if (version >= ZWLR_SCREENCOPY_FRAME_V1_BUFFER_DONE_SINCE_VERSION) {
            zwlr_screencopy_frame_v1_send_linux_dmabuf(frame, 0x34325258, 2, 2);
            zwlr_screencopy_frame_v1_send_buffer_done(frame);
        }
    }

    static void copyOnceDrawn(wl_client *client, wl_resource *frame, wl_resource *buffer)
    {
        StandInCompositor &self = of(frame);
        if (self.m_copiesAsked >= self.m_behaviour.drawings)
            ++self.m_copiesAsked; // at rest
        else
            copy(client, frame, buffer);
    }

    static void copy(wl_client *client, wl_resource *frame, wl_resource *buffer)
    {
        StandInCompositor &self = of(frame);
        ++self.m_copiesAsked;
        switch (self.m_behaviour.answer) {
        case Answer::Copies:
            return write(self.m_behaviour, frame, buffer);
        case Answer::Refuses:
            return zwlr_screencopy_frame_v1_send_failed(frame);
        case Answer::LosesTheOutput:
            return wl_global_destroy(std::exchange(self.m_output, nullptr));
        case Answer::EndsTheConnection:
            return wl_client_post_implementation_error(client, "the stand-in's own will");
        case Answer::IsSilent:
        case Answer::CopiesToOthersMemoryOnly:
        case Answer::IsReadyUnasked:
            return;
        }
    }

    static void write(const Behaviour &behaviour, wl_resource *frame, wl_resource *buffer)
    {
        wl_shm_buffer *const memory = wl_shm_buffer_get(buffer);
        const auto room = static_cast<qsizetype>(wl_shm_buffer_get_stride(memory))
            * wl_shm_buffer_get_height(memory);
        wl_shm_buffer_begin_access(memory);
        std::memcpy(wl_shm_buffer_get_data(memory), behaviour.bytes.constData(),
                    static_cast<std::size_t>(std::min(room, behaviour.bytes.size())));
        wl_shm_buffer_end_access(memory);
        zwlr_screencopy_frame_v1_send_flags(
            frame, behaviour.isUpsideDown ? ZWLR_SCREENCOPY_FRAME_V1_FLAGS_Y_INVERT : 0);
        zwlr_screencopy_frame_v1_send_ready(frame, 0, 0, 0);
    }

    static int end(int /*descriptor*/, std::uint32_t /*mask*/, void *display)
    {
        wl_display_terminate(static_cast<wl_display *>(display));
        return 0;
    }
};

StandInCompositor::StandInCompositor(Behaviour behaviour)
    : m_behaviour(std::move(behaviour))
    , m_display(wl_display_create())
    , m_end(eventfd(0, EFD_CLOEXEC))
    , m_endSource(wl_event_loop_add_fd(wl_display_get_event_loop(m_display), m_end,
                                       WL_EVENT_READABLE, &Requests::end, m_display))
{
    qputenv("XDG_RUNTIME_DIR", m_folder.path().toLocal8Bit());
    qputenv("WAYLAND_DISPLAY", "stand-in");
    if (m_end < 0 || wl_display_add_socket(m_display, "stand-in") != 0)
        throw std::runtime_error("the stand-in compositor does not start");
    wl_display_init_shm(m_display);
    for (const std::uint32_t format :
         {WL_SHM_FORMAT_XBGR8888, WL_SHM_FORMAT_RGB565, WL_SHM_FORMAT_BGR888})
        wl_display_add_shm_format(m_display, format);
    m_output = wl_global_create(m_display, &wl_output_interface, 4, this, &Requests::bindOutput);
    wl_global_create(m_display, &zwlr_screencopy_manager_v1_interface,
                     static_cast<int>(m_behaviour.version), this, &Requests::bindManager);
    m_thread = std::thread([display = m_display] { wl_display_run(display); });
}

StandInCompositor::~StandInCompositor()
{
    eventfd_write(m_end, 1);
    m_thread.join();
    wl_event_source_remove(m_endSource);
    wl_display_destroy_clients(m_display);
    wl_display_destroy(m_display);
    close(m_end);
    qunsetenv("WAYLAND_DISPLAY");
}

} // namespace lumacap::wlroots
