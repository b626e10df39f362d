#include "platform/wayland/clipboard/OfferedItem.h"

#include "platform/wayland/clipboard/PipeWriter.h"

#include <QCoroTimer>
#include <QDeadlineTimer>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

#include <unistd.h>

using namespace std::chrono_literals;

namespace lumacap::wayland {

namespace {

/// How long a clipboard manager may take to begin to read, and all readers to end.
constexpr auto beginLimit = 500ms;
constexpr auto endLimit = 5s;
constexpr auto betweenLooks = 20ms;

} // namespace

OfferedItem::OfferedItem() = default;
OfferedItem::~OfferedItem() = default;

void OfferedItem::set(std::unique_ptr<PasteboardItem> item)
{
    m_item = std::move(item);
    m_sinceSet.start();
}

void OfferedItem::send(const QByteArray &type, int descriptor)
{
    const bool isOffered = m_item && m_item->types().contains(type);
    const QByteArray bytes = isOffered ? m_item->bytes(type) : QByteArray();
    if (bytes.isEmpty()) {
        close(descriptor);
        return;
    }
    auto &writer = *m_writers.emplace_back(std::make_unique<PipeWriter>(descriptor, bytes));
    // Not within its own signal.
    connect(
        &writer, &PipeWriter::ended, this,
        [this, ended = &writer] {
            std::erase_if(m_writers, [ended](const auto &one) { return one.get() == ended; });
        },
        Qt::QueuedConnection);
    writer.start();
}

QCoro::Task<> OfferedItem::handOver()
{
    const QPointer self{this};
    const QDeadlineTimer deadline(endLimit);
    const auto mayBegin = [this] {
        return m_item != nullptr && !m_sinceSet.hasExpired(beginLimit.count());
    };
    while (self && (!m_writers.empty() || mayBegin()) && !deadline.hasExpired())
        co_await QCoro::sleepFor(betweenLooks);
}

} // namespace lumacap::wayland
