#include "platform/wlroots/sway/hotkeys/SeatKeymap.h"

#include "platform/wayland/Connection.h"

#include <sys/mman.h>
#include <unistd.h>
#include <wayland-client-protocol.h>

namespace lumacap::sway {

namespace {

constexpr std::uint32_t seatVersion = 5; // the first that is released, and whose keymap is private

SeatKeymap &self(void *data)
{
    return *static_cast<SeatKeymap *>(data);
}

/// The text in a file of the compositor's, without the zero that ends it; empty where there is
/// none.
QByteArray textIn(int descriptor, std::uint32_t size)
{
    void *const mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
    if (mapped == MAP_FAILED)
        return {};
    const auto *const text = static_cast<const char *>(mapped);
    QByteArray copy(text, static_cast<qsizetype>(qstrnlen(text, size)));
    munmap(mapped, size);
    return copy;
}

} // namespace

SeatKeymap::SeatKeymap(wayland::Connection &connection)
    : m_connection(connection)
    , m_seat(connection.bind(wl_seat_interface, seatVersion, &wl_seat_release))
{
    if (m_seat != nullptr)
        wl_seat_add_listener(m_seat.get(), &seatListener(), this);
    m_connection.flush();
}

SeatKeymap::~SeatKeymap() = default;

const wl_seat_listener &SeatKeymap::seatListener()
{
    static constexpr wl_seat_listener listener{
        .capabilities =
            [](void *data, wl_seat * /*seat*/, std::uint32_t capabilities) {
                self(data).followKeyboard((capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
            },
        .name = [](void * /*data*/, wl_seat * /*seat*/, const char * /*name*/) {},
    };
    return listener;
}

const wl_keyboard_listener &SeatKeymap::keyboardListener()
{
    static constexpr wl_keyboard_listener listener{
        .keymap = [](void *data, wl_keyboard * /*keyboard*/, std::uint32_t format, int descriptor,
                     std::uint32_t size) { self(data).learn(format, descriptor, size); },
        .enter = [](void * /*data*/, wl_keyboard * /*keyboard*/, std::uint32_t /*serial*/,
                    wl_surface * /*surface*/, wl_array * /*keys*/) {},
        .leave = [](void * /*data*/, wl_keyboard * /*keyboard*/, std::uint32_t /*serial*/,
                    wl_surface * /*surface*/) {},
        .key = [](void * /*data*/, wl_keyboard * /*keyboard*/, std::uint32_t /*serial*/,
                  std::uint32_t /*time*/, std::uint32_t /*key*/, std::uint32_t /*state*/) {},
        .modifiers = [](void * /*data*/, wl_keyboard * /*keyboard*/, std::uint32_t /*serial*/,
                        std::uint32_t /*depressed*/, std::uint32_t /*latched*/,
                        std::uint32_t /*locked*/, std::uint32_t /*group*/) {},
        .repeat_info = [](void * /*data*/, wl_keyboard * /*keyboard*/, std::int32_t /*rate*/,
                          std::int32_t /*delay*/) {},
    };
    return listener;
}

void SeatKeymap::followKeyboard(bool hasOne)
{
    if (hasOne && m_keyboard == nullptr) {
        m_keyboard = wayland::owned(wl_seat_get_keyboard(m_seat.get()), &wl_keyboard_release);
        wl_keyboard_add_listener(m_keyboard.get(), &keyboardListener(), this);
    } else if (!hasOne) {
        m_keyboard.reset();
    }
    m_connection.flush();
}

void SeatKeymap::learn(std::uint32_t format, int descriptor, std::uint32_t size)
{
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
        m_text = textIn(descriptor, size);
    close(descriptor);
}

} // namespace lumacap::sway
