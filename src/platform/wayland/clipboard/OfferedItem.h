#pragma once

#include "platform/Pasteboard.h"

#include <QByteArray>
#include <QCoroTask>
#include <QElapsedTimer>
#include <QObject>

#include <memory>
#include <vector>

namespace lumacap::wayland {

class PipeWriter;

/// What of ours the clipboard offers, and those who read it. Which protocol took the clipboard is
/// no concern of theirs.
class OfferedItem final : public QObject {
    Q_OBJECT

public:
    OfferedItem();
    Q_DISABLE_COPY_MOVE(OfferedItem)
    ~OfferedItem() override;

    /// Offers `item` in place of what was offered before. Those who read that have it to the end.
    void set(std::unique_ptr<PasteboardItem> item);
    /// Offers nothing any more.
    void reset() { m_item.reset(); }

    /// Gives a reader the item as `type`, through the writing end of its pipe, which this takes
    /// over; nothing where the item has no such type.
    void send(const QByteArray &type, int descriptor);
    /// No protocol asks a manager to keep what we offer. One that keeps everything reads it as soon
    /// as it is offered: ends when nobody reads any more, and a moment was left to begin.
    QCoro::Task<> handOver();

private:
    std::unique_ptr<PasteboardItem> m_item;
    QElapsedTimer m_sinceSet;
    /// To those who read at the moment, also what was replaced meanwhile.
    std::vector<std::unique_ptr<PipeWriter>> m_writers;
};

} // namespace lumacap::wayland
