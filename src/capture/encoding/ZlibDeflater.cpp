#include "capture/encoding/ZlibDeflater.h"

#include <limits>

#include <zlib.h>

namespace lumacap {

using namespace Qt::StringLiterals;

namespace {

constexpr int rawDeflate = -MAX_WBITS;
/// Level 1 with the most memory zlib takes: an image is waited for.
constexpr int level = 1;

/// A z_stream that ends its own memory.
class Stream {
public:
    explicit Stream(int strategy)
        : m_ready(deflateInit2(&m_stream, level, Z_DEFLATED, rawDeflate, MAX_MEM_LEVEL, strategy)
                  == Z_OK)
    {
    }
    Stream(const Stream &) = delete;
    Stream &operator=(const Stream &) = delete;
    ~Stream()
    {
        if (m_ready)
            deflateEnd(&m_stream);
    }

    bool isReady() const { return m_ready; }
    z_stream *operator->() { return &m_stream; }
    z_stream *raw() { return &m_stream; }

private:
    z_stream m_stream{};
    bool m_ready;
};

class ZlibDeflater final : public Deflater {
public:
    Result<QByteArray> deflate(std::span<const uchar> strip, Repeats, StripEnd) override;
    quint32 adler32(std::span<const uchar> bytes) const override;
    quint32 crc32(std::span<const uchar> bytes) const override;
};

Result<QByteArray> ZlibDeflater::deflate(std::span<const uchar> strip, Repeats repeats,
                                         StripEnd end)
{
    if (strip.size() > std::numeric_limits<uInt>::max() / 2)
        return failure(u"a row of the image is too long to compress"_s);
    Stream stream(repeats == Repeats::Near ? Z_RLE : Z_DEFAULT_STRATEGY);
    if (!stream.isReady())
        return failure(u"there is not enough memory to compress the image"_s);
    constexpr uLong roomForTheFlush = 64;
    QByteArray output(
        static_cast<qsizetype>(deflateBound(stream.raw(), strip.size()) + roomForTheFlush),
        Qt::Uninitialized);
    stream->next_in = const_cast<uchar *>(strip.data()); // read only, its type notwithstanding
    stream->avail_in = static_cast<uInt>(strip.size());
    stream->next_out = reinterpret_cast<uchar *>(output.data());
    stream->avail_out = static_cast<uInt>(output.size());
    const bool isLast = end == StripEnd::EndOfStream;
    const int outcome = ::deflate(stream.raw(), isLast ? Z_FINISH : Z_FULL_FLUSH);
    if (outcome != (isLast ? Z_STREAM_END : Z_OK) || stream->avail_out == 0)
        return failure(u"the image cannot be compressed"_s);
    output.truncate(static_cast<qsizetype>(stream->total_out));
    return output;
}

quint32 ZlibDeflater::adler32(std::span<const uchar> bytes) const
{
    return static_cast<quint32>(::adler32_z(1, bytes.data(), bytes.size()));
}

quint32 ZlibDeflater::crc32(std::span<const uchar> bytes) const
{
    return static_cast<quint32>(::crc32_z(0, bytes.data(), bytes.size()));
}

} // namespace

std::unique_ptr<Deflater> makeZlibDeflater()
{
    return std::make_unique<ZlibDeflater>();
}

} // namespace lumacap
