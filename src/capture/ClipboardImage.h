#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>
#include <QImage>

namespace lumacap {

/// A picture on the pasteboard, in the types that programs of this desktop ask for.
class ClipboardImage final : public PasteboardItem {
public:
    explicit ClipboardImage(QImage image);

    /// PNG first.
    QList<QByteArray> types() const override;
    /// Made when asked for, the compressed types once. From the first PNG on the pixels are let go:
    /// its bytes are a fraction of them, and what is pasted next is most often the same.
    QByteArray bytes(const QByteArray &type) override;

private:
    const QByteArray &png();
    const QByteArray &jpeg();
    QImage image() const;

    QImage m_image;
    QByteArray m_png;
    QByteArray m_jpeg;
};

} // namespace lumacap
