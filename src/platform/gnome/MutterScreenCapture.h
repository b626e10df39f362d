#pragma once

#include "platform/ScreenCapture.h"
#include "platform/gnome/MainMonitor.h"

#include <QDBusConnection>
#include <QObject>

#include <memory>

namespace lumacap::wayland {
class Outputs;
}

namespace lumacap::gnome {

class FrameReader;

/// Pictures of the monitors of GNOME's shell: the first one of a cast, which ends with it.
class MutterScreenCapture final : public QObject, public ScreenCapture {
    Q_OBJECT

public:
    /// Borrows `outputs`, which outlive the object, and keeps the main one of them first.
    MutterScreenCapture(const QDBusConnection &bus, wayland::Outputs &outputs,
                        std::unique_ptr<FrameReader> reader);
    ~MutterScreenCapture() override;
    Q_DISABLE_COPY_MOVE(MutterScreenCapture)

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;

private:
    QDBusConnection m_bus;
    wayland::Outputs &m_outputs;
    MainMonitor m_mainMonitor;
    /// Shared with the pictures under way, which may outlive this object.
    std::shared_ptr<FrameReader> m_reader;
};

} // namespace lumacap::gnome
