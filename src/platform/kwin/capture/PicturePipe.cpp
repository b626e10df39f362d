#include "platform/kwin/capture/PicturePipe.h"

#include "platform/kwin/capture/PipeWatch.h"

#include <QCoroSignal>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <memory>
#include <tuple>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace lumacap::kwin {

namespace {

/// As much as the system lets anybody have; a picture of 4K goes through in thirty pieces.
constexpr int wantedCapacity = 1024 * 1024;

struct Free {
    void operator()(uchar *bytes) const { std::free(bytes); }
};
using Bytes = std::unique_ptr<uchar, Free>;

QDBusUnixFileDescriptor takeOver(int descriptor)
{
    QDBusUnixFileDescriptor owner;
    owner.giveFileDescriptor(descriptor);
    return owner;
}

/// Takes over `bytes`, which are not copied.
QImage image(Bytes bytes, const PictureLayout &layout)
{
    uchar *const data = bytes.release();
    return {data,
            layout.size.width(),
            layout.size.height(),
            layout.bytesPerLine,
            layout.pixels.format,
            std::free,
            data};
}

/// With the toolkit's own length of rows.
QImage compact(const QImage &picture)
{
    constexpr qsizetype pixelBytes = 4;
    return picture.bytesPerLine() == picture.width() * pixelBytes ? picture : picture.copy();
}

} // namespace

Result<PicturePipe> PicturePipe::open()
{
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0)
        return failure(u"there is no pipe for the picture"_s);
    PicturePipe pipe{takeOver(ends[0]), takeOver(ends[1])};
    // Of this end alone: the writer may not expect it.
    fcntl(ends[0], F_SETFL, O_NONBLOCK);
    std::ignore = fcntl(ends[0], F_SETPIPE_SZ, wantedCapacity); // else in smaller pieces
    return pipe;
}

QCoro::Task<Result<QImage>> readPicture(QDBusUnixFileDescriptor end, PictureLayout layout,
                                        QDeadlineTimer deadline)
{
    const auto all = static_cast<std::size_t>(layout.bytes());
    Bytes bytes(static_cast<uchar *>(std::malloc(all)));
    if (bytes == nullptr)
        co_return failure(u"there is no memory for the picture"_s);
    PipeWatch watch(end.fileDescriptor());
    std::size_t received = 0;
    while (received < all) {
        const auto left = std::chrono::milliseconds(deadline.remainingTime());
        const auto came = co_await qCoro(&watch, &PipeWatch::readable, left);
        if (!came)
            co_return failure(u"KWin stopped in the middle of the picture"_s);
        const ssize_t count = read(end.fileDescriptor(), bytes.get() + received, all - received);
        if (count < 0 && (errno == EAGAIN || errno == EINTR))
            continue;
        if (count <= 0)
            co_return failure(u"KWin sent only a part of the picture"_s);
        received += static_cast<std::size_t>(count);
    }
    co_return compact(opaqueImage(image(std::move(bytes), layout), layout.pixels));
}

} // namespace lumacap::kwin
