#pragma once

#include "platform/Pasteboard.h"

#include <QStringList>

#include <memory>
#include <utility>

namespace lumacap {

/// A pasteboard in memory that writes what happens into a journal.
class FakePasteboard final : public Pasteboard {
public:
    explicit FakePasteboard(QStringList &journal)
        : m_journal(journal)
    {
    }

    void clearContents() override
    {
        m_journal.append(QStringLiteral("clear"));
        item.reset();
    }
    void write(std::unique_ptr<PasteboardItem> written) override
    {
        m_journal.append(QStringLiteral("write"));
        item = std::move(written);
    }
    QCoro::Task<> handOver() override { co_return; }

    std::unique_ptr<PasteboardItem> item;

private:
    QStringList &m_journal;
};

} // namespace lumacap
