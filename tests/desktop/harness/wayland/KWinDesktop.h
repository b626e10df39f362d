#pragma once

#include "harness/wayland/WaylandDesktop.h"

#include <QDBusConnection>

#include <memory>

namespace lumacap::harness {

/// Whether KWin asks whose program wants a picture.
enum class Permissions { Unchecked, Checked };

/// The make of a KWin session.
struct KWinOptions {
    /// Of every output, the compositor's units.
    QSize size{1280, 800};
    double scale = 1;
    int outputs = 1;
    Permissions permissions = Permissions::Unchecked;
    /// Set for KWin itself and for every program.
    Environment environment{};
};

/// A KWin on virtual outputs.
class KWinDesktop final : public WaylandDesktop {
public:
    /// Comes back when it is up; throws when it can't be.
    explicit KWinDesktop(const KWinOptions &options = {});
    Q_DISABLE_COPY_MOVE(KWinDesktop)
    ~KWinDesktop() override;

    std::vector<TestOutput> outputs() override;
    /// Only where permissions are not checked.
    Input &input() override;
    /// Only where permissions are not checked.
    QImage look(const QString &output) override;

    /// Runs kscreen-doctor's `arguments`; throws when it fails.
    void configure(const QStringList &arguments);
    /// The bus as the test sees it.
    QDBusConnection &connection() { return m_connection; }
    void end() override { m_kwin->terminate(); }

private:
    void writeSettings() const;
    void arrange(const KWinOptions &options);

    Process *m_kwin = nullptr;
    QString m_connectionName;
    QDBusConnection m_connection;
    std::unique_ptr<Input> m_input;
};

} // namespace lumacap::harness
