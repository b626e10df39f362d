#include "BusyFrame.h"

#include "capture/encoding/JpegEncoder.h"
#include "capture/encoding/PngEncoder.h"
#include "capture/encoding/TiffEncoder.h"

#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <vector>

#include <benchmark/benchmark.h>
#include <png.h>

// What one 4K picture takes to encode, next to libpng and to a copy of its bytes; and what a PNG
// takes on screens of other sizes. `bytes` is the file's size.

namespace {

using namespace lumacap;

enum Content { Busy, Text, Photograph };

const QImage &frame(int64_t content)
{
    static const QSize size(3840, 2160);
    static const std::array frames{bench::busyFrame(size), bench::textFrame(size),
                                   bench::photographFrame(size)};
    return frames.at(static_cast<std::size_t>(content));
}

/// The busy frame on a screen of 16:9 with so many rows.
const QImage &busyFrameOf(int64_t rows)
{
    static std::map<int64_t, QImage> frames;
    QImage &frame = frames[rows];
    if (frame.isNull())
        frame = bench::busyFrame(QSize(static_cast<int>(rows * 16 / 9), static_cast<int>(rows)));
    return frame;
}

void report(benchmark::State &state, qsizetype bytes)
{
    constexpr std::array names{"busy", "text", "photograph"};
    state.counters["bytes"] = static_cast<double>(bytes);
    state.SetLabel(names.at(static_cast<std::size_t>(state.range(0))));
}

void append(png_structp png, png_bytep bytes, png_size_t size)
{
    auto *file = static_cast<QByteArray *>(png_get_io_ptr(png));
    file->append(reinterpret_cast<const char *>(bytes), static_cast<qsizetype>(size));
}

QByteArray encodeWithLibpng(const QImage &image, int level)
{
    QByteArray file;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_set_write_fn(png, &file, &append, [](png_structp) { });
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()),
                 static_cast<png_uint_32>(image.height()), 8, PNG_COLOR_TYPE_RGB,
                 PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, level);
    png_write_info(png, info);
    png_set_bgr(png);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    for (int row = 0; row < image.height(); ++row)
        png_write_row(png, image.constScanLine(row));
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
    return file;
}

void encodeWithLibpng(benchmark::State &state)
{
    const QImage &image = frame(state.range(0));
    qsizetype bytes = 0;
    for (auto _ : state)
        bytes = encodeWithLibpng(image, static_cast<int>(state.range(1))).size();
    report(state, bytes);
}

template <auto encode>
void encodeFile(benchmark::State &state)
{
    const QImage &image = frame(state.range(0));
    qsizetype bytes = 0;
    for (auto _ : state) {
        const Result<QByteArray> file = encode(image);
        if (!file)
            state.SkipWithError(qPrintable(file.error().description));
        else
            bytes = file->size();
    }
    report(state, bytes);
}

Result<QByteArray> encodePngFast(const QImage &image)
{
    return encodePng(image);
}

Result<QByteArray> encodePngWithZlib(const QImage &image)
{
    return encodePng(image, {.library = DeflateLibrary::Zlib, .workers = 2, .rowsAStrip = 91});
}

void encodePngOfRows(benchmark::State &state)
{
    const QImage &image = busyFrameOf(state.range(0));
    for (auto _ : state) {
        Result<QByteArray> file = encodePng(image);
        if (!file)
            state.SkipWithError(qPrintable(file.error().description));
        benchmark::DoNotOptimize(file);
    }
}

void copyMemory(benchmark::State &state)
{
    const QImage &image = frame(Busy);
    std::vector<uchar> copy(static_cast<std::size_t>(image.sizeInBytes()));
    for (auto _ : state) {
        std::memcpy(copy.data(), image.constBits(), copy.size());
        benchmark::DoNotOptimize(copy.data());
        benchmark::ClobberMemory();
    }
}

} // namespace

BENCHMARK(copyMemory)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(encodeWithLibpng)
    ->ArgsProduct({{Busy, Text, Photograph}, {1, 6}})
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(encodeFile<&encodePngFast>)
    ->Name("png")
    ->DenseRange(Busy, Photograph)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(encodeFile<&encodePngWithZlib>)
    ->Name("pngWithZlib")
    ->DenseRange(Busy, Photograph)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(encodePngOfRows)
    ->Name("pngOfRows")
    ->Arg(1080)
    ->Arg(2160)
    ->Arg(4320)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(encodeFile<&encodeJpeg>)
    ->Name("jpeg")
    ->DenseRange(Busy, Photograph)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK(encodeFile<&encodeTiff>)
    ->Name("tiff")
    ->DenseRange(Busy, Photograph)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

BENCHMARK_MAIN();
