#pragma once

#include "platform/Result.h"

#include <QImage>
#include <QSize>

namespace lumacap {

/// Memory for one picture, which another process may map and write, but not cut short.
class SharedImage {
public:
    /// A picture of this size and format with rows of `bytesPerLine` bytes.
    static Result<SharedImage> create(QSize size, QImage::Format format, qsizetype bytesPerLine);

    SharedImage(SharedImage &&other) noexcept;
    SharedImage &operator=(SharedImage &&other) noexcept = delete;
    Q_DISABLE_COPY(SharedImage)
    ~SharedImage();

    /// The descriptor of the memory, handed over: the caller's to close.
    int takeDescriptor();

    /// The picture, which now owns the memory.
    QImage takeImage() &&;

private:
    SharedImage(int descriptor, QImage image);

    int m_descriptor = -1;
    QImage m_image;
};

} // namespace lumacap
