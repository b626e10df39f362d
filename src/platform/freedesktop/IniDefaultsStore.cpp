#include "platform/freedesktop/IniDefaultsStore.h"

#include "platform/freedesktop/FileReplacement.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

#include <algorithm>
#include <array>
#include <atomic>
#include <ctime>
#include <tuple>
#include <utility>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lumacap::freedesktop {
namespace {

/// A thousand times what the program writes; anything larger is no settings file.
constexpr qint64 largestFile = 1 << 20;

constexpr int mostLinksFollowed = 40; // as many as the kernel follows

/// The bytes of a regular file. Anything else is not even opened: a pipe would not answer.
Result<QByteArray> contentOf(const QString &path)
{
    if (!QFileInfo{path}.isFile())
        return failure(u"%1 is not a file"_s.arg(path));
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return failure(u"%1 can't be read: %2"_s.arg(path, file.errorString()));
    if (file.size() > largestFile)
        return failure(u"%1 is too large for settings"_s.arg(path));
    QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return failure(u"%1 can't be read: %2"_s.arg(path, file.errorString()));
    return content;
}

/// A nameless file in memory, as a path for QSettings.
class MemoryFile {
public:
    explicit MemoryFile(const QByteArray &content)
        : m_descriptor{memfd_create("settings", MFD_CLOEXEC)}
    {
        QFile file;
        m_isComplete = file.open(m_descriptor, QIODevice::WriteOnly | QIODevice::Unbuffered)
            && file.write(content) == content.size() && stampUniquely();
    }
    Q_DISABLE_COPY_MOVE(MemoryFile)
    ~MemoryFile()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
    }

    bool isComplete() const { return m_isComplete; }
    QString path() const { return u"/proc/self/fd/%1"_s.arg(m_descriptor); }

private:
    /// QSettings remembers, for the whole process, what it read from a path, and takes a file of
    /// the same size and time for the same file. Descriptors are used again: no two files may
    /// agree.
    bool stampUniquely() const
    {
        static std::atomic<std::time_t> lastStamp;
        const timespec stamp{.tv_sec = ++lastStamp, .tv_nsec = 0};
        const std::array times{stamp, stamp};
        return futimens(m_descriptor, times.data()) == 0;
    }

    int m_descriptor;
    bool m_isComplete = false;
};

/// What QSettings makes of an INI file's bytes; no value when they are damaged. It never gets the
/// settings file itself: its cache overlooks a quick edit that keeps the size, and forgets at the
/// second reading that a file is damaged.
std::optional<QVariant> storedIn(const QByteArray &content, const QString &key)
{
    if (content.isEmpty())
        return QVariant{};
    const MemoryFile file(content);
    if (!file.isComplete())
        return std::nullopt;
    const QSettings settings(file.path(), QSettings::IniFormat);
    QVariant value = settings.value(key);
    std::ignore = settings.allKeys(); // reads the other groups too; unread ones pass for sound
    if (settings.status() != QSettings::NoError)
        return std::nullopt;
    return value;
}

Result<QString> withLinksFollowed(QString path)
{
    for (int links = 0; links < mostLinksFollowed; ++links) {
        const QFileInfo file(path);
        if (!file.isSymLink())
            return path;
        path = file.symLinkTarget();
    }
    return failure(u"%1 is a symbolic link that leads nowhere"_s.arg(path));
}

/// Writes `content` with one key changed into the empty file at `path`.
Result<void> writeEdited(QTemporaryFile &copy, const QByteArray &content, const QString &key,
                         const DefaultsValue &value)
{
    if (copy.write(content) != content.size() || !copy.flush())
        return failure(u"%1 can't be written: %2"_s.arg(copy.fileName(), copy.errorString()));
    QSettings settings(copy.fileName(), QSettings::IniFormat);
    settings.setValue(
        key, std::visit([](const auto &held) { return QVariant::fromValue(held); }, value));
    settings.sync();
    if (settings.status() != QSettings::NoError)
        return failure(u"%1 can't be written"_s.arg(copy.fileName()));
    return {};
}

/// Puts `fresh` in the place of `target`; a damaged one is kept beside it.
Result<void> replaceDamaged(const QString &fresh, const QString &target)
{
    const QString kept = target + u".damaged"_s;
    if (auto moved = renameOver(target, kept); !moved)
        return moved;
    auto replaced = renameOver(fresh, target);
    if (!replaced)
        std::ignore = renameOver(kept, target); // as it was; the failure is reported already
    return replaced;
}

} // namespace

IniDefaultsStore::IniDefaultsStore(QString path)
    : m_path{std::move(path)}
{
}

QVariant IniDefaultsStore::storedValue(const QString &key) const
{
    const auto content = contentOf(m_path);
    return content ? storedIn(*content, key).value_or(QVariant{}) : QVariant{};
}

bool IniDefaultsStore::holds(const QString &key) const
{
    return storedValue(key).isValid();
}

bool IniDefaultsStore::boolean(const QString &key) const
{
    const QString word = string(key).value_or(QString{});
    constexpr std::array meaningTrue{"true"_L1, "yes"_L1, "1"_L1};
    return std::ranges::any_of(meaningTrue, [&word](QLatin1StringView spelling) {
        return word.compare(spelling, Qt::CaseInsensitive) == 0;
    });
}

std::optional<QString> IniDefaultsStore::string(const QString &key) const
{
    const QVariant value = storedValue(key);
    switch (value.typeId()) {
    case QMetaType::QString:
        return value.toString();
    case QMetaType::QStringList:
        // QSettings splits a text with commas that someone wrote without quotation marks.
        return value.toStringList().join(u',');
    default: // the other types of QVariant are many, and no text
        return std::nullopt;
    }
}

std::optional<QByteArray> IniDefaultsStore::data(const QString &key) const
{
    const QVariant value = storedValue(key);
    if (value.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    return value.toByteArray();
}

Result<void> IniDefaultsStore::set(const QString &key, const DefaultsValue &value)
{
    const auto target = withLinksFollowed(m_path);
    if (!target)
        return std::unexpected(target.error());
    const bool isThere = QFileInfo::exists(*target);
    const auto content = isThere ? contentOf(*target) : QByteArray{};
    if (!content)
        return std::unexpected(content.error());
    const bool isDamaged = !storedIn(*content, key).has_value();

    // QSettings keeps what it could not write and tries again at the next reading. So it writes a
    // copy of a name that is used once, and the whole copy takes the file's place.
    if (auto created = createFolder(QFileInfo{*target}.path()); !created)
        return created;
    QTemporaryFile copy(*target + u".XXXXXX"_s);
    if (!copy.open())
        return failure(u"%1 can't be written: %2"_s.arg(*target, copy.errorString()));
    const QString fresh = copy.fileName();
    const auto written = writeEdited(copy, isDamaged ? QByteArray{} : *content, key, value);
    if (!written)
        return written;
    if (isThere)
        QFile::setPermissions(fresh, QFile::permissions(*target));
    auto replaced = isDamaged ? replaceDamaged(fresh, *target) : renameOver(fresh, *target);
    copy.setAutoRemove(!replaced);
    return replaced;
}

} // namespace lumacap::freedesktop
