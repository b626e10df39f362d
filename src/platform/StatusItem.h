#pragma once

#include <QList>

QT_BEGIN_NAMESPACE
class QAction;
class QIcon;
QT_END_NAMESPACE

namespace lumacap {

/// The program's item in the desktop's tray, with its menu. Where the desktop shows no tray the
/// item waits unseen; it appears when a tray does, and again after the tray was restarted.
class StatusItem {
public:
    StatusItem() = default;
    Q_DISABLE_COPY_MOVE(StatusItem)
    virtual ~StatusItem() = default;

    /// `description` is the icon's name for assistive technology.
    virtual void setImage(const QIcon &image, const QString &description) = 0;
    /// The menu's entries from top to bottom, borrowed until the next call. Changes of an entry's
    /// text or state are followed; choosing an entry triggers it.
    virtual void setMenu(const QList<QAction *> &entries) = 0;
};

} // namespace lumacap
