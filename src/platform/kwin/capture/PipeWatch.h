#pragma once

#include <QObject>
#include <QSocketNotifier>

namespace lumacap::kwin {

/// Tells that there is something to read, by a signal that can be awaited. The notifier's own is
/// none: nobody else may make its last argument.
class PipeWatch final : public QObject {
    Q_OBJECT

public:
    /// Borrows `descriptor`, which stays open as long as the object lives.
    explicit PipeWatch(int descriptor)
        : m_notifier(descriptor, QSocketNotifier::Read)
    {
        connect(&m_notifier, &QSocketNotifier::activated, this, [this] { Q_EMIT readable(); });
    }

Q_SIGNALS:
    void readable();

private:
    QSocketNotifier m_notifier;
};

} // namespace lumacap::kwin
