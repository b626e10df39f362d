#pragma once

#include "platform/gnome/FrameReader.h"

namespace lumacap::gnome {

/// Reads with a connection of its own for each picture, so that nothing is open between two.
class PipeWireFrameReader final : public FrameReader {
public:
    PipeWireFrameReader();
    ~PipeWireFrameReader() override;
    Q_DISABLE_COPY_MOVE(PipeWireFrameReader)

    QCoro::Task<Result<QImage>> read(std::uint32_t node) override;
    QCoro::Task<Result<std::optional<QPoint>>> readPointer(std::uint32_t node) override;
};

} // namespace lumacap::gnome
