#include "annotation/frame/DominantColor.h"

#include <QImage>

#include <algorithm>
#include <array>
#include <cstdint>

namespace lumacap {
namespace {

constexpr int cells = 20; // along each side of the thumbnail
constexpr int borderWeight = 3;
constexpr int innerWeight = 1;
constexpr Rgb unknown{0.5, 0.5, 0.5};

/// Red, green and blue added up.
using Sums = std::array<std::uint64_t, 3>;

/// The pixels along one side that a cell of the thumbnail covers, and how much of each, counted in
/// twentieths of a pixel: in these all the borders between cells are whole numbers.
struct CellSpan {
    int first;
    int last;
    int firstWeight;
    int lastWeight;

    int weightOf(int pixel) const
    {
        if (pixel == first)
            return firstWeight;
        return pixel == last ? lastWeight : cells;
    }
};

CellSpan spanOf(int cell, int length)
{
    const std::int64_t begin = std::int64_t{cell} * length;
    const std::int64_t end = begin + length;
    const std::int64_t first = begin / cells;
    const std::int64_t last = (end - 1) / cells;
    return {.first = static_cast<int>(first),
            .last = static_cast<int>(last),
            .firstWeight = static_cast<int>(std::min((first + 1) * cells, end) - begin),
            .lastWeight = static_cast<int>(end - std::max(last * cells, begin))};
}

void add(Sums &sums, QRgb pixel, std::uint64_t weight)
{
    sums[0] += weight * static_cast<unsigned>(qRed(pixel));
    sums[1] += weight * static_cast<unsigned>(qGreen(pixel));
    sums[2] += weight * static_cast<unsigned>(qBlue(pixel));
}

/// Adds whole pixels. The inner loop is written for the compiler to turn into vector instructions:
/// red and blue share a word, in halves of 16 bits that hold the sum of no more than 257 bytes.
void addWhole(Sums &sums, const QRgb *pixels, int count)
{
    constexpr int chunk = 256;
    for (int start = 0; start < count; start += chunk) {
        const int end = std::min(start + chunk, count);
        std::uint32_t redAndBlue = 0;
        std::uint32_t green = 0;
        for (int at = start; at < end; ++at) {
            redAndBlue += pixels[at] & 0x00ff00ffU;
            green += (pixels[at] >> 8) & 0x000000ffU;
        }
        sums[0] += std::uint64_t{cells} * (redAndBlue >> 16);
        sums[1] += std::uint64_t{cells} * green;
        sums[2] += std::uint64_t{cells} * (redAndBlue & 0xffffU);
    }
}

void addRow(Sums &sums, const QRgb *row, const CellSpan &columns, int rowWeight)
{
    Sums rowSums{};
    add(rowSums, row[columns.first], static_cast<std::uint64_t>(columns.firstWeight));
    if (columns.last > columns.first) {
        addWhole(rowSums, row + columns.first + 1, columns.last - columns.first - 1);
        add(rowSums, row[columns.last], static_cast<std::uint64_t>(columns.lastWeight));
    }
    for (std::size_t channel = 0; channel < sums.size(); ++channel)
        sums[channel] += rowSums[channel] * static_cast<std::uint64_t>(rowWeight);
}

/// What the cells of one row of the thumbnail cover.
std::array<Sums, cells> sumsOfCells(const QImage &pixels,
                                    const std::array<CellSpan, cells> &columns, int cellRow)
{
    std::array<Sums, cells> sums{};
    const CellSpan rows = spanOf(cellRow, pixels.height());
    for (int y = rows.first; y <= rows.last; ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        for (std::size_t cell = 0; cell < cells; ++cell)
            addRow(sums[cell], row, columns[cell], rows.weightOf(y));
    }
    return sums;
}

bool isOnBorder(int cell)
{
    return cell == 0 || cell == cells - 1;
}

} // namespace

Rgb extractDominantColor(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    if (pixels.isNull())
        return unknown;
    std::array<CellSpan, cells> columns{};
    for (int cell = 0; cell < cells; ++cell)
        columns[static_cast<std::size_t>(cell)] = spanOf(cell, pixels.width());
    const std::uint64_t area = static_cast<std::uint64_t>(pixels.width())
        * static_cast<std::uint64_t>(pixels.height()); // in square twentieths, of every cell
    Sums weighted{};
    std::uint64_t weights = 0;
    for (int y = 0; y < cells; ++y) {
        const std::array<Sums, cells> row = sumsOfCells(pixels, columns, y);
        for (int x = 0; x < cells; ++x) {
            const std::uint64_t weight =
                isOnBorder(x) || isOnBorder(y) ? borderWeight : innerWeight;
            const Sums &cell = row[static_cast<std::size_t>(x)];
            for (std::size_t channel = 0; channel < cell.size(); ++channel)
                weighted[channel] += weight * ((cell[channel] + area / 2) / area); // a byte
            weights += weight;
        }
    }
    const double white = 255.0 * static_cast<double>(weights);
    return {static_cast<double>(weighted[0]) / white, static_cast<double>(weighted[1]) / white,
            static_cast<double>(weighted[2]) / white};
}

} // namespace lumacap
