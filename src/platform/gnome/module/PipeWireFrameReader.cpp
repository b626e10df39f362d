#include "platform/gnome/module/PipeWireFrameReader.h"

#include "platform/gnome/module/FrameStream.h"

#include <QCoroSignal>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::gnome {

namespace {

constexpr auto pictureLimit = 5s;

QCoro::Task<Result<Frame>> firstFrame(std::uint32_t node, Wanted wanted)
{
    FrameStream stream(node, wanted);
    const auto ended = co_await qCoro(&stream, &FrameStream::ended, pictureLimit);
    if (!ended)
        co_return failure(u"PipeWire brings no picture of the screen"_s);
    co_return stream.takeAnswer();
}

} // namespace

PipeWireFrameReader::PipeWireFrameReader()
{
    pw_init(nullptr, nullptr);
    // What goes wrong is told by whoever asked for the picture, in one line.
    if (!qEnvironmentVariableIsSet("PIPEWIRE_DEBUG"))
        pw_log_set_level(SPA_LOG_LEVEL_NONE);
}

PipeWireFrameReader::~PipeWireFrameReader()
{
    pw_deinit();
}

QCoro::Task<Result<QImage>> PipeWireFrameReader::read(std::uint32_t node)
{
    auto frame = co_await firstFrame(node, Wanted::Picture);
    if (!frame)
        co_return std::unexpected(frame.error());
    co_return std::move(frame->picture);
}

QCoro::Task<Result<std::optional<QPoint>>> PipeWireFrameReader::readPointer(std::uint32_t node)
{
    const auto frame = co_await firstFrame(node, Wanted::Pointer);
    if (!frame)
        co_return std::unexpected(frame.error());
    co_return frame->pointer;
}

} // namespace lumacap::gnome
