#include "platform/x11/windows/PropertyValues.h"

#include "platform/x11/windows/WindowAtoms.h"

#include <algorithm>

#include <xcb/xcb.h>

namespace lumacap::x11 {

namespace {

/// No edge of a window is wider than a window can be.
constexpr std::uint32_t widestEdge = 0x7fff;
constexpr char escape = 0x1b;

/// The text up to the zero that some programs write at its end.
QByteArray withoutEnd(const QByteArray &bytes)
{
    const auto zero = bytes.indexOf('\0');
    return zero < 0 ? bytes : bytes.first(zero);
}

} // namespace

std::vector<std::uint32_t> numbersIn(const xcb_get_property_reply_t *reply)
{
    if (reply == nullptr || reply->format != 32)
        return {};
    const auto *const first = static_cast<const std::uint32_t *>(xcb_get_property_value(reply));
    return {first, first + reply->value_len};
}

std::optional<std::uint32_t> numberIn(const xcb_get_property_reply_t *reply)
{
    const std::vector<std::uint32_t> numbers = numbersIn(reply);
    return numbers.empty() ? std::nullopt : std::optional(numbers.front());
}

std::optional<QMargins> marginsIn(const xcb_get_property_reply_t *reply)
{
    const std::vector<std::uint32_t> edges = numbersIn(reply);
    const bool areEdges = edges.size() == 4
        && std::ranges::all_of(edges, [](std::uint32_t edge) { return edge <= widestEdge; });
    if (!areEdges)
        return std::nullopt;
    const auto edge = [&edges](std::size_t index) { return static_cast<int>(edges.at(index)); };
    return QMargins(edge(0), edge(2), edge(1), edge(3));
}

QByteArray bytesIn(const xcb_get_property_reply_t *reply)
{
    if (reply == nullptr || reply->format != 8)
        return {};
    return {static_cast<const char *>(xcb_get_property_value(reply)),
            xcb_get_property_value_length(reply)};
}

std::optional<QString> textIn(const xcb_get_property_reply_t *reply, const WindowAtoms &atoms)
{
    const QByteArray bytes = withoutEnd(bytesIn(reply));
    if (bytes.isEmpty())
        return std::nullopt;
    if (reply->type == atoms.utf8)
        return QString::fromUtf8(bytes);
    // Compound text begins in Latin-1; what leaves it says so.
    if (bytes.contains(escape))
        return std::nullopt;
    return QString::fromLatin1(bytes);
}

} // namespace lumacap::x11
