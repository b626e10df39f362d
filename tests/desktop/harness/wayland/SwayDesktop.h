#pragma once

#include "harness/wayland/VirtualInput.h"
#include "harness/wayland/WaylandDesktop.h"

#include <memory>

namespace lumacap::harness {

/// One output of a headless sway.
struct SwayOutput {
    QSize mode{1280, 800};
    double scale = 1;
    QPoint place{}; ///< the compositor's units
    QString transform = QStringLiteral("normal"); ///< as sway names it: "90"
};

/// The make of a sway session.
struct SwayOptions {
    std::vector<SwayOutput> outputs{{}};
    /// Lines for its configuration.
    QStringList configuration{};
    /// XKB's names of the keyboard's layouts.
    std::string keyboardLayout = "us";
};

/// A headless sway.
class SwayDesktop final : public WaylandDesktop {
public:
    /// Comes back when it is up with all outputs; throws when it can't be.
    explicit SwayDesktop(const SwayOptions &options = {});
    Q_DISABLE_COPY_MOVE(SwayDesktop)
    ~SwayDesktop() override;

    std::vector<TestOutput> outputs() override;
    Input &input() override { return *m_input; }
    VirtualInput &virtualInput() { return *m_input; }
    QImage look(const QString &output) override;

    /// Runs a command of sway's; throws when it refuses.
    void command(const QString &command);
    /// Whether sway runs a command.
    bool obeys(const QString &command);
    /// What sway answers to a question of its IPC ("get_tree"), as JSON.
    QByteArray answer(const QString &question);
    /// Has sway read its configuration anew.
    void reload() { command(QStringLiteral("reload")); }
    void end() override { m_sway->terminate(); }

private:
    Answer tell(const QStringList &words);
    QString writeConfiguration(const SwayOptions &options) const;

    Process *m_sway = nullptr;
    std::unique_ptr<VirtualInput> m_input;
};

} // namespace lumacap::harness
