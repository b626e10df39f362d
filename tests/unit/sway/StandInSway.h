#pragma once

#include "platform/wlroots/sway/Messages.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTemporaryDir>

#include <functional>
#include <list>
#include <memory>
#include <vector>

namespace lumacap::sway {

/// Listens as sway does and says what a test wants said, rightly or wrongly. Served by the main
/// loop.
class StandInSway final : public QObject {
public:
    /// What is asked, to be answered by `say…`, then or later.
    using OnAsked = std::function<void(const Message &question)>;

    explicit StandInSway(OnAsked onAsked);
    ~StandInSway() override;

    QString path() const { return m_folder.filePath(QStringLiteral("sway.sock")); }
    /// All questions that came.
    const std::vector<Message> &asked() const { return m_asked; }

    void say(std::uint32_t type, const QByteArray &payload) { sayBytes(message(type, payload)); }
    void sayBytes(const QByteArray &bytes);
    /// Hangs up on whoever is connected.
    void hangUp();
    /// Looks at new connections, or leaves them waiting.
    void setAccepting(bool isAccepting) { m_listening->setEnabled(isAccepting); }

    static QByteArray message(std::uint32_t type, const QByteArray &payload);

private:
    void accept();
    void read();

    QTemporaryDir m_folder;
    OnAsked m_onAsked;
    int m_listener = -1;
    int m_client = -1;
    std::unique_ptr<QSocketNotifier> m_listening;
    std::unique_ptr<QSocketNotifier> m_readable;
    QByteArray m_read;
    std::vector<Message> m_asked;
};

} // namespace lumacap::sway
