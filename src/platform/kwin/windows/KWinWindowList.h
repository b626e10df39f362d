#pragma once

#include "platform/WindowList.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>
#include <vector>

namespace lumacap {
class ApplicationNames;
}
namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::kwin {

class Script;

/// The windows that KWin manages, told by a script that runs in it while they are followed.
class KWinWindowList final : public QObject, public WindowList {
    Q_OBJECT

public:
    /// Borrows `outputs` and `names`, which outlive the object; KWin is on `bus`. Takes out of it
    /// what a process that was killed while it followed left there.
    KWinWindowList(const wayland::Outputs &outputs, const ApplicationNames &names,
                   QDBusConnection bus);
    Q_DISABLE_COPY_MOVE(KWinWindowList)
    ~KWinWindowList() override;

    QCoro::Task<> prepare() override;
    void release() override;
    std::vector<WindowRecord> windows() const override { return m_windows; }

private:
    void keep(const QString &told);

    const wayland::Outputs &m_outputs;
    const ApplicationNames &m_names;
    QDBusConnection m_bus;
    std::unique_ptr<Script> m_script; // from `prepare` to `release`
    QString m_told; // last
    std::vector<WindowRecord> m_windows;
};

} // namespace lumacap::kwin
