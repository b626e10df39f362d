#pragma once

#include <QByteArray>
#include <QMargins>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

struct xcb_get_property_reply_t;

namespace lumacap::x11 {

struct WindowAtoms;

// What properties hold. Any of them may be absent (`reply` is null or empty), of another type than
// agreed, or cut off: other programs wrote them.

/// The numbers of a property of 32-bit numbers; none where it is anything else.
std::vector<std::uint32_t> numbersIn(const xcb_get_property_reply_t *reply);
/// Its first number.
std::optional<std::uint32_t> numberIn(const xcb_get_property_reply_t *reply);
/// The widths of four edges, written as left, right, top, bottom; nothing where they are no widths.
std::optional<QMargins> marginsIn(const xcb_get_property_reply_t *reply);
/// The bytes of a property of bytes; none where it is anything else.
QByteArray bytesIn(const xcb_get_property_reply_t *reply);
/// A text in UTF-8 or Latin-1, as the property's type says; nothing where it is empty or written
/// in another character set.
std::optional<QString> textIn(const xcb_get_property_reply_t *reply, const WindowAtoms &atoms);

} // namespace lumacap::x11
