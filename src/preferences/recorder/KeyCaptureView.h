#pragma once

#include <QWidget>

#include <cstdint>
#include <functional>

namespace lumacap {

/// Where the Tab key leads that no other modifier goes with.
enum class TabKey { Captured, MovesFocus };

/// Receives the keys that are recorded while it has the focus. Draws nothing. Takes every key and
/// never looks whether anybody records: whoever has closures here hears of each press.
class KeyCaptureView final : public QWidget {
    Q_OBJECT

public:
    using KeyComboHandler = std::function<void(std::uint32_t keyCode, std::uint32_t modifiers)>;

    explicit KeyCaptureView(QWidget *parent = nullptr);

    /// Called with the virtual key code of an accepted press, and its modifiers in the Carbon
    /// encoding.
    KeyComboHandler onKeyCombo;
    /// Called when Escape is pressed, with whatever modifiers.
    std::function<void()> onCancel;

    /// Captured until it is set.
    void setTabKey(TabKey leads) { m_tabKey = leads; }

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void keyReleaseEvent(QKeyEvent *event) override;
    bool focusNextPrevChild(bool next) override;

private:
    TabKey m_tabKey = TabKey::Captured;
};

} // namespace lumacap
