#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QObject>

namespace lumacap {

/// A picture on the pasteboard, in the types that programs of this desktop ask for.
class ClipboardImage final : public QObject, public PasteboardItem {
    Q_OBJECT

public:
    explicit ClipboardImage(QImage image);
    Q_DISABLE_COPY_MOVE(ClipboardImage)
    ~ClipboardImage() override;

    /// PNG first.
    QList<QByteArray> types() const override;
    /// Made when asked for, once, unless it is shrunk meanwhile. From the first PNG on the pixels
    /// are let go: its bytes are a fraction of them, and what is pasted next is most often the
    /// same.
    QByteArray bytes(const QByteArray &type) override;
    /// Keeps the PNG alone, made now if nobody has asked for it yet; the rest can be made of it.
    void shrink();

private:
    QByteArray made(const QByteArray &type);
    QByteArray png();
    QImage image() const;

    QImage m_image;
    QByteArray m_png;
    /// The other types that were asked for.
    QHash<QByteArray, QByteArray> m_made;
};

} // namespace lumacap
