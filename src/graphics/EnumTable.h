#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>

namespace lumacap {

// The facts about the cases of an enumeration stand in one constexpr table next to it. A row is a
// struct whose `value` is the case and whose `rawValue` is what the case is stored as and read
// from.

/// Whether row i is about case i, as `rowOf` takes it; for the static_assert under each table.
template <class Row, std::size_t count>
constexpr bool rowsFollowTheEnum(const std::array<Row, count> &table)
{
    for (std::size_t index = 0; index < count; ++index) {
        if (static_cast<std::size_t>(table.at(index).value) != index)
            return false;
    }
    return true;
}

/// The row about `value`, which is one of the enumeration's cases.
template <class Row, std::size_t count>
constexpr const Row &rowOf(const std::array<Row, count> &table, decltype(Row::value) value)
{
    return table.at(static_cast<std::size_t>(value));
}

/// The case of exactly this raw value; nothing for any other.
template <class Row, std::size_t count, class RawValue>
constexpr std::optional<decltype(Row::value)> caseOf(const std::array<Row, count> &table,
                                                     const RawValue &rawValue)
{
    const auto row = std::ranges::find_if(
        table, [&](const Row &candidate) { return candidate.rawValue == rawValue; });
    return row == table.end() ? std::nullopt : std::optional(row->value);
}

} // namespace lumacap
