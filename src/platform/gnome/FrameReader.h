#pragma once

#include "platform/Result.h"

#include <QCoroTask>
#include <QImage>
#include <QPoint>

#include <cstdint>
#include <optional>

namespace lumacap::gnome {

/// Reads pictures out of PipeWire.
class FrameReader {
public:
    FrameReader() = default;
    Q_DISABLE_COPY_MOVE(FrameReader)
    virtual ~FrameReader() = default;

    /// The first whole picture that the stream of `node` brings: `Format_ARGB32_Premultiplied`,
    /// opaque, first row at the top, in memory of its own. Fails where PipeWire is gone, refuses,
    /// or brings none within five seconds. Keeps nothing open afterwards.
    virtual QCoro::Task<Result<QImage>> read(std::uint32_t node) = 0;
    /// Where the pointer is in the first picture of `node`, a stream that tells it beside its
    /// pictures: pixels from the upper left. Nothing where it is not within. Fails as above.
    virtual QCoro::Task<Result<std::optional<QPoint>>> readPointer(std::uint32_t node) = 0;
};

} // namespace lumacap::gnome
