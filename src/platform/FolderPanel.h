#pragma once

#include <QString>
#include <QtGlobal>

#include <functional>

class QWidget;

namespace lumacap {

/// Lets the user choose a folder.
class FolderPanel {
public:
    using Chosen = std::function<void(const QString &path)>;

    FolderPanel() = default;
    Q_DISABLE_COPY_MOVE(FolderPanel)
    virtual ~FolderPanel() = default;

    /// Opens a dialog over `window`, which takes no input until it is answered, and comes back at
    /// once. It begins in `startFolder`, an absolute path, or the nearest folder above that is
    /// there; folders can be made in it. `onChosen` is called with the absolute path of an existing
    /// folder; never when the dialog is cancelled, nor when the window goes. Nothing while a dialog
    /// is open.
    virtual void chooseFolder(QWidget &window, const QString &startFolder, Chosen onChosen) = 0;
};

} // namespace lumacap
