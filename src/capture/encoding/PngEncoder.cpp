#include "capture/encoding/PngEncoder.h"

#include "capture/encoding/Pixels.h"
#include "capture/encoding/PngFile.h"
#include "capture/encoding/PngRows.h"
#include "capture/encoding/SideBySide.h"

#include <algorithm>
#include <atomic>
#include <new>
#include <thread>

namespace lumacap {

using namespace Qt::StringLiterals;

namespace {

Failure outOfMemory()
{
    return {u"there is not enough memory for the image file"_s};
}

/// How a strip is made small.
struct Plan {
    RowPrediction prediction;
    Repeats repeats;
};

Plan planFor(double grain)
{
    // Measured on text, panels, photographs and a mixture. Letters and flat colour repeat as they
    // are, and prediction breaks the repeats up (15 % larger); grain repeats by chance only.
    constexpr double hardlyAny = 0.05;
    constexpr double some = 0.2;
    if (grain < hardlyAny)
        return {.prediction = RowPrediction::Unfiltered, .repeats = Repeats::Anywhere};
    return {.prediction = RowPrediction::FromNeighbours,
            .repeats = grain < some ? Repeats::Anywhere : Repeats::Near};
}

/// The rows of one picture, divided. Its operations may be called from several threads at once.
class Strips {
public:
    Strips(const QImage &premultiplied, int rowsAStrip)
        : m_image(premultiplied)
        , m_rows(std::clamp(rowsAStrip, 1, premultiplied.height()))
    {
    }

    int count() const { return (m_image.height() - 1) / m_rows + 1; }
    bool isOpaqueStrip(int strip) const;
    Result<PngStrip> deflated(int strip, PngRows &rows, Deflater &deflater) const;

private:
    int firstRow(int strip) const { return strip * m_rows; }
    int endRow(int strip) const
    {
        return firstRow(strip) + std::min(m_rows, m_image.height() - firstRow(strip));
    }

    const QImage &m_image;
    int m_rows;
};

bool Strips::isOpaqueStrip(int strip) const
{
    for (int row = firstRow(strip); row < endRow(strip); ++row) {
        if (!isOpaqueRow(pixelRow(m_image, row)))
            return false;
    }
    return true;
}

Result<PngStrip> Strips::deflated(int strip, PngRows &rows, Deflater &deflater) const
{
    const Plan plan = planFor(rows.grain(firstRow(strip), endRow(strip)));
    const std::span filtered = rows.filtered(firstRow(strip), endRow(strip), plan.prediction);
    const StripEnd end = strip + 1 == count() ? StripEnd::EndOfStream : StripEnd::AnotherStrip;
    Result<QByteArray> bytes = deflater.deflate(filtered, plan.repeats, end);
    if (!bytes)
        return std::unexpected(bytes.error());
    const std::span written(reinterpret_cast<const uchar *>(bytes->constData()),
                            static_cast<std::size_t>(bytes->size()));
    return PngStrip{.deflated = *bytes,
                    .crc = deflater.crc32(written),
                    .adler = deflater.adler32(filtered),
                    .filteredSize = filtered.size()};
}

Result<PngPixels> storedPixels(const Strips &strips, int workers)
{
    std::atomic<bool> opaque = true;
    const bool done = doSideBySide(strips.count(), workers, [&] {
        return [&](int strip) {
            if (opaque && !strips.isOpaqueStrip(strip))
                opaque = false;
        };
    });
    if (!done)
        return std::unexpected(outOfMemory());
    return opaque ? PngPixels::Rgb : PngPixels::Rgba;
}

Result<QByteArray> encodeDivided(const QImage &premultiplied, const PngWork &work)
{
    const Strips strips(premultiplied, work.rowsAStrip);
    const Result<PngPixels> pixels = storedPixels(strips, work.workers);
    if (!pixels)
        return std::unexpected(pixels.error());
    std::vector<Result<PngStrip>> results(static_cast<std::size_t>(strips.count()));
    const bool done = doSideBySide(strips.count(), work.workers, [&]() -> PartWork {
        // Shared because a copyable function owns them; each thread has its own.
        const auto rows = std::make_shared<PngRows>(premultiplied, *pixels);
        const std::shared_ptr deflater = makeDeflater(work.library);
        return [&, rows, deflater](int strip) {
            results[static_cast<std::size_t>(strip)] = strips.deflated(strip, *rows, *deflater);
        };
    });
    if (!done)
        return std::unexpected(outOfMemory());
    std::vector<PngStrip> finished;
    finished.reserve(results.size());
    for (Result<PngStrip> &result : results) {
        if (!result)
            return std::unexpected(result.error());
        finished.push_back(std::move(*result));
    }
    return joinedPngFile(premultiplied.size(), *pixels, finished);
}

/// Strips of about a megabyte: they stay in a core's cache from packing to checksum, keep every
/// thread busy to the end and cost a few bytes each. The same on every machine, so that the file is
/// too.
int usualRowsAStrip(int width)
{
    constexpr qint64 bytesAStrip = 1 << 20;
    constexpr qint64 bytesAPixel = 3;
    return static_cast<int>(std::max<qint64>(1, bytesAStrip / (bytesAPixel * width)));
}

} // namespace

Result<QByteArray> encodePng(const QImage &image)
{
    return encodePng(
        image,
        {.library = deflateLibraries().front(),
         .workers = static_cast<int>(std::max(1U, std::thread::hardware_concurrency())),
         .rowsAStrip = usualRowsAStrip(std::max(1, image.width()))});
}

Result<QByteArray> encodePng(const QImage &image, const PngWork &work)
{
    if (image.isNull())
        return failure(u"there is no image to encode"_s);
    try {
        const QImage pixels = premultipliedPixels(image);
        if (pixels.isNull())
            return std::unexpected(outOfMemory());
        return encodeDivided(pixels, work);
    } catch (const std::bad_alloc &) {
        return std::unexpected(outOfMemory());
    }
}

} // namespace lumacap
