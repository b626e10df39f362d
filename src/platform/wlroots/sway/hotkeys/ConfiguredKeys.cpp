#include "platform/wlroots/sway/hotkeys/ConfiguredKeys.h"

#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QStringList>

#include <algorithm>
#include <array>
#include <map>
#include <optional>

#include <wordexp.h>

using namespace Qt::StringLiterals;

namespace lumacap::sway {

namespace {

constexpr qint64 largestFile = 1 << 20;
constexpr int mostFiles = 200;

struct ModifierRow {
    QLatin1StringView name;
    std::uint32_t mask;
};

constexpr std::array modifierRows{
    ModifierRow{"Shift"_L1, modifier::shift},
    ModifierRow{"Lock"_L1, 1U << 1},
    ModifierRow{"Control"_L1, modifier::control},
    ModifierRow{"Ctrl"_L1, modifier::control},
    ModifierRow{"Mod1"_L1, modifier::alt},
    ModifierRow{"Alt"_L1, modifier::alt},
    ModifierRow{"Mod2"_L1, 1U << 4},
    ModifierRow{"Mod3"_L1, 1U << 5},
    ModifierRow{"Mod4"_L1, modifier::logo},
    ModifierRow{"Super"_L1, modifier::logo},
    ModifierRow{"Logo"_L1, modifier::logo},
    ModifierRow{"Mod5"_L1, 1U << 7},
};

std::optional<std::uint32_t> modifierMask(const QString &name)
{
    const auto *const row = std::ranges::find_if(modifierRows, [&name](const ModifierRow &known) {
        return name.compare(known.name, Qt::CaseInsensitive) == 0;
    });
    return row == modifierRows.end() ? std::nullopt : std::optional(row->mask);
}

bool isGroup(const QString &name)
{
    return name.startsWith("Group"_L1, Qt::CaseInsensitive)
        || name.compare("Mode_switch"_L1, Qt::CaseInsensitive) == 0;
}

QString withoutQuotes(const QString &word)
{
    const bool isQuoted = word.size() >= 2 && word.front() == word.back()
        && (word.front() == u'"' || word.front() == u'\'');
    return isQuoted ? word.mid(1, word.size() - 2) : word;
}

/// The words of a line; what is quoted stays together, with its quotes.
QStringList wordsOf(const QString &line)
{
    QStringList words;
    QString word;
    QChar quote;
    for (const QChar character : line) {
        if (quote.isNull() && character.isSpace()) {
            if (!word.isEmpty())
                words.append(word);
            word.clear();
            continue;
        }
        if (quote.isNull() && (character == u'"' || character == u'\''))
            quote = character;
        else if (character == quote)
            quote = QChar();
        word.append(character);
    }
    if (!word.isEmpty())
        words.append(word);
    return words;
}

/// The paths that a pattern of the shell stands for, which may have "~", variables and wild cards;
/// none for one that would run a command.
QStringList expanded(const QString &pattern, const QString &folder)
{
    const bool isAbsolute = pattern.startsWith(u'/') || pattern.startsWith(u'~')
        || pattern.startsWith(u'$') || pattern.startsWith(u'"') || pattern.startsWith(u'\'');
    const QString quotedFolder = u'\'' + QString(folder).replace(u"'"_s, u"'\\''"_s) + u"'/"_s;
    const QString whole = isAbsolute ? pattern : quotedFolder + pattern;
    QStringList paths;
    wordexp_t words{};
    if (wordexp(QFile::encodeName(whole).constData(), &words, WRDE_NOCMD) == 0) {
        for (std::size_t index = 0; index < words.we_wordc; ++index)
            paths.append(QFile::decodeName(words.we_wordv[index]));
    }
    wordfree(&words);
    return paths;
}

/// Reads configurations in the order in which the compositor does.
class Reader {
public:
    void read(const QString &text, const QString &path);
    const std::vector<ConfiguredKey> &keys() const { return m_keys; }

private:
    void readFile(const QString &path);
    void handle(const QStringList &words);
    void handleMode(const QStringList &words);
    void handleKey(const QStringList &words);
    void include(const QString &pattern);
    QString replaced(const QString &line) const;

    struct Longer {
        bool operator()(const QString &one, const QString &other) const
        {
            return one.size() != other.size() ? one.size() > other.size() : one < other;
        }
    };

    std::map<QString, QString, Longer> m_variables; // the longest name first, as it is tried first
    std::vector<ConfiguredKey> m_keys;
    QStringList m_folders; // of the files being read, the innermost last
    QSet<QString> m_filesRead;
};

/// A line that ends with a backslash goes on in the next one.
QStringList linesOf(const QString &text)
{
    QStringList lines;
    QString begun;
    for (const QString &part : text.split(u'\n')) {
        if (part.endsWith(u'\\') && !(begun + part).trimmed().startsWith(u'#')) {
            begun += part.chopped(1);
            continue;
        }
        lines.append((begun + part).trimmed());
        begun.clear();
    }
    lines.append(begun.trimmed());
    return lines;
}

void Reader::read(const QString &text, const QString &path)
{
    m_filesRead.insert(QFileInfo(path).canonicalFilePath());
    m_folders.append(QFileInfo(path).absolutePath());
    QStringList blocks; // what opened those around the line, the outermost first
    QString last;
    for (const QString &line : linesOf(text)) {
        if (line.isEmpty() || line.startsWith(u'#'))
            continue;
        const QString before = blocks.isEmpty() ? QString() : blocks.last() + u' ';
        if (line == u"{"_s) // on a line of its own, after what it belongs to
            blocks.append(last);
        else if (line.endsWith(u'{'))
            blocks.append(before + line.chopped(1).trimmed());
        else if (line == u"}"_s) {
            if (!blocks.isEmpty())
                blocks.removeLast();
        } else
            handle(wordsOf(before + line));
        last = before + line;
    }
    m_folders.removeLast();
}

void Reader::handle(const QStringList &words)
{
    if (words.isEmpty())
        return;
    const QString &command = words.first();
    if (command == u"set"_s && words.size() > 2) {
        m_variables.insert_or_assign(words.at(1), replaced(words.mid(2).join(u' ')));
        return;
    }
    const QStringList replacedWords = wordsOf(replaced(words.join(u' ')));
    if (command == u"mode"_s)
        handleMode(replacedWords);
    else if (command == u"include"_s)
        include(replacedWords.mid(1).join(u' '));
    else
        handleKey(replacedWords);
}

void Reader::handleMode(const QStringList &words)
{
    const auto name = std::ranges::find_if(words.begin() + 1, words.end(), [](const QString &word) {
        return !word.startsWith(u"--"_s);
    });
    if (name != words.end() && withoutQuotes(*name) == u"default"_s)
        handle(QStringList(name + 1, words.end()));
}

void Reader::handleKey(const QStringList &words)
{
    const QString &command = words.first();
    const bool isUndoing = command.startsWith(u"un"_s);
    const QString kind = isUndoing ? command.mid(2) : command;
    if (kind != u"bindsym"_s && kind != u"bindcode"_s)
        return;
    const auto combination =
        std::ranges::find_if(words.begin() + 1, words.end(),
                             [](const QString &word) { return !word.startsWith(u"--"_s); });
    if (combination == words.end())
        return;
    ConfiguredKey key;
    key.by = kind == u"bindsym"_s ? ConfiguredKey::By::Symbol : ConfiguredKey::By::Code;
    for (const QString &part : withoutQuotes(*combination).split(u'+', Qt::SkipEmptyParts)) {
        if (const auto mask = modifierMask(part))
            key.modifiers |= *mask;
        else if (!key.key.isEmpty())
            return; // several keys held together, which no shortcut of ours is
        else if (!isGroup(part))
            key.key = part;
    }
    if (isUndoing)
        std::erase(m_keys, key);
    else if (!key.key.isEmpty())
        m_keys.push_back(key);
}

void Reader::include(const QString &pattern)
{
    const QStringList paths = expanded(pattern, m_folders.last());
    for (const QString &path : paths)
        readFile(path);
}

void Reader::readFile(const QString &path)
{
    const QFileInfo info(path);
    const QString canonical = info.canonicalFilePath();
    // Each once, as the compositor does; so that two which include one another are no trap either.
    if (!info.isFile() || m_filesRead.contains(canonical) || m_filesRead.size() >= mostFiles)
        return;
    QFile file(path);
    if (file.size() <= largestFile && file.open(QIODevice::ReadOnly))
        read(QString::fromUtf8(file.read(largestFile)), canonical);
}

QString Reader::replaced(const QString &line) const
{
    QString result;
    for (qsizetype index = 0; index < line.size(); ++index) {
        const QStringView rest = QStringView(line).mid(index);
        if (rest.front() != u'$') {
            result.append(rest.front());
            continue;
        }
        const auto variable = std::ranges::find_if(
            m_variables, [rest](const auto &entry) { return rest.startsWith(entry.first); });
        if (rest.startsWith(u"$$"_s)) { // a dollar itself
            result.append(u'$');
            ++index;
        } else if (variable != m_variables.end()) {
            result.append(variable->second);
            index += variable->first.size() - 1;
        } else {
            result.append(rest.front());
        }
    }
    return result;
}

} // namespace

std::vector<ConfiguredKey> configuredKeys(const QString &text, const QString &path)
{
    Reader reader;
    reader.read(text, path);
    return reader.keys();
}

} // namespace lumacap::sway
