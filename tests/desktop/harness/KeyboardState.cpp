#include "harness/KeyboardState.h"

#include <memory>
#include <stdexcept>

#include <X11/XKBlib.h>

namespace lumacap::harness {

namespace {

struct Close {
    void operator()(Display *display) const { XCloseDisplay(display); }
};

using Connection = std::unique_ptr<Display, Close>;

Connection connect(const QByteArray &display)
{
    Connection connection(XOpenDisplay(display.constData()));
    if (!connection)
        throw std::runtime_error("nobody answers");
    return connection;
}

} // namespace

void setLocks(const QByteArray &display, std::uint8_t modifiers)
{
    constexpr unsigned all = 0xff;
    const Connection connection = connect(display);
    XkbLockModifiers(connection.get(), XkbUseCoreKbd, all, modifiers);
    XSync(connection.get(), 0);
    XkbStateRec state{};
    if (XkbGetState(connection.get(), XkbUseCoreKbd, &state) != Success
        || state.locked_mods != modifiers)
        throw std::runtime_error("the keyboard does not lock");
}

void setLayout(const QByteArray &display, int index)
{
    const Connection connection = connect(display);
    XkbLockGroup(connection.get(), XkbUseCoreKbd, static_cast<unsigned>(index));
    XkbStateRec state{};
    if (XkbGetState(connection.get(), XkbUseCoreKbd, &state) != Success || state.group != index)
        throw std::runtime_error("the keyboard has no such layout");
}

} // namespace lumacap::harness
