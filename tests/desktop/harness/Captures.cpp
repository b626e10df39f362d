#include "harness/Captures.h"

#include "harness/WaitFor.h"

#include <QDir>
#include <QFileInfo>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

DesktopOptions twoMonitors(int primary)
{
    const auto role = [primary](int index) {
        return index == primary ? Role::Primary : Role::Ordinary;
    };
    return {.server = {.size = {5760, 2160},
                       .monitors = {{u"LEFT"_s, {0, 0, 3840, 2160}, role(0)},
                                    {u"RIGHT"_s, {3840, 0, 1920, 2160}, role(1)}}}};
}

DesktopOptions smallScreen()
{
    return {.server = {.size = {640, 480}}};
}

QImage clipboardPicture(TestDesktop &desktop)
{
    if (!waitFor([&desktop] { return desktop.clipboardTypes().contains("image/png"); }))
        return {};
    return readImage(desktop, desktop.clipboardBytes("image/png"), ImageKind::Png);
}

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System
                                  | QDir::NoDotAndDotDot);
}

QStringList capturesIn(const QString &folder)
{
    QStringList paths;
    for (const QFileInfo &file :
         QDir(folder).entryInfoList({u"Lumacap_*"_s}, QDir::Files, QDir::Name))
        paths.append(file.filePath());
    return paths;
}

QImage pictureIn(TestDesktop &desktop, const QString &path)
{
    return readImage(desktop, fileBytes(path), kindOfSuffix(QFileInfo(path).suffix()));
}

QString fullScreenTitle()
{
    return u"Capture plein ecran  (⌃⇧1)"_s;
}

} // namespace lumacap::harness
