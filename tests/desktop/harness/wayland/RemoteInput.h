#pragma once

#include "harness/Input.h"

#include <QDBusConnection>

namespace lumacap::harness {

/// Input to GNOME's shell, as that of a person who works from another computer.
class RemoteInput final : public Input {
public:
    /// Begins a session of remote work, which ends with the object; throws when the shell refuses.
    explicit RemoteInput(const QDBusConnection &bus);
    Q_DISABLE_COPY_MOVE(RemoteInput)
    ~RemoteInput() override;

    void moveTo(QPoint place) override;
    void button(Button button, Way way) override;
    void key(std::uint32_t code, Way way) override;

private:
    void tell(const char *method, const QVariantList &arguments) const;
    void moveBy(QPoint distance) const;

    QDBusConnection m_bus;
    QString m_session;
    QPoint m_place; ///< of the pointer
};

} // namespace lumacap::harness
