#include "platform/pixels/SharedImage.h"

#include <cerrno>
#include <cstring>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace lumacap {

namespace {

struct Mapping {
    void *memory;
    std::size_t size;
};

void unmap(void *opaque)
{
    const std::unique_ptr<Mapping> mapping(static_cast<Mapping *>(opaque));
    munmap(mapping->memory, mapping->size);
}

Failure lastError()
{
    return {QStringLiteral("no memory for the picture: %1")
                .arg(QString::fromLocal8Bit(std::strerror(errno)))};
}

} // namespace

Result<SharedImage> SharedImage::create(QSize size, QImage::Format format, qsizetype bytesPerLine)
{
    const int descriptor = memfd_create("lumacap picture", MFD_CLOEXEC | MFD_ALLOW_SEALING);
    if (descriptor < 0)
        return std::unexpected(lastError());
    SharedImage shared(descriptor, QImage());
    const auto bytes = static_cast<std::size_t>(bytesPerLine * size.height());
    if (ftruncate(descriptor, static_cast<off_t>(bytes)) != 0)
        return std::unexpected(lastError());
    // Whoever cut it short would end every process that reads on.
    if (fcntl(descriptor, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_SEAL) != 0)
        return std::unexpected(lastError());
    void *const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0);
    if (memory == MAP_FAILED)
        return std::unexpected(lastError());
    shared.m_image = QImage(static_cast<uchar *>(memory), size.width(), size.height(), bytesPerLine,
                            format, &unmap, new Mapping{memory, bytes});
    return shared;
}

SharedImage::SharedImage(int descriptor, QImage image)
    : m_descriptor(descriptor)
    , m_image(std::move(image))
{
}

SharedImage::SharedImage(SharedImage &&other) noexcept
    : m_descriptor(std::exchange(other.m_descriptor, -1))
    , m_image(std::move(other.m_image))
{
}

SharedImage::~SharedImage()
{
    if (m_descriptor >= 0)
        close(m_descriptor);
}

int SharedImage::takeDescriptor()
{
    return std::exchange(m_descriptor, -1);
}

QImage SharedImage::takeImage() &&
{
    return std::move(m_image);
}

} // namespace lumacap
