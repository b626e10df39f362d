#include "platform/portal/WholePng.h"

#include <QtEndian>

#include <zlib.h>

namespace lumacap::portal {

namespace {

constexpr QByteArrayView signature("\x89PNG\r\n\x1A\n", 8);

// Before a chunk's content stand its length and name, after it the sum over name and content.
constexpr qsizetype lengthSize = 4;
constexpr qsizetype nameSize = 4;
constexpr qsizetype sumSize = 4;

quint32 numberAt(QByteArrayView bytes, qsizetype place)
{
    return qFromBigEndian<quint32>(bytes.data() + place);
}

} // namespace

bool isWholePng(QByteArrayView bytes)
{
    if (!bytes.startsWith(signature))
        return false;
    QByteArrayView rest = bytes.sliced(signature.size());
    while (rest.size() >= lengthSize + nameSize + sumSize) {
        const qsizetype length = numberAt(rest, 0);
        if (length > rest.size() - lengthSize - nameSize - sumSize)
            return false;
        const QByteArrayView summed = rest.sliced(lengthSize, nameSize + length);
        const uLong sum = crc32_z(0, reinterpret_cast<const Bytef *>(summed.data()),
                                  static_cast<z_size_t>(summed.size()));
        if (sum != numberAt(rest, lengthSize + nameSize + length))
            return false;
        if (summed.startsWith("IEND"))
            return true;
        rest = rest.sliced(lengthSize + nameSize + length + sumSize);
    }
    return false;
}

} // namespace lumacap::portal
