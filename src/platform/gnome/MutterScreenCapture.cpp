#include "platform/gnome/MutterScreenCapture.h"

#include "platform/gnome/FrameReader.h"
#include "platform/gnome/ScreenCast.h"
#include "platform/wayland/Outputs.h"

#include <QCoroTimer>
#include <QPointer>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::gnome {

namespace {

// The shell's own menus fade out for 0.15 s, after the entry was told, and paint one frame more.
constexpr auto menuHasFaded = 400ms;

} // namespace

MutterScreenCapture::MutterScreenCapture(const QDBusConnection &bus, wayland::Outputs &outputs,
                                         std::unique_ptr<FrameReader> reader)
    : m_bus(bus)
    , m_outputs(outputs)
    , m_mainMonitor(bus, outputs)
    , m_reader(std::move(reader))
{
}

MutterScreenCapture::~MutterScreenCapture() = default;

QCoro::Task<Result<std::vector<DisplayInfo>>> MutterScreenCapture::displays()
{
    const QPointer self{this};
    co_await m_mainMonitor.known();
    if (!self)
        co_return failure(u"the session has ended"_s);
    co_return wayland::displaysOf(m_outputs.all());
}

QCoro::Task<> MutterScreenCapture::settle()
{
    co_await QCoro::sleepFor(menuHasFaded);
}

QCoro::Task<Result<QImage>> MutterScreenCapture::grab(DisplayId display, QSize /*pixelSize*/)
{
    const auto outputs = m_outputs.all();
    const auto output = std::ranges::find(outputs, display, &wayland::Output::id);
    if (output == outputs.end())
        co_return failure(u"the display has been unplugged"_s);
    const auto reader = m_reader;
    ScreenCast cast(m_bus);
    const auto node = co_await cast.start(output->name, CastPointer::Painted);
    if (!node)
        co_return std::unexpected(node.error());
    co_return co_await reader->read(*node);
}

} // namespace lumacap::gnome
