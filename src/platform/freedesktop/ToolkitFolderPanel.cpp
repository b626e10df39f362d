#include "platform/freedesktop/ToolkitFolderPanel.h"

#include <QDir>
#include <QFileInfo>

#include <utility>

namespace lumacap::freedesktop {
namespace {

QString nearestFolder(const QString &path)
{
    QString folder = QDir::cleanPath(path);
    while (!QFileInfo(folder).isDir() && !QDir(folder).isRoot() && QDir::isAbsolutePath(folder))
        folder = QFileInfo(folder).path();
    return folder;
}

} // namespace

void ToolkitFolderPanel::chooseFolder(QWidget &window, const QString &startFolder, Chosen onChosen)
{
    if (m_dialog)
        return m_dialog->raise();
    m_dialog = new QFileDialog(&window);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    m_dialog->setAcceptMode(QFileDialog::AcceptOpen);
    m_dialog->setFileMode(QFileDialog::Directory);
    m_dialog->setOption(QFileDialog::ShowDirsOnly);
    m_dialog->setDirectory(nearestFolder(startFolder));
    QObject::connect(m_dialog, &QFileDialog::fileSelected, &window,
                     [onChosen = std::move(onChosen)](const QString &path) {
                         if (QFileInfo(path).isDir()) // empty for what is on no file system
                             onChosen(QDir::cleanPath(path));
                     });
    m_dialog->open(); // the toolkit makes it modal for the window
}

} // namespace lumacap::freedesktop
