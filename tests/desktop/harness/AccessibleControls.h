#pragma once

#include "harness/TestDesktop.h"

#include <QDBusConnection>
#include <QRect>
#include <QStringList>

#include <optional>
#include <vector>

namespace lumacap::harness {

/// A control as assistive technology sees it.
struct AccessibleControl {
    QString name;
    QString role; ///< "push button", "toggle button", "text"
    QRect place; ///< in the program's own units: root pixels divided by its scale
    bool isShowing;
    bool isEnabled;
    bool isChecked;
    bool isFocused;
    bool isActive; ///< of a window: it has the keyboard
};

/// Finds the controls of the program under test by their names, over the bus of assistive
/// technology.
class AccessibleControls {
public:
    /// Has programs of `desktop` started from now on tell of their controls.
    static void enable(TestDesktop &desktop);

    explicit AccessibleControls(TestDesktop &desktop);
    Q_DISABLE_COPY_MOVE(AccessibleControls)
    ~AccessibleControls();

    /// All that show of the program, in the order of its tree.
    std::vector<AccessibleControl> all() const;
    /// The `index`th that shows under this name; waits for one.
    std::optional<AccessibleControl> find(const QString &name, std::size_t index = 0) const;
    /// The name of the one with the keyboard's focus; its shown text where it has one. Empty where
    /// none has it.
    QString focused() const;
    /// Whether a window of the program has the keyboard.
    bool hasActiveWindow() const;
    /// Whether one shows under this name now.
    bool shows(const QString &name) const;

private:
    struct Node {
        QString bus;
        QString path;
    };

    std::vector<Node> children(const Node &node) const;
    void collect(const Node &node, std::vector<Node> &found) const;
    std::vector<Node> applications() const;
    std::vector<Node> nodes() const;
    QString nameOf(const Node &node) const;
    AccessibleControl controlAt(const Node &node) const;
    std::vector<AccessibleControl> showing(const QString &name) const;

    QString m_connectionName;
    QDBusConnection m_bus;
};

} // namespace lumacap::harness
