#include "annotation/toolbar/WrappingRow.h"

#include <algorithm>

namespace lumacap {
namespace {

/// What sums of lengths are off by.
constexpr double rounding = 1e-6;

/// Indices of items, from left to right.
using Row = std::vector<std::size_t>;

/// Controls that belong together, and the divider before them.
struct Group {
    std::optional<std::size_t> divider;
    Row controls;
};

class Rows {
public:
    Rows(std::span<const RowItem> items, double spacing)
        : m_items(items)
        , m_spacing(spacing)
    {
        for (std::size_t index = 0; index < items.size(); ++index) {
            const bool isDivider = items[index].kind == RowItemKind::Divider;
            if (isDivider || m_groups.empty())
                m_groups.emplace_back();
            if (isDivider)
                m_groups.back().divider = index;
            else
                m_groups.back().controls.push_back(index);
        }
        std::erase_if(m_groups, [](const Group &group) { return group.controls.empty(); });
    }

    /// The rows, each as full as it gets.
    std::vector<Row> filled(double width) const
    {
        std::vector<Row> rows;
        for (const Group &group : m_groups) {
            Row whole = rows.empty() ? Row() : rows.back();
            if (!rows.empty() && group.divider)
                whole.push_back(*group.divider);
            whole.insert(whole.end(), group.controls.begin(), group.controls.end());
            if (!rows.empty() && widthOf(whole) <= width + rounding)
                rows.back() = whole;
            else
                addRows(rows, group, width);
        }
        return rows;
    }

    /// As many rows as `filled` makes of that width, but none wider than need be.
    std::vector<Row> even(double width) const
    {
        std::vector<Row> rows = filled(width);
        const double least = widestWholeGroup(width);
        while (rows.size() > 1) {
            const double narrower = widest(rows) - 2 * rounding;
            std::vector<Row> candidate = filled(narrower);
            if (narrower < least || candidate.size() != rows.size()
                || widest(candidate) > narrower + rounding)
                break;
            rows = std::move(candidate);
        }
        return rows;
    }

    double widthOf(const Row &row) const
    {
        double width = row.empty() ? 0 : m_spacing * static_cast<double>(row.size() - 1);
        for (const std::size_t index : row)
            width += m_items[index].size.width;
        return width;
    }

    double widestItem() const
    {
        double width = 0;
        for (const RowItem &item : m_items)
            width = std::max(width, item.size.width);
        return width;
    }

    double highest() const
    {
        double height = 0;
        for (const RowItem &item : m_items)
            height = std::max(height, item.size.height);
        return height;
    }

    double widest(const std::vector<Row> &rows) const
    {
        double width = 0;
        for (const Row &row : rows)
            width = std::max(width, widthOf(row));
        return width;
    }

private:
    void addRows(std::vector<Row> &rows, const Group &group, double width) const
    {
        rows.emplace_back();
        for (const std::size_t index : group.controls) {
            Row longer = rows.back();
            longer.push_back(index);
            if (rows.back().empty() || widthOf(longer) <= width + rounding)
                rows.back() = longer;
            else
                rows.push_back({index});
        }
    }

    double widestWholeGroup(double width) const
    {
        double widestYet = 0;
        for (const Group &group : m_groups) {
            const double own = widthOf(group.controls);
            if (own <= width + rounding)
                widestYet = std::max(widestYet, own);
        }
        return widestYet;
    }

    std::span<const RowItem> m_items;
    double m_spacing;
    std::vector<Group> m_groups;
};

} // namespace

RowPlacement placedInRows(std::span<const RowItem> items, double width, double spacing)
{
    const Rows all(items, spacing);
    const std::vector<Row> rows = all.even(std::max(width, all.widestItem()));
    RowPlacement placement{std::vector<std::optional<QRectF>>(items.size()), {}};
    placement.size.width = all.widest(rows);
    const double height = all.highest();
    double top = 0;
    for (const Row &row : rows) {
        double left = (placement.size.width - all.widthOf(row)) / 2;
        for (const std::size_t index : row) {
            const Size size = items[index].size;
            placement.frames[index] =
                QRectF(left, top + (height - size.height) / 2, size.width, size.height);
            left += size.width + spacing;
        }
        placement.size.height = top + height;
        top = placement.size.height + spacing;
    }
    return placement;
}

} // namespace lumacap
