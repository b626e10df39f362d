#pragma once

#include "preferences/storage/ImageFormat.h"

#include <QWidget>

namespace lumacap {

class PrefsText;

/// Where files go, and of what kind they are: two lines, there only while files are saved.
class OutputDetails final : public QWidget {
    Q_OBJECT

public:
    OutputDetails(const QString &saveDirectory, ImageFormat format, QWidget *parent);

    /// Names another folder, by its path.
    void showDirectory(const QString &saveDirectory);

Q_SIGNALS:
    /// The user wants to choose another folder.
    void directoryWanted();
    void formatChosen(lumacap::ImageFormat format);

private:
    QWidget *folderLine();
    QWidget *formatLine(ImageFormat format);

    PrefsText *m_folder;
};

} // namespace lumacap
