#pragma once

#include <QByteArray>
#include <QSize>

#include <cstdint>
#include <memory>

struct xcb_connection_t;
struct xcb_screen_t;

namespace lumacap::harness {

/// A connection to an X server with its first screen.
class XConnection {
public:
    /// Connects to `display`, such as ":7"; throws when nobody answers.
    explicit XConnection(const QByteArray &display);

    /// The connection itself, for requests of the caller's own.
    xcb_connection_t *raw() const { return m_connection.get(); }
    /// The first screen, owned by the connection.
    const xcb_screen_t &screen() const { return *m_screen; }
    /// The root window.
    std::uint32_t root() const;
    /// The root window's size in pixels when the connection was made.
    QSize size() const;
    /// The atom called `name`, made where it is missing.
    std::uint32_t atom(const char *name) const;
    /// The owner of the selection `name`, 0 for none.
    std::uint32_t selectionOwner(const char *name) const;
    /// The bytes of a property of `window`, empty where there is none.
    QByteArray property(std::uint32_t window, const char *name) const;
    /// Whether `window` is on the screen, be it beneath others.
    bool isViewable(std::uint32_t window) const;
    /// Comes back when the server has done everything asked so far.
    void finish() const;

private:
    struct Disconnect {
        void operator()(xcb_connection_t *connection) const;
    };
    std::unique_ptr<xcb_connection_t, Disconnect> m_connection;
    xcb_screen_t *m_screen = nullptr;
};

/// Takes what an xcb call gave to be freed with free().
struct Free {
    void operator()(void *memory) const;
};

/// A reply or event of xcb, freed with its owner.
template <typename T>
using XReply = std::unique_ptr<T, Free>;

} // namespace lumacap::harness
