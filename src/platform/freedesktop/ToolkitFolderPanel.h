#pragma once

#include "platform/FolderPanel.h"

#include <QFileDialog>
#include <QPointer>

namespace lumacap::freedesktop {

/// The toolkit's dialog for folders: the desktop's own where its theme plugin gives one.
class ToolkitFolderPanel final : public FolderPanel {
public:
    void chooseFolder(QWidget &window, const QString &startFolder, Chosen onChosen) override;

private:
    QPointer<QFileDialog> m_dialog;
};

} // namespace lumacap::freedesktop
