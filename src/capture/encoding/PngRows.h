#pragma once

#include <QImage>

#include <span>
#include <vector>

namespace lumacap {

/// The pixels a PNG file stores: colour alone for an opaque picture, colour and alpha for a
/// translucent one. The value is the bytes a pixel.
enum class PngPixels { Rgb = 3, Rgba = 4 };

/// How the rows of a strip are predicted: not at all, for flat colour and text whose rows repeat;
/// or from the pixels around, each row by the filter that leaves the least.
enum class RowPrediction { Unfiltered, FromNeighbours };

/// The rows of a strip as PNG stores them, each led by the number of its filter.
class PngRows {
public:
    /// Rows of `premultiplied`, which must outlive this object.
    PngRows(const QImage &premultiplied, PngPixels pixels);

    /// The share (0 to 1) of bytes in the rows [`first`, `end`) that differ a little from the pixel
    /// at their left, as grain and gradients do and letters do not. Looks at some rows only.
    double grain(int first, int end);
    /// The rows [`first`, `end`) filtered; valid until the next call.
    std::span<const uchar> filtered(int first, int end, RowPrediction prediction);

private:
    /// A packed row with one black pixel before it, so that its first pixel has a left neighbour.
    using PaddedRow = std::vector<uchar>;

    void pack(int row, PaddedRow &padded) const;

    const QImage &m_image;
    PngPixels m_pixels;
    std::size_t m_rowBytes;
    PaddedRow m_row;
    PaddedRow m_rowAbove;
    std::vector<uchar> m_filtered;
};

} // namespace lumacap
