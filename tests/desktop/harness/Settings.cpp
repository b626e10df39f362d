#include "harness/Settings.h"

#include <QFile>
#include <QSaveFile>
#include <QSettings>

#include <stdexcept>

namespace lumacap::harness {

using namespace Qt::StringLiterals;

void writeSettings(const TestDesktop &desktop, const Settings &settings)
{
    QSaveFile file(desktop.folder(u"config/Lumacap"_s) + "/Lumacap.conf"_L1);
    QString text = u"[General]\n"_s;
    for (const auto &[key, value] : settings) {
        QString quoted = value;
        quoted.replace(u'\\', u"\\\\"_s).replace(u'"', u"\\\""_s);
        text += u"%1=\"%2\"\n"_s.arg(key, quoted);
    }
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit())
        throw std::runtime_error("no settings file");
}

QString storedHotkey(int keyCode, int modifiers)
{
    return u"@ByteArray({\"keyCode\":%1,\"modifiers\":%2})"_s.arg(keyCode).arg(modifiers);
}

std::optional<QString> storedSetting(const TestDesktop &desktop, const QString &key)
{
    const QSettings file(desktop.folder(u"config/Lumacap"_s) + u"/Lumacap.conf"_s,
                         QSettings::IniFormat);
    return file.contains(key) ? std::optional(file.value(key).toString()) : std::nullopt;
}

} // namespace lumacap::harness
