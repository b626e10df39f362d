#pragma once

#include "platform/ScreenCapture.h"
#include "platform/portal/Portal.h"

#include <QObject>

#include <chrono>
#include <coroutine>
#include <deque>

#include <ctime>

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::portal {

/// Pictures that the desktop's portal takes, of all displays in one file, after asking the person
/// where the desktop wants that. Whether the pointer is in them is the desktop's choice.
class PortalScreenCapture final : public QObject, public ScreenCapture {
    Q_OBJECT

public:
    /// A person who is asked whether a picture may be taken reads and thinks; one who has left must
    /// not keep the capture for ever.
    static constexpr std::chrono::milliseconds usualLimit = std::chrono::minutes(2);

    /// Borrows `outputs`, which outlive the object. `connection` is of its own; `limit` is for a
    /// picture.
    PortalScreenCapture(QDBusConnection connection, QString applicationId,
                        const wayland::Outputs &outputs,
                        std::chrono::milliseconds limit = usualLimit);
    Q_DISABLE_COPY_MOVE(PortalScreenCapture)
    ~PortalScreenCapture() override;

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    /// Fails where the display's own pixels are not in the portal's picture: nothing is resampled.
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;

private:
    struct Turn;

    void endTurn();
    QCoro::Task<Result<QString>> newPicture();
    Result<QImage> displayIn(const QString &uri, timespec asked, DisplayId display) const;

    Portal m_portal;
    const wayland::Outputs &m_outputs;
    std::chrono::milliseconds m_limit;
    bool m_isTaking = false;
    bool m_isEnding = false;
    std::deque<std::coroutine_handle<>> m_waiting; ///< For their turn, the first to come first.
};

} // namespace lumacap::portal
