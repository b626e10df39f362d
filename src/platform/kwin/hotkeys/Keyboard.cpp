#include "platform/kwin/hotkeys/Keyboard.h"

#include "platform/Spawn.h"
#include "platform/wayland/Connection.h"

#include <QCoroDBusPendingCall>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QPointer>

#include <utility>

#include <unistd.h>
#include <wayland-client-protocol.h>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

constexpr std::uint32_t seatVersion = 5; // the first that can be let go
constexpr int layoutLimit = 1'000; // milliseconds
constexpr qsizetype largestKeymap = qsizetype{4} * 1024 * 1024;

const auto layoutsService = u"org.kde.keyboard"_s;
const auto layoutsPath = u"/Layouts"_s;
const auto layoutsInterface = u"org.kde.KeyboardLayouts"_s;

void endSeat(wl_seat *seat)
{
    if (wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
        wl_seat_release(seat);
    else
        wl_seat_destroy(seat);
}

void endKeyboard(wl_keyboard *keyboard)
{
    if (wl_keyboard_get_version(keyboard) >= WL_KEYBOARD_RELEASE_SINCE_VERSION)
        wl_keyboard_release(keyboard);
    else
        wl_keyboard_destroy(keyboard);
}

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

Keyboard::Keyboard(wayland::Connection &connection, QDBusConnection bus)
    : m_connection(connection)
    , m_bus(std::move(bus))
    , m_layouts(layoutsService, m_bus, QDBusServiceWatcher::WatchForOwnerChange)
    , m_seat(connection.bind(wl_seat_interface, seatVersion, &endSeat))
{
    if (m_seat != nullptr)
        wl_seat_add_listener(m_seat.get(), &seatListener(), this);
    connection.flush();
    // It is there only while there are several layouts. With no service named: the toolkit would
    // stop to ask the bus who owns it, and a word from anybody else brings about no more than a
    // question.
    connect(&m_layouts, &QDBusServiceWatcher::serviceOwnerChanged, this,
            &Keyboard::onLayoutChanged);
    m_bus.connect({}, layoutsPath, layoutsInterface, u"layoutChanged"_s, this,
                  SLOT(onLayoutChanged()));
    onLayoutChanged();
}

Keyboard::~Keyboard() = default;

KeySequences Keyboard::sequences(std::uint32_t evdevCode, std::uint32_t carbonModifiers) const
{
    return m_keymap ? m_keymap->sequences(evdevCode, carbonModifiers, m_layout) : KeySequences();
}

const wl_seat_listener &Keyboard::seatListener()
{
    static constexpr wl_seat_listener listener{
        .capabilities =
            [](void *self, wl_seat * /*seat*/, std::uint32_t capabilities) {
                static_cast<Keyboard *>(self)->follow((capabilities & WL_SEAT_CAPABILITY_KEYBOARD)
                                                      != 0);
            },
        .name = [](void * /*self*/, wl_seat * /*seat*/, const char * /*name*/) {},
    };
    return listener;
}

const wl_keyboard_listener &Keyboard::keyboardListener()
{
    static constexpr wl_keyboard_listener listener{
        .keymap =
            [](void *self, wl_keyboard * /*keyboard*/, std::uint32_t format, int descriptor,
               std::uint32_t size) {
                static_cast<Keyboard *>(self)->read(format, descriptor, size);
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

void Keyboard::follow(bool hasKeyboard)
{
    if (!hasKeyboard) { // the last one was unplugged; its map is as good as any until the next
        m_keyboard.reset();
        return;
    }
    if (m_keyboard != nullptr)
        return;
    m_keyboard = wayland::owned(wl_seat_get_keyboard(m_seat.get()), &endKeyboard);
    wl_keyboard_add_listener(m_keyboard.get(), &keyboardListener(), this);
    m_connection.flush();
}

void Keyboard::read(std::uint32_t format, int descriptor, std::uint32_t size)
{
    std::optional<Keymap> keymap;
    if (format == WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1)
        keymap = Keymap::fromText(contents(descriptor, size));
    close(descriptor);
    if (!keymap)
        return;
    m_keymap = std::move(keymap);
    if (m_isKnown)
        Q_EMIT changed();
}

void Keyboard::onLayoutChanged()
{
    spawn(learnLayout());
}

QCoro::Task<> Keyboard::learnLayout()
{
    const QPointer self{this};
    auto question = QDBusMessage::createMethodCall(layoutsService, layoutsPath, layoutsInterface,
                                                   u"getLayout"_s);
    question.setAutoStartService(false);
    const QDBusMessage answer = co_await m_bus.asyncCall(question, layoutLimit);
    if (!self)
        co_return;
    m_layout = answer.type() == QDBusMessage::ReplyMessage ? answer.arguments().value(0).toUInt()
                                                           : 0; // the only one
    if (!m_keymap)
        m_keymap = Keymap::systemDefault(); // until the first keyboard is plugged in
    m_isKnown = true;
    Q_EMIT changed();
}

} // namespace lumacap::kwin
