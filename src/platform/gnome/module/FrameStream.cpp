#include "platform/gnome/module/FrameStream.h"

#include "platform/gnome/module/StreamParameters.h"

#include <QMetaObject>

#include <spa/buffer/meta.h>

using namespace Qt::StringLiterals;

namespace lumacap::gnome {

namespace {

FrameStream &self(void *data)
{
    return *static_cast<FrameStream *>(data);
}

bool isDamaged(const spa_buffer &buffer, const spa_chunk &chunk)
{
    if ((static_cast<std::uint32_t>(chunk.flags) & SPA_CHUNK_FLAG_CORRUPTED) != 0)
        return true;
    const auto *const header = static_cast<const spa_meta_header *>(
        spa_buffer_find_meta_data(&buffer, SPA_META_Header, sizeof(spa_meta_header)));
    return header != nullptr && (header->flags & SPA_META_HEADER_FLAG_CORRUPTED) != 0;
}

std::optional<QPoint> pointerIn(const spa_buffer &buffer)
{
    const auto *const pointer = static_cast<const spa_meta_cursor *>(
        spa_buffer_find_meta_data(&buffer, SPA_META_Cursor, sizeof(spa_meta_cursor)));
    if (pointer == nullptr || !spa_meta_cursor_is_valid(pointer))
        return std::nullopt;
    return QPoint(pointer->position.x, pointer->position.y);
}

} // namespace

const pw_core_events &FrameStream::coreEvents()
{
    static const pw_core_events events = [] {
        pw_core_events made{};
        made.version = PW_VERSION_CORE_EVENTS;
        made.error = [](void *data, std::uint32_t id, int /*sequence*/, int /*result*/,
                        const char *message) {
            if (id == PW_ID_CORE) // the connection itself
                self(data).end(failure(u"PipeWire has gone: "_s + QString::fromUtf8(message)));
        };
        return made;
    }();
    return events;
}

const pw_stream_events &FrameStream::streamEvents()
{
    static const pw_stream_events events = [] {
        pw_stream_events made{};
        made.version = PW_VERSION_STREAM_EVENTS;
        made.state_changed = [](void *data, pw_stream_state /*old*/, pw_stream_state state,
                                const char *error) {
            if (state == PW_STREAM_STATE_ERROR)
                self(data).end(
                    failure(u"PipeWire refused the picture: "_s + QString::fromUtf8(error)));
        };
        made.param_changed = [](void *data, std::uint32_t id, const spa_pod *param) {
            if (id == SPA_PARAM_Format)
                self(data).takeFormat(param);
        };
        made.process = [](void *data) { self(data).takeBuffers(); };
        return made;
    }();
    return events;
}

FrameStream::FrameStream(std::uint32_t node, Wanted wanted)
    : m_loop(pw_loop_new(nullptr))
    , m_wanted(wanted)
{
    if (const auto connected = connectTo(node); !connected)
        end(std::unexpected(connected.error()));
}

FrameStream::~FrameStream()
{
    // Before what they tell this object of goes.
    if (m_stream)
        spa_hook_remove(&m_streamHook);
    if (m_core)
        spa_hook_remove(&m_coreHook);
}

Result<void> FrameStream::connectTo(std::uint32_t node)
{
    if (!m_loop)
        return failure(u"PipeWire makes no loop"_s);
    const auto &readable = m_readable.emplace(pw_loop_get_fd(m_loop.get()), QSocketNotifier::Read);
    connect(&readable, &QSocketNotifier::activated, this, &FrameStream::iterate);
    m_context.reset(pw_context_new(m_loop.get(), nullptr, 0));
    if (!m_context)
        return failure(u"PipeWire is not whole on this computer"_s);
    m_core.reset(pw_context_connect(m_context.get(), nullptr, 0));
    if (!m_core)
        return failure(u"PipeWire does not run"_s);
    pw_core_add_listener(m_core.get(), &m_coreHook, &coreEvents(), this);
    m_stream.reset(pw_stream_new(m_core.get(), "lumacap", streamProperties()));
    if (!m_stream)
        return failure(u"PipeWire makes no stream"_s);
    pw_stream_add_listener(m_stream.get(), &m_streamHook, &streamEvents(), this);
    ParameterMemory memory;
    const spa_pod *offers[] = {offeredFormats(memory)};
    const auto flags =
        static_cast<pw_stream_flags>(PW_STREAM_FLAG_AUTOCONNECT | PW_STREAM_FLAG_MAP_BUFFERS);
    if (pw_stream_connect(m_stream.get(), PW_DIRECTION_INPUT, node, flags, offers, 1) < 0)
        return failure(u"PipeWire does not know the shell's picture"_s);
    return {};
}

void FrameStream::iterate()
{
    pw_loop_enter(m_loop.get());
    pw_loop_iterate(m_loop.get(), 0);
    pw_loop_leave(m_loop.get());
}

void FrameStream::takeFormat(const spa_pod *param)
{
    if (param == nullptr) // it is taken back, before another one or the end
        return m_format.reset();
    m_format = agreedFormat(*param);
    if (!m_format)
        return end(failure(u"the shell's picture is of an unknown format"_s));
    ParameterMemory memory;
    const spa_pod *wishes[] = {wantedBuffers(memory), wantedHeader(memory), wantedPointer(memory)};
    pw_stream_update_params(m_stream.get(), wishes, std::size(wishes));
}

void FrameStream::takeBuffers()
{
    while (pw_buffer *const taken = pw_stream_dequeue_buffer(m_stream.get())) {
        if (!m_hasEnded) {
            if (auto frame = frameIn(*taken->buffer))
                end(std::move(*frame));
        }
        pw_stream_queue_buffer(m_stream.get(), taken);
    }
}

std::optional<Frame> FrameStream::frameIn(const spa_buffer &buffer) const
{
    if (m_wanted == Wanted::Pointer)
        return Frame{{}, pointerIn(buffer)};
    auto picture = pictureIn(buffer);
    return picture ? std::optional(Frame{std::move(*picture), {}}) : std::nullopt;
}

std::optional<QImage> FrameStream::pictureIn(const spa_buffer &buffer) const
{
    if (!m_format || buffer.n_datas == 0)
        return std::nullopt;
    const spa_data &data = buffer.datas[0];
    if (data.data == nullptr || data.chunk == nullptr || isDamaged(buffer, *data.chunk))
        return std::nullopt;
    const spa_chunk chunk = *data.chunk; // which the other side can write to, too
    if (chunk.offset > data.maxsize || chunk.size > data.maxsize - chunk.offset)
        return std::nullopt;
    const auto *const bytes = static_cast<const std::byte *>(data.data) + chunk.offset;
    return pictureOf({bytes, chunk.size}, chunk.stride, *m_format);
}

void FrameStream::end(Result<Frame> answer)
{
    if (std::exchange(m_hasEnded, true))
        return;
    m_answer = std::move(answer);
    // PipeWire calls from within itself, and whoever waits lets go of it.
    QMetaObject::invokeMethod(this, &FrameStream::ended, Qt::QueuedConnection);
}

} // namespace lumacap::gnome
