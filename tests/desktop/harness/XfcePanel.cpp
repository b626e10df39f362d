#include "harness/XfcePanel.h"

#include "harness/WaitFor.h"

#include <QFile>

#include <algorithm>
#include <span>
#include <stdexcept>

#include <xcb/xcb.h>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

namespace {

constexpr auto configuration = R"(<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="40"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray">
      <property name="square-icons" type="bool" value="true"/>
    </property>
  </property>
</channel>
)";

/// The side of the panel's first square in pixels, as configured above.
constexpr int square = 40;

/// The panel itself is grey.
bool isColoured(std::uint32_t pixel)
{
    const auto [least, most] =
        std::minmax({pixel & 0xffU, (pixel >> 8U) & 0xffU, (pixel >> 16U) & 0xffU});
    return most - least > 80;
}

} // namespace

XfcePanel::XfcePanel(PrivateDesktop &desktop)
    : m_connection(desktop.server().display())
{
    QFile file(desktop.folder(u"config/xfce4/xfconf/xfce-perchannel-xml"_s)
               + "/xfce4-panel.xml"_L1);
    if (!file.open(QIODevice::WriteOnly) || file.write(configuration) < 0)
        throw std::runtime_error("no settings of the panel");
    file.close();
    desktop.start(u"panel"_s, {u"xfce4-panel"_s, u"--disable-wm-check"_s});
}

void XfcePanel::requireIcon()
{
    require("the icon in the panel", [this] {
        const XReply<xcb_get_image_reply_t> image(xcb_get_image_reply(
            m_connection.raw(),
            xcb_get_image(m_connection.raw(), XCB_IMAGE_FORMAT_Z_PIXMAP, m_connection.root(), 0, 0,
                          square, square, 0xffffffff),
            nullptr));
        if (!image)
            return false;
        const std::span pixels(
            reinterpret_cast<const std::uint32_t *>(xcb_get_image_data(image.get())),
            static_cast<std::size_t>(xcb_get_image_data_length(image.get())) / 4);
        // The screen behind, before the panel covers it, has colours at its edges too.
        return std::ranges::any_of(pixels, isColoured) && !isColoured(pixels[0])
            && !isColoured(pixels.back());
    });
}

QPoint XfcePanel::iconCentre()
{
    return {square / 2, square / 2};
}

} // namespace lumacap::harness
