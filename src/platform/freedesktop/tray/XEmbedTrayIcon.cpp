#include "platform/freedesktop/tray/XEmbedTrayIcon.h"

#include <QCursor>
#include <QMenu>

namespace lumacap::freedesktop {

using namespace Qt::StringLiterals;

XEmbedTrayIcon::XEmbedTrayIcon(QMenu &menu)
{
    m_icon.setToolTip(u"Lumacap"_s);
    m_icon.setContextMenu(&menu); // which Qt opens on the right click
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &menu,
                     [&menu](QSystemTrayIcon::ActivationReason reason) {
                         if (reason == QSystemTrayIcon::Trigger)
                             menu.popup(QCursor::pos());
                     });
}

void XEmbedTrayIcon::setImage(const QIcon &image)
{
    m_icon.setIcon(image);
}

void XEmbedTrayIcon::show()
{
    m_icon.show();
}

void XEmbedTrayIcon::hide()
{
    m_icon.hide();
}

} // namespace lumacap::freedesktop
