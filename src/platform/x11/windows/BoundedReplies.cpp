#include "platform/x11/windows/BoundedReplies.h"

#include <xcb/xcb.h>

namespace lumacap::x11 {

void BoundedReplies::discard(unsigned int sequence)
{
    xcb_discard_reply(m_connection.raw(), sequence);
}

} // namespace lumacap::x11
