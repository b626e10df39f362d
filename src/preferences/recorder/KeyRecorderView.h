#pragma once

#include "preferences/look/PrefsControl.h"
#include "preferences/storage/KeyCombo.h"

#include <QPointer>

#include <memory>
#include <optional>

namespace lumacap {

class KeyCaptureView;
class ShortcutSilence;
class Text;

/// A bordered button that shows a shortcut. A click starts recording: the next key that is pressed
/// with a modifier becomes the shortcut. Escape or another click ends it without a change.
class KeyRecorderView final : public PrefsControl {
    Q_OBJECT

public:
    /// `name` is what the shortcut is for. Borrows `silence`, which outlives the view.
    KeyRecorderView(const QString &name, const KeyCombo &keyCombo, ShortcutSilence &silence,
                    QWidget *parent);
    Q_DISABLE_COPY_MOVE(KeyRecorderView)
    ~KeyRecorderView() override;

    const KeyCombo &keyCombo() const { return m_keyCombo; }
    bool isRecording() const { return m_isRecording; }

    QPainterPath outline() const override;
    bool showsRing() const override;
    QSize sizeHint() const override;

Q_SIGNALS:
    /// Another shortcut than before was recorded.
    void keyComboChanged(const lumacap::KeyCombo &keyCombo);

protected:
    void paintFace(QPainter &painter, const PrefsTheme &theme) const override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setRecording(bool isRecording);
    void record(const KeyCombo &keyCombo);
    void showLabel();
    void requestFocus();
    void updateSilence();

    KeyCombo m_keyCombo;
    ShortcutSilence &m_silence;
    KeyCaptureView *m_capture;
    std::unique_ptr<Text> m_label;
    bool m_isRecording = false;
    bool m_isKeyHeld = false; ///< the one that was recorded last
};

} // namespace lumacap
