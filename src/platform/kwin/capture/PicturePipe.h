#pragma once

#include "platform/Result.h"
#include "platform/kwin/capture/PictureLayout.h"

#include <QCoroTask>
#include <QDBusUnixFileDescriptor>
#include <QDeadlineTimer>
#include <QImage>

namespace lumacap::kwin {

/// Both ends of a pipe that a picture comes through.
struct PicturePipe {
    /// The end to read, which never blocks.
    QDBusUnixFileDescriptor read;
    /// The end to hand over. The picture has an end only once all copies of this are closed.
    QDBusUnixFileDescriptor write;

    static Result<PicturePipe> open();
};

/// The picture that somebody writes into the pipe behind `end`, opaque, `layout` being how. A
/// failure when it ends too soon, or is not whole at `deadline`. The main loop turns meanwhile.
QCoro::Task<Result<QImage>> readPicture(QDBusUnixFileDescriptor end, PictureLayout layout,
                                        QDeadlineTimer deadline);

} // namespace lumacap::kwin
