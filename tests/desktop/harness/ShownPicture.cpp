#include "harness/ShownPicture.h"

#include "harness/XConnection.h"

#include <xcb/xcb.h>

namespace lumacap::harness {

QImage shownOn(const QByteArray &display, const QRect &area)
{
    const XConnection connection(display);
    const QRect place = area.isEmpty() ? QRect(QPoint(0, 0), connection.size()) : area;
    const XReply<xcb_get_image_reply_t> reply(xcb_get_image_reply(
        connection.raw(),
        xcb_get_image(connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, connection.root(),
                      static_cast<std::int16_t>(place.x()), static_cast<std::int16_t>(place.y()),
                      static_cast<std::uint16_t>(place.width()),
                      static_cast<std::uint16_t>(place.height()), ~0U),
        nullptr));
    if (!reply)
        return {};
    const QImage view(xcb_get_image_data(reply.get()), place.width(), place.height(),
                      QImage::Format_RGB32);
    return view.copy();
}

} // namespace lumacap::harness
