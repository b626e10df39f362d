#pragma once

#include "platform/StatusItem.h"

#include <QAction>
#include <QIcon>
#include <QString>

namespace lumacap {

/// Keeps the image and the menu it was given.
class FakeStatusItem final : public StatusItem {
public:
    void setImage(const QIcon &image, const QString &description) override
    {
        icon = image;
        iconName = description;
    }
    void setMenu(const QList<QAction *> &entries) override { menu = entries; }

    QIcon icon;
    QString iconName;
    QList<QAction *> menu;
};

} // namespace lumacap
