#pragma once

#include <QByteArray>
#include <QCoroTask>
#include <QList>

#include <memory>

namespace lumacap {

/// One thing offered on the pasteboard in several types. The bytes of a type are made when a reader
/// asks for them.
class PasteboardItem {
public:
    PasteboardItem() = default;
    Q_DISABLE_COPY_MOVE(PasteboardItem)
    virtual ~PasteboardItem() = default;

    /// Media types, the best one first; that one is what outlives the program.
    virtual QList<QByteArray> types() const = 0;
    /// The item as `type`, one of `types()`; empty when it can't be made.
    virtual QByteArray bytes(const QByteArray &type) = 0;
};

/// The desktop's clipboard.
class Pasteboard {
public:
    Pasteboard() = default;
    Q_DISABLE_COPY_MOVE(Pasteboard)
    virtual ~Pasteboard() = default;

    /// Empties the pasteboard, whoever filled it, where the desktop lets it be filled now.
    virtual void clearContents() = 0;
    /// Offers `item` until something else is copied. No window of ours needs the focus, unless the
    /// desktop asks for it: then, without it, the clipboard stays as it was, and a line on standard
    /// error says so.
    virtual void write(std::unique_ptr<PasteboardItem> item) = 0;
    /// Hands what we still offer to the desktop's clipboard manager, so that it outlives the
    /// program. Ends when that is done, at once where there is no manager, after a few seconds
    /// where it hangs.
    virtual QCoro::Task<> handOver() = 0;
};

} // namespace lumacap
