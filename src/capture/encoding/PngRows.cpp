#include "capture/encoding/PngRows.h"

#include "capture/encoding/Pixels.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace lumacap {

namespace {

/// The numbers PNG gives the filters. Paeth is left out: next to the others it won nothing on
/// screens and on photographs, and took longer than the three together.
enum class Filter : uchar { None = 0, Sub = 1, Up = 2, Average = 3 };

/// A row with its neighbours: `left` is the row one pixel on, `above` the row before.
struct Neighbourhood {
    const uchar *row;
    const uchar *left;
    const uchar *above;
    std::size_t size;
};

// The loops below are written for the compiler to turn into vector instructions.

void subtractLeft(const Neighbourhood &from, uchar *__restrict to)
{
    for (std::size_t at = 0; at < from.size; ++at)
        to[at] = static_cast<uchar>(from.row[at] - from.left[at]);
}

void subtractAbove(const Neighbourhood &from, uchar *__restrict to)
{
    for (std::size_t at = 0; at < from.size; ++at)
        to[at] = static_cast<uchar>(from.row[at] - from.above[at]);
}

void subtractAverage(const Neighbourhood &from, uchar *__restrict to)
{
    for (std::size_t at = 0; at < from.size; ++at)
        to[at] = static_cast<uchar>(from.row[at] - ((from.left[at] + from.above[at]) >> 1));
}

void subtract(Filter filter, const Neighbourhood &from, uchar *to)
{
    switch (filter) {
    case Filter::None:
        std::memcpy(to, from.row, from.size);
        return;
    case Filter::Sub:
        subtractLeft(from, to);
        return;
    case Filter::Up:
        subtractAbove(from, to);
        return;
    case Filter::Average:
        subtractAverage(from, to);
        return;
    }
}

/// The sum of the bytes' magnitudes, each taken as a signed number.
quint32 magnitude(std::span<const uchar> bytes)
{
    quint32 sum = 0;
    for (const uchar byte : bytes) {
        const auto negated = static_cast<uchar>(-byte);
        sum += std::min(byte, negated);
    }
    return sum;
}

/// The filter that leaves the smallest sum, judged by a part of each stretch of the row: the whole
/// row gives the same answer at four times the cost.
Filter smallestRest(const Neighbourhood &row)
{
    constexpr std::size_t stretch = 1024;
    constexpr std::size_t looked = 256;
    constexpr std::array candidates{Filter::Sub, Filter::Up, Filter::Average};
    std::array<quint32, candidates.size()> sums{};
    for (std::size_t at = 0; at < row.size; at += stretch) {
        const Neighbourhood part{.row = row.row + at,
                                 .left = row.left + at,
                                 .above = row.above + at,
                                 .size = std::min(looked, row.size - at)};
        std::array<uchar, looked> rest;
        for (std::size_t index = 0; index < candidates.size(); ++index) {
            subtract(candidates[index], part, rest.data());
            sums[index] += magnitude({rest.data(), part.size});
        }
    }
    return candidates[static_cast<std::size_t>(std::ranges::min_element(sums) - sums.begin())];
}

std::size_t countSmallSteps(const Neighbourhood &row)
{
    constexpr int largestSmallStep = 8;
    quint32 count = 0;
    for (std::size_t at = 0; at < row.size; ++at) {
        const auto step = static_cast<uchar>(row.row[at] - row.left[at] + largestSmallStep);
        count += static_cast<quint32>(step <= 2 * largestSmallStep)
            & static_cast<quint32>(step != largestSmallStep);
    }
    return count;
}

} // namespace

PngRows::PngRows(const QImage &premultiplied, PngPixels pixels)
    : m_image(premultiplied)
    , m_pixels(pixels)
    , m_rowBytes(static_cast<std::size_t>(premultiplied.width()) * static_cast<std::size_t>(pixels))
    , m_row(m_rowBytes + static_cast<std::size_t>(pixels))
    , m_rowAbove(m_row.size())
{
}

void PngRows::pack(int row, PaddedRow &padded) const
{
    const std::span<uchar> packed =
        std::span(padded).subspan(static_cast<std::size_t>(m_pixels), m_rowBytes);
    if (row < 0)
        std::ranges::fill(packed, uchar{0});
    else if (m_pixels == PngPixels::Rgb)
        packRgb(pixelRow(m_image, row), packed);
    else
        packRgba(m_image, row, packed);
}

double PngRows::grain(int first, int end)
{
    constexpr int rowsApart = 8;
    std::size_t small = 0;
    std::size_t looked = 0;
    for (int row = first; row < end; row += rowsApart, looked += m_rowBytes) {
        pack(row, m_row);
        small += countSmallSteps({.row = m_row.data() + static_cast<std::size_t>(m_pixels),
                                  .left = m_row.data(),
                                  .above = nullptr,
                                  .size = m_rowBytes});
    }
    return static_cast<double>(small) / static_cast<double>(looked);
}

std::span<const uchar> PngRows::filtered(int first, int end, RowPrediction prediction)
{
    const auto lead = static_cast<std::size_t>(m_pixels);
    m_filtered.resize(static_cast<std::size_t>(end - first) * (1 + m_rowBytes));
    pack(first - 1, m_rowAbove);
    uchar *to = m_filtered.data();
    for (int row = first; row < end; ++row, to += 1 + m_rowBytes) {
        pack(row, m_row);
        const Neighbourhood neighbours{.row = m_row.data() + lead,
                                       .left = m_row.data(),
                                       .above = m_rowAbove.data() + lead,
                                       .size = m_rowBytes};
        const Filter filter =
            prediction == RowPrediction::Unfiltered ? Filter::None : smallestRest(neighbours);
        to[0] = static_cast<uchar>(filter);
        subtract(filter, neighbours, to + 1);
        std::swap(m_row, m_rowAbove);
    }
    return m_filtered;
}

} // namespace lumacap
