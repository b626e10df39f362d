#include "capture/WindowDetector.h"

#include "platform/WindowList.h"

#include <algorithm>
#include <utility>

namespace lumacap {

namespace {

constexpr int highestLayer = 3;
/// What is this wide or high, or less, is no window that a person sees.
constexpr double invisibleSide = 1;

/// The number as `Whole`; nothing where it is absent or does not fit.
template <class Whole>
std::optional<Whole> converted(std::optional<std::int64_t> number)
{
    if (!number || !std::in_range<Whole>(*number))
        return std::nullopt;
    return static_cast<Whole>(*number);
}

/// The window that a record tells of; nothing where a fact is missing or it is none to be picked.
std::optional<DetectedWindow> detected(const WindowRecord &record,
                                       std::optional<std::int32_t> excludingPID)
{
    if (!record.layer || *record.layer < 0 || *record.layer > highestLayer)
        return std::nullopt;
    const auto windowID = converted<std::uint32_t>(record.windowNumber);
    const auto ownerPID = converted<std::int32_t>(record.ownerPID);
    if (!windowID || !ownerPID || !record.bounds || !isFinite(*record.bounds))
        return std::nullopt;
    const Size size = record.bounds->size;
    if (size.width <= invisibleSide || size.height <= invisibleSide || ownerPID == excludingPID)
        return std::nullopt;
    return DetectedWindow{.windowID = *windowID,
                          .frame = *record.bounds,
                          .ownerName = record.ownerName.value_or(QString()),
                          .ownerPID = *ownerPID,
                          .windowName = record.windowName,
                          .layer = *record.layer};
}

} // namespace

WindowDetector::WindowDetector(const WindowList &windowList)
    : m_windowList(windowList)
{
}

std::vector<DetectedWindow>
WindowDetector::getVisibleWindows(std::optional<std::int32_t> excludingPID) const
{
    std::vector<DetectedWindow> windows;
    for (const WindowRecord &record : m_windowList.windows()) {
        if (auto window = detected(record, excludingPID))
            windows.push_back(*std::move(window));
    }
    return windows;
}

std::optional<DetectedWindow>
WindowDetector::windowAtPoint(Point<TopLeftGlobal> point,
                              std::optional<std::int32_t> excludingPID) const
{
    const std::vector<DetectedWindow> windows = getVisibleWindows(excludingPID);
    const auto found = std::ranges::find_if(
        windows, [point](const DetectedWindow &window) { return window.frame.contains(point); });
    return found == windows.end() ? std::nullopt : std::optional(*found);
}

} // namespace lumacap
