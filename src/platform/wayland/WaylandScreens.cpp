#include "platform/wayland/WaylandScreens.h"

#include "platform/wayland/Outputs.h"

#include <QPointer>

#include <utility>

namespace lumacap::wayland {

WaylandScreens::WaylandScreens(const Outputs &outputs, std::unique_ptr<PointerFinder> finder)
    : m_outputs(outputs)
    , m_finder(std::move(finder))
{
}

QCoro::Task<> WaylandScreens::prepare()
{
    if (m_finder == nullptr)
        co_return;
    const QPointer self{this};
    const std::optional<QPointF> pointer = co_await m_finder->find();
    if (self)
        m_pointer = pointer;
}

std::optional<Screen> WaylandScreens::mainScreen() const
{
    const std::vector<Screen> all = screens();
    return all.empty() ? std::nullopt : std::optional(all.front());
}

std::vector<Screen> WaylandScreens::screens() const
{
    return screensOf(m_outputs.all());
}

std::optional<Point<Global>> WaylandScreens::pointerPosition() const
{
    if (!m_pointer)
        return std::nullopt;
    return globalPoint(*m_pointer, m_outputs.all());
}

} // namespace lumacap::wayland
