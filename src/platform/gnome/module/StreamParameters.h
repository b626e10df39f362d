#pragma once

#include "platform/gnome/module/VideoPixels.h"

#include <array>
#include <cstdint>
#include <optional>

#include <pipewire/properties.h>
#include <spa/pod/builder.h>

namespace lumacap::gnome {

/// Where parameters of a stream are written; those live as long as it does.
class ParameterMemory {
public:
    ParameterMemory();
    Q_DISABLE_COPY_MOVE(ParameterMemory)
    ~ParameterMemory() = default;

    spa_pod_builder &builder() { return m_builder; }

private:
    std::array<std::uint8_t, 1024> m_bytes{};
    spa_pod_builder m_builder;
};

/// What the stream is for; the stream takes them.
pw_properties *streamProperties();

/// The formats that this program can read, the cheapest one first, in any size.
const spa_pod *offeredFormats(ParameterMemory &memory);
/// The one that was agreed on; nothing when it is none of those.
std::optional<VideoFormat> agreedFormat(const spa_pod &format);
/// Buffers in memory that a process can read.
const spa_pod *wantedBuffers(ParameterMemory &memory);
/// With each buffer, where the pointer is, if the stream tells it.
const spa_pod *wantedPointer(ParameterMemory &memory);
/// With each buffer, whether it is whole.
const spa_pod *wantedHeader(ParameterMemory &memory);

} // namespace lumacap::gnome
