#include "platform/portal/PictureFile.h"

#include "platform/portal/WholePng.h"

#include <QBuffer>
#include <QImageReader>

#include <algorithm>
#include <tuple>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lumacap::portal {

namespace {

/// Bytes. Three of the largest screens that are made, as noise, take less.
constexpr qint64 largestFile = qint64{512} << 20;

bool isBefore(const statx_timestamp &time, const timespec &other)
{
    return time.tv_sec < other.tv_sec
        || (time.tv_sec == other.tv_sec && time.tv_nsec < other.tv_nsec);
}

/// Whether the file was made since `asked`. Where the file system does not know when it was made,
/// it is ours if all that is in it was written since.
bool isNewerThan(const struct statx &facts, const timespec &asked)
{
    const bool knowsBirth = (facts.stx_mask & STATX_BTIME) != 0 && facts.stx_btime.tv_sec != 0;
    return !isBefore(knowsBirth ? facts.stx_btime : facts.stx_mtime, asked);
}

bool isSameFile(const struct stat &one, const struct stat &other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

} // namespace

timespec fileClock()
{
    timespec now{};
    clock_gettime(CLOCK_REALTIME_COARSE, &now); // what the kernel dates files with
    return now;
}

std::optional<QByteArray> pathOf(const QString &uri)
{
    QByteArray rest = uri.toUtf8();
    for (const QByteArray start : {"file://localhost/", "file:///", "file:/"}) {
        if (!rest.startsWith(start))
            continue;
        rest.remove(0, start.size() - 1);
        QByteArray path = QByteArray::fromPercentEncoding(rest);
        if (path.contains('\0') || path.startsWith("//"))
            return std::nullopt;
        return path;
    }
    return std::nullopt;
}

Result<PictureFile> PictureFile::open(const QString &uri, timespec asked)
{
    const auto path = pathOf(uri);
    if (!path)
        return failure(u"the desktop's portal names no file"_s);
    // A pipe must not be waited for, and a link could lead to what is not the portal's.
    const int descriptor =
        ::open(path->constData(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC);
    if (descriptor < 0)
        return failure(
            u"the desktop's portal names a file that can't be read (%1)"_s.arg(qt_error_string()));
    auto file = std::make_unique<QFile>();
    if (!file->open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        close(descriptor);
        return failure(u"the desktop's portal names a file that can't be read"_s);
    }
    struct statx facts{};
    if (statx(descriptor, "", AT_EMPTY_PATH, STATX_BASIC_STATS | STATX_BTIME, &facts) != 0
        || !S_ISREG(facts.stx_mode) || facts.stx_uid != geteuid())
        return failure(u"the desktop's portal names what is no file of this user"_s);
    if (facts.stx_size > quint64{largestFile})
        return failure(u"the desktop's portal names a file too large for a picture"_s);
    return PictureFile(std::move(file), *path, isNewerThan(facts, asked));
}

PictureFile::PictureFile(std::unique_ptr<QFile> file, QByteArray path, bool isNew)
    : m_file(std::move(file))
    , m_path(std::move(path))
    , m_isNew(isNew)
{
}

Result<QImage> PictureFile::read(const std::function<Result<void>(QSize)> &wanted)
{
    QBuffer buffer;
    // Not to its end, which may have moved since.
    buffer.setData(m_file->read(std::min(m_file->size(), largestFile)));
    if (!isWholePng(buffer.data()))
        return failure(u"the desktop's portal names a file that is no whole picture"_s);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty())
        return failure(u"the desktop's portal names a file that is no whole picture"_s);
    if (const auto isWanted = wanted(size); !isWanted)
        return std::unexpected(isWanted.error());
    QImage picture = reader.read();
    if (picture.isNull())
        return failure(u"the desktop's portal names a picture that can't be decoded"_s);
    return picture;
}

void PictureFile::discard() const
{
    struct stat read{};
    struct stat named{};
    if (!m_isNew || fstat(m_file->handle(), &read) != 0 || lstat(m_path.constData(), &named) != 0
        || !isSameFile(read, named))
        return;
    std::ignore = unlink(m_path.constData()); // it was in the way, and stays so if it must
}

} // namespace lumacap::portal
