#include "platform/gnome/CastPointerFinder.h"

#include "platform/gnome/FrameReader.h"
#include "platform/gnome/ScreenCast.h"
#include "platform/wayland/Outputs.h"

#include <utility>

namespace lumacap::gnome {

CastPointerFinder::CastPointerFinder(QDBusConnection bus, const wayland::Outputs &outputs,
                                     std::unique_ptr<FrameReader> reader)
    : m_bus(std::move(bus))
    , m_outputs(outputs)
    , m_reader(std::move(reader))
{
}

CastPointerFinder::~CastPointerFinder() = default;

QCoro::Task<std::optional<QPointF>> CastPointerFinder::find()
{
    const QDBusConnection bus = m_bus;
    const auto reader = m_reader;
    const auto outputs = m_outputs.all();
    if (outputs.size() < 2)
        co_return std::nullopt;
    for (const wayland::Output &output : outputs) {
        ScreenCast cast(bus);
        const auto node = co_await cast.start(output.name, CastPointer::Told);
        if (!node) // nor of the others
            co_return std::nullopt;
        const auto place = co_await reader->readPointer(*node);
        if (!place)
            co_return std::nullopt;
        const auto pixel = *place;
        if (!pixel)
            continue;
        const double scale = static_cast<double>(output.frame.width()) / output.pixels.width();
        co_return QPointF(output.frame.topLeft()) + QPointF(*pixel) * scale;
    }
    co_return std::nullopt;
}

} // namespace lumacap::gnome
