#include "platform/wayland/Output.h"

#include <algorithm>
#include <cmath>

namespace lumacap::wayland {

DisplayId Output::id() const
{
    return displayIdOf(name);
}

double Output::scale() const
{
    return frame.width() > 0 ? static_cast<double>(pixels.width()) / frame.width() : 1;
}

double Output::backingFactor() const
{
    return std::max(1.0, std::floor(scale() + 0.5));
}

DisplayId displayIdOf(QStringView outputName)
{
    // FNV-1a, so that two processes agree: http://www.isthe.com/chongo/tech/comp/fnv/
    std::uint32_t hash = 2166136261U;
    for (const char byte : outputName.toUtf8()) {
        hash ^= static_cast<std::uint8_t>(byte);
        hash *= 16777619U;
    }
    return DisplayId{hash};
}

std::vector<DisplayInfo> displaysOf(const std::vector<Output> &outputs)
{
    std::vector<DisplayInfo> displays;
    displays.reserve(outputs.size());
    for (const Output &output : outputs) {
        const double factor = output.backingFactor();
        displays.push_back(
            {output.id(), output.pixels.width() / factor, output.pixels.height() / factor});
    }
    return displays;
}

std::vector<Screen> screensOf(const std::vector<Output> &outputs)
{
    std::vector<Screen> screens;
    screens.reserve(outputs.size());
    for (const Output &output : outputs) {
        const double height = outputs.front().frame.height();
        screens.push_back({output.id(), toGlobal(topLeftFrame(output.frame, outputs), height),
                           output.backingFactor(), std::max(1.0, output.scale())});
    }
    return screens;
}

Point<Global> globalPoint(QPointF place, const std::vector<Output> &outputs)
{
    const QRect main = outputs.empty() ? QRect() : outputs.front().frame;
    // A frame has its upper and left edges, and with y up its lower one instead of the upper: no
    // place may lie on an edge.
    const QPointF middle(std::floor(place.x()) + 0.5, std::floor(place.y()) + 0.5);
    return {middle.x() - main.x(), main.y() + main.height() - middle.y()};
}

Rect<TopLeftGlobal> topLeftFrame(const QRectF &frame, const std::vector<Output> &outputs)
{
    const QPoint origin = outputs.empty() ? QPoint() : outputs.front().frame.topLeft();
    return {{frame.x() - origin.x(), frame.y() - origin.y()}, {frame.width(), frame.height()}};
}

std::optional<Output> outputOf(const Screen &screen, const std::vector<Output> &outputs)
{
    const std::vector<Screen> screens = screensOf(outputs);
    const auto found = std::ranges::find(screens, screen);
    if (found == screens.end())
        return std::nullopt;
    return outputs.at(static_cast<std::size_t>(found - screens.begin()));
}

} // namespace lumacap::wayland
