#include "capture/encoding/IsalDeflater.h"

#include <algorithm>
#include <limits>

#include <isa-l.h>

namespace lumacap {

using namespace Qt::StringLiterals;

namespace {

/// Level 2 is as fast as level 1 and a little smaller; level 3 takes five times as long on text.
constexpr int level = 2;
constexpr std::size_t levelMemory = ISAL_DEF_LVL2_SMALL;
/// Looking back 16 bytes only. The four equal bytes that this library takes for a repeat also occur
/// by chance in a photograph's grain, and pointing far back costs more than the four bytes: 15 % of
/// the file, 17 % of the time.
constexpr quint16 nearWindowBits = 4;
constexpr quint16 fullWindowBits = ISAL_DEF_MAX_HIST_BITS;

class IsalDeflater final : public Deflater {
public:
    Result<QByteArray> deflate(std::span<const uchar> strip, Repeats, StripEnd) override;
    quint32 adler32(std::span<const uchar> bytes) const override;
    quint32 crc32(std::span<const uchar> bytes) const override;

private:
    std::unique_ptr<isal_zstream> m_stream = std::make_unique<isal_zstream>();
    std::vector<uchar> m_levelMemory = std::vector<uchar>(levelMemory);
    std::vector<uchar> m_output;
};

Result<QByteArray> IsalDeflater::deflate(std::span<const uchar> strip, Repeats repeats,
                                         StripEnd end)
{
    if (strip.size() > std::numeric_limits<quint32>::max() / 2)
        return failure(u"a row of the image is too long to compress"_s);
    m_output.resize(std::max(m_output.size(), strip.size() + strip.size() / 8 + 4096));
    isal_deflate_init(m_stream.get());
    m_stream->level = level;
    m_stream->level_buf = m_levelMemory.data();
    m_stream->level_buf_size = levelMemory;
    m_stream->hist_bits = repeats == Repeats::Near ? nearWindowBits : fullWindowBits;
    m_stream->flush = end == StripEnd::EndOfStream ? NO_FLUSH : FULL_FLUSH;
    m_stream->end_of_stream = end == StripEnd::EndOfStream ? 1 : 0;
    m_stream->next_in = const_cast<uchar *>(strip.data()); // read only, its type notwithstanding
    m_stream->avail_in = static_cast<quint32>(strip.size());
    m_stream->next_out = m_output.data();
    m_stream->avail_out = static_cast<quint32>(m_output.size());
    const int outcome = isal_deflate(m_stream.get());
    // A stream that used its whole room may have more to say; incompressible strips fit with room
    // to spare.
    if (outcome != COMP_OK || m_stream->avail_in != 0 || m_stream->avail_out == 0)
        return failure(u"the image cannot be compressed"_s);
    return QByteArray(reinterpret_cast<const char *>(m_output.data()), m_stream->total_out);
}

quint32 IsalDeflater::adler32(std::span<const uchar> bytes) const
{
    return isal_adler32(1, bytes.data(), bytes.size());
}

quint32 IsalDeflater::crc32(std::span<const uchar> bytes) const
{
    return crc32_gzip_refl(0, bytes.data(), bytes.size());
}

} // namespace

std::unique_ptr<Deflater> makeIsalDeflater()
{
    return std::make_unique<IsalDeflater>();
}

} // namespace lumacap
