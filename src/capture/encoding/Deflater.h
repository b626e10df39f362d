#pragma once

#include "platform/Result.h"

#include <QByteArray>

#include <memory>
#include <span>
#include <vector>

namespace lumacap {

/// Where in the rows equal bytes are found: next to each other only, as in a photograph, or
/// anywhere.
enum class Repeats { Near, Anywhere };

/// What follows a strip: another one, which starts on a whole byte and looks back at nothing, or
/// nothing.
enum class StripEnd { AnotherStrip, EndOfStream };

/// Compresses strips of one stream independently of each other: what several deflaters made of the
/// strips, laid end to end, is one raw deflate stream (RFC 1951). One thread at a time may use an
/// object.
class Deflater {
public:
    Deflater() = default;
    Deflater(const Deflater &) = delete;
    Deflater &operator=(const Deflater &) = delete;
    virtual ~Deflater() = default;

    /// The strip compressed, whole bytes. Fails where the library reports a state it should not.
    virtual Result<QByteArray> deflate(std::span<const uchar> strip, Repeats, StripEnd) = 0;
    /// The Adler-32 checksum of `bytes`.
    virtual quint32 adler32(std::span<const uchar> bytes) const = 0;
    /// The CRC-32 checksum of `bytes`, as PNG chunks carry it.
    virtual quint32 crc32(std::span<const uchar> bytes) const = 0;
};

/// The libraries that can deflate. ISA-L is several times faster and exists for some processors
/// only.
enum class DeflateLibrary { IsaL, Zlib };

/// What this build has, the fastest first; never empty.
std::vector<DeflateLibrary> deflateLibraries();

/// A deflater of `library`, which must be one of deflateLibraries().
std::unique_ptr<Deflater> makeDeflater(DeflateLibrary library);

} // namespace lumacap
