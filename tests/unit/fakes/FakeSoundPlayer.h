#pragma once

#include "platform/SoundPlayer.h"

#include <QStringList>

#include <functional>

namespace lumacap {

/// Writes each sound into a journal.
class FakeSoundPlayer final : public SoundPlayer {
public:
    explicit FakeSoundPlayer(QStringList &journal)
        : m_journal(journal)
    {
    }

    void play() override
    {
        if (beforePlaying)
            beforePlaying();
        m_journal.append(QStringLiteral("sound"));
    }

    std::function<void()> beforePlaying;

private:
    QStringList &m_journal;
};

} // namespace lumacap
