#pragma once

#include <memory>

namespace lumacap::wayland {

/// Ends a proxy by the request that its protocol has for that.
template <class Proxy>
struct EndProxy {
    void (*end)(Proxy *proxy) = nullptr;

    void operator()(Proxy *proxy) const { end(proxy); }
};

/// A proxy of ours, which lives shorter than its connection.
template <class Proxy>
using Owned = std::unique_ptr<Proxy, EndProxy<Proxy>>;

template <class Proxy>
Owned<Proxy> owned(Proxy *proxy, void (*end)(Proxy *))
{
    return Owned<Proxy>(proxy, EndProxy<Proxy>{end});
}

} // namespace lumacap::wayland
