#pragma once

#include "platform/WindowList.h"
#include "platform/wlroots/sway/Ipc.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

namespace lumacap {
class ApplicationNames;
}

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::sway {

/// The windows in the compositor's tree. Panels and what else is no window of a workspace are not
/// in it.
class SwayWindowList final : public QObject, public WindowList {
    Q_OBJECT

public:
    /// Borrows both, which outlive the object. Talks to the compositor at `path`, from `prepare` to
    /// `release`.
    SwayWindowList(const wayland::Outputs &outputs, const ApplicationNames &names,
                   QString path = Ipc::path());
    ~SwayWindowList() override;
    Q_DISABLE_COPY_MOVE(SwayWindowList)

    QCoro::Task<> prepare() override;
    void release() override;
    std::vector<WindowRecord> windows() const override { return m_windows; }

private:
    QCoro::Task<> read();
    void keep(const QJsonObject &tree);
    void readSoon();

    const wayland::Outputs &m_outputs;
    const ApplicationNames &m_names;
    QString m_path;
    std::unique_ptr<Ipc> m_ipc; // from `prepare` to `release`
    QTimer m_reading; // until the next reading
    QDeadlineTimer m_pause{0}; // until changes are read at once again
    std::vector<WindowRecord> m_windows;
    unsigned int m_round = 0; // another one since each `prepare` and `release`
    bool m_isReading = false;
    bool m_hasChanged = false; // since the last reading began
};

} // namespace lumacap::sway
