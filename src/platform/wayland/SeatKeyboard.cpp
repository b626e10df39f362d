#include "platform/wayland/SeatKeyboard.h"

#include "platform/wayland/Connection.h"
#include "platform/wayland/Seat.h"

#include <unistd.h>
#include <wayland-client-protocol.h>

namespace lumacap::wayland {

namespace {

constexpr qsizetype largestKeymap = qsizetype{4} * 1024 * 1024;

/// The first `size` bytes of a file, which is read and not mapped: it may be shorter than told.
QByteArray contents(int descriptor, qsizetype size)
{
    if (size > largestKeymap)
        return {};
    QByteArray bytes(size, '\0');
    qsizetype filled = 0;
    while (filled < size) {
        const ssize_t count = pread(descriptor, bytes.data() + filled,
                                    static_cast<std::size_t>(size - filled), filled);
        if (count <= 0)
            break;
        filled += count;
    }
    bytes.truncate(filled);
    while (bytes.endsWith('\0'))
        bytes.chop(1);
    return bytes;
}

} // namespace

SeatKeyboard::SeatKeyboard(Connection &connection)
    : m_connection(connection)
    , m_seat(connection.bind(wl_seat_interface, seatVersion, &endSeat))
{
    if (m_seat != nullptr)
        wl_seat_add_listener(m_seat.get(), &seatListener(), this);
    connection.flush();
}

SeatKeyboard::~SeatKeyboard() = default;

const wl_seat_listener &SeatKeyboard::seatListener()
{
    static constexpr wl_seat_listener listener{
        .capabilities =
            [](void *self, wl_seat * /*seat*/, std::uint32_t capabilities) {
                static_cast<SeatKeyboard *>(self)->follow(
                    (capabilities & WL_SEAT_CAPABILITY_KEYBOARD) != 0);
            },
        .name = [](void * /*self*/, wl_seat * /*seat*/, const char * /*name*/) {},
    };
    return listener;
}

const wl_keyboard_listener &SeatKeyboard::keyboardListener()
{
    static constexpr wl_keyboard_listener listener{
        .keymap =
            [](void *self, wl_keyboard * /*keyboard*/, std::uint32_t format, int descriptor,
               std::uint32_t size) {
                static_cast<SeatKeyboard *>(self)->read(format, descriptor, size);
            },
        .enter = [](void *, wl_keyboard *, std::uint32_t, wl_surface *, wl_array *) {},
        .leave = [](void *, wl_keyboard *, std::uint32_t, wl_surface *) {},
        .key = [](void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t,
                  std::uint32_t) {},
        .modifiers = [](void *, wl_keyboard *, std::uint32_t, std::uint32_t, std::uint32_t,
                        std::uint32_t, std::uint32_t) {},
        .repeat_info = [](void *, wl_keyboard *, std::int32_t, std::int32_t) {},
    };
    return listener;
}

void SeatKeyboard::follow(bool hasKeyboard)
{
    if (!hasKeyboard) { // the last one was unplugged; its map is as good as any until the next
        m_keyboard.reset();
    } else if (m_keyboard == nullptr) {
        m_keyboard = owned(wl_seat_get_keyboard(m_seat.get()), &endKeyboard);
        wl_keyboard_add_listener(m_keyboard.get(), &keyboardListener(), this);
    }
    m_connection.flush();
}

void SeatKeyboard::read(std::uint32_t format, int descriptor, std::uint32_t size)
{
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
        m_keymap = contents(descriptor, size);
    close(descriptor);
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
        Q_EMIT keymapChanged();
}

} // namespace lumacap::wayland
