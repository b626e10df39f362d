#pragma once

#include <QCoroTask>
#include <QDBusConnection>
#include <QObject>
#include <QString>

#include <optional>

class QDBusMessage;

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::gnome {

/// The connector of the primary monitor in an answer of org.gnome.Mutter.DisplayConfig's
/// GetCurrentState; nothing when it names none, or is another thing.
std::optional<QString> primaryConnector(const QDBusMessage &state);

/// Tells the outputs which of them the person has made the primary one, now and after each change.
class MainMonitor final : public QObject {
    Q_OBJECT

public:
    /// Borrows `outputs`, which outlive the object.
    MainMonitor(QDBusConnection bus, wayland::Outputs &outputs);

    /// Ends when the outputs know, after three seconds at the latest.
    QCoro::Task<> known();

Q_SIGNALS:
    void answered();

private Q_SLOTS:
    void ask();

private:
    QCoro::Task<> follow();

    QDBusConnection m_bus;
    wayland::Outputs &m_outputs;
    int m_questions = 0; ///< that are under way
};

} // namespace lumacap::gnome
