#include "platform/gnome/module/StreamParameters.h"

#include <pipewire/pipewire.h>
#include <spa/buffer/meta.h>
#include <spa/param/buffers.h>
#include <spa/param/video/format-utils.h>

namespace lumacap::gnome {

namespace {

std::optional<ByteOrder> byteOrderOf(spa_video_format format)
{
    switch (format) { // NOLINT(clang-diagnostic-switch-enum): a hundred others
    case SPA_VIDEO_FORMAT_BGRx:
    case SPA_VIDEO_FORMAT_BGRA:
        return ByteOrder::BlueGreenRed;
    case SPA_VIDEO_FORMAT_RGBx:
    case SPA_VIDEO_FORMAT_RGBA:
        return ByteOrder::RedGreenBlue;
    default:
        return std::nullopt;
    }
}

} // namespace

ParameterMemory::ParameterMemory()
    : m_builder(SPA_POD_BUILDER_INIT(m_bytes.data(), static_cast<std::uint32_t>(m_bytes.size())))
{
}

pw_properties *streamProperties()
{
    return pw_properties_new(PW_KEY_MEDIA_TYPE, "Video", PW_KEY_MEDIA_CATEGORY, "Capture",
                             PW_KEY_MEDIA_ROLE, "Screen", nullptr);
}

const spa_pod *offeredFormats(ParameterMemory &memory)
{
    const spa_rectangle usualSize{1920, 1080};
    const spa_rectangle leastSize{1, 1};
    const spa_rectangle mostSize{65535, 65535};
    const spa_fraction whenItChanges{0, 1};
    const spa_fraction mostOften{1000, 1};
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &memory.builder(), SPA_TYPE_OBJECT_Format, SPA_PARAM_EnumFormat, SPA_FORMAT_mediaType,
        SPA_POD_Id(SPA_MEDIA_TYPE_video), SPA_FORMAT_mediaSubtype,
        SPA_POD_Id(SPA_MEDIA_SUBTYPE_raw), SPA_FORMAT_VIDEO_format,
        SPA_POD_CHOICE_ENUM_Id(5, SPA_VIDEO_FORMAT_BGRx, SPA_VIDEO_FORMAT_BGRx,
                               SPA_VIDEO_FORMAT_BGRA, SPA_VIDEO_FORMAT_RGBx, SPA_VIDEO_FORMAT_RGBA),
        SPA_FORMAT_VIDEO_size, SPA_POD_CHOICE_RANGE_Rectangle(&usualSize, &leastSize, &mostSize),
        SPA_FORMAT_VIDEO_framerate,
        SPA_POD_CHOICE_RANGE_Fraction(&whenItChanges, &whenItChanges, &mostOften)));
}

std::optional<VideoFormat> agreedFormat(const spa_pod &format)
{
    spa_video_info_raw info{};
    std::uint32_t type = 0;
    std::uint32_t subtype = 0;
    if (spa_format_parse(&format, &type, &subtype) < 0 || type != SPA_MEDIA_TYPE_video
        || subtype != SPA_MEDIA_SUBTYPE_raw || spa_format_video_raw_parse(&format, &info) < 0)
        return std::nullopt;
    const auto order = byteOrderOf(info.format);
    const QSize size(static_cast<int>(info.size.width), static_cast<int>(info.size.height));
    return order && !size.isEmpty() ? std::optional(VideoFormat{size, *order}) : std::nullopt;
}

const spa_pod *wantedBuffers(ParameterMemory &memory)
{
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &memory.builder(), SPA_TYPE_OBJECT_ParamBuffers, SPA_PARAM_Buffers,
        SPA_PARAM_BUFFERS_dataType,
        SPA_POD_CHOICE_FLAGS_Int((1 << SPA_DATA_MemPtr) | (1 << SPA_DATA_MemFd))));
}

const spa_pod *wantedHeader(ParameterMemory &memory)
{
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &memory.builder(), SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type,
        SPA_POD_Id(SPA_META_Header), SPA_PARAM_META_size, SPA_POD_Int(sizeof(spa_meta_header))));
}

const spa_pod *wantedPointer(ParameterMemory &memory)
{
    // Its image comes with it, of whatever size the other side has room for.
    constexpr int least = sizeof(spa_meta_cursor);
    constexpr int most = 1 << 24;
    return static_cast<const spa_pod *>(spa_pod_builder_add_object(
        &memory.builder(), SPA_TYPE_OBJECT_ParamMeta, SPA_PARAM_Meta, SPA_PARAM_META_type,
        SPA_POD_Id(SPA_META_Cursor), SPA_PARAM_META_size,
        SPA_POD_CHOICE_RANGE_Int(least, least, most)));
}

} // namespace lumacap::gnome
