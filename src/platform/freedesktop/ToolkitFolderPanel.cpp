#include "platform/freedesktop/ToolkitFolderPanel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {
namespace {

/// The toolkit's own words in the user's language; null where the toolkit does not speak it.
std::unique_ptr<QTranslator> translator()
{
    auto words = std::make_unique<QTranslator>();
    const QString folder = QLibraryInfo::path(QLibraryInfo::TranslationsPath);
    if (!words->load(QLocale(), u"qtbase"_s, u"_"_s, folder)
        || !QCoreApplication::installTranslator(words.get()))
        return nullptr;
    return words;
}

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
    std::unique_ptr<QTranslator> words = translator();
    m_dialog = new QFileDialog(&window);
    m_dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (words)
        words.release()->setParent(m_dialog); // goes with the dialog, and is not used from then on
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
