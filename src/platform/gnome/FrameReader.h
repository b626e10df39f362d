#pragma once

#include "platform/Result.h"

#include <QCoroTask>
#include <QImage>

#include <cstdint>
#include <memory>

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
};

} // namespace lumacap::gnome
