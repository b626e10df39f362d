#pragma once

#include <QSystemTrayIcon>

QT_BEGIN_NAMESPACE
class QIcon;
class QMenu;
QT_END_NAMESPACE

namespace lumacap::freedesktop {

/// The item as an icon in an X11 panel's own tray, for panels that host no StatusNotifierItem. It
/// waits for such a tray, and follows it when it restarts. Either click opens the menu.
///
/// Qt decides once in a process which kind of tray its icons go to, when the first is made: make
/// the first one only when no StatusNotifierItem host is there.
class XEmbedTrayIcon {
public:
    /// Borrows the menu, which outlives the object. Needs a QApplication on X11.
    explicit XEmbedTrayIcon(QMenu &menu);
    Q_DISABLE_COPY_MOVE(XEmbedTrayIcon)
    ~XEmbedTrayIcon() = default;

    void setImage(const QIcon &image);
    void show();
    void hide();

private:
    QSystemTrayIcon m_icon;
};

} // namespace lumacap::freedesktop
