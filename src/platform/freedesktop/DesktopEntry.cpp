#include "platform/freedesktop/DesktopEntry.h"

#include <QByteArrayList>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {
namespace {

/// Makes quotation marks necessary around a program's path.
constexpr QStringView reserved = u" \t\n\"'\\><~|&;$*?#()`";
constexpr QStringView escapedInQuotes = u"\"`$\\";

/// Ten times the largest entry that anybody ships.
constexpr qint64 largestFile = 1'000'000;

/// Undoes the escapes that every value of type string may have.
QString plainText(const QByteArray &value)
{
    QString text;
    bool isEscaped = false;
    for (const QChar character : QString::fromUtf8(value)) {
        if (!isEscaped && character == u'\\') {
            isEscaped = true;
            continue;
        }
        constexpr QStringView letters = u"sntr";
        constexpr QStringView meanings = u" \n\t\r";
        const auto letter = isEscaped ? letters.indexOf(character) : -1;
        text += letter < 0 ? character : meanings.at(letter);
        isEscaped = false;
    }
    return text;
}

/// The keys' suffixes that fit a locale, the best first, as the rules for localized keys order
/// them; the last is none.
QByteArrayList suffixes(const QByteArray &locale)
{
    const auto upTo = [](const QByteArray &text, char end) {
        const auto position = text.indexOf(end);
        return position < 0 ? text : text.first(position);
    };
    const QByteArray place = upTo(upTo(locale, '@'), '.'); // without encoding
    const QByteArray language = upTo(place, '_');
    const auto at = locale.indexOf('@');
    const QByteArray modifier = at < 0 ? QByteArray() : locale.sliced(at);
    return {'[' + place + modifier + ']', '[' + place + ']', '[' + language + modifier + ']',
            '[' + language + ']', QByteArray()};
}

/// Whether `desktop` is in a list as OnlyShowIn has it.
bool names(const QString &list, const QString &desktop)
{
    return list.split(u';', Qt::SkipEmptyParts).contains(desktop);
}

} // namespace

std::optional<DesktopEntry> DesktopEntry::read(const QString &path)
{
    QFile file(path);
    if (!QFileInfo{path}.isFile() || file.size() > largestFile || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    DesktopEntry entry;
    QByteArray group;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QByteArray trimmed = line.trimmed();
        if (trimmed.isEmpty() || trimmed.startsWith('#'))
            continue;
        if (trimmed.startsWith('[') && trimmed.endsWith(']')) {
            group = trimmed;
            continue;
        }
        const auto equals = trimmed.indexOf('=');
        if (group.isEmpty() || equals <= 0)
            return std::nullopt;
        if (group == "[Desktop Entry]")
            entry.m_values.insert(trimmed.first(equals).trimmed(),
                                  trimmed.sliced(equals + 1).trimmed());
    }
    if (entry.m_values.value("Type") != "Application" || entry.m_values.value("Exec").isEmpty())
        return std::nullopt;
    return entry;
}

bool DesktopEntry::startsAtLogin(const QStringList &desktops) const
{
    const QByteArray gnomeSwitch = m_values.value("X-GNOME-Autostart-enabled");
    return !isHidden() && gnomeSwitch != "false" && gnomeSwitch != "0" && hasItsProgram()
        && isShownOn(desktops);
}

bool DesktopEntry::isHidden() const
{
    const QByteArray hidden = m_values.value("Hidden");
    return hidden == "true" || hidden == "1"; // the older spelling of a boolean
}

QString DesktopEntry::name(const QByteArray &locale) const
{
    for (const QByteArray &suffix : suffixes(locale)) {
        const QByteArray value = m_values.value("Name" + suffix);
        if (!value.isEmpty())
            return plainText(value);
    }
    return {};
}

QString DesktopEntry::startupWindowClass() const
{
    return plainText(m_values.value("StartupWMClass"));
}

bool DesktopEntry::isShownOn(const QStringList &desktops) const
{
    const QString only = plainText(m_values.value("OnlyShowIn"));
    const QString never = plainText(m_values.value("NotShowIn"));
    for (const QString &desktop : desktops) {
        if (names(only, desktop))
            return true;
        if (names(never, desktop))
            return false;
    }
    return !m_values.contains("OnlyShowIn");
}

bool DesktopEntry::hasItsProgram() const
{
    const QString program = plainText(m_values.value("TryExec"));
    return program.isEmpty() || !QStandardPaths::findExecutable(program).isEmpty();
}

QString execValue(const QString &programPath)
{
    // Two layers, innermost first: the argument is quoted as a shell would, where % stands for
    // itself when doubled; then the whole is a value, in which a backslash is written twice.
    QString argument;
    for (const QChar character : programPath) {
        if (escapedInQuotes.contains(character))
            argument += u'\\';
        argument += character;
        if (character == u'%')
            argument += character;
    }
    if (std::ranges::any_of(programPath, [](QChar each) { return reserved.contains(each); }))
        argument = u'"' + argument + u'"';
    return argument.replace(u'\\', u"\\\\"_s).replace(u'\n', u"\\n"_s).replace(u'\t', u"\\t"_s);
}

} // namespace lumacap::freedesktop
