#include "preferences/recorder/KeyRecorderView.h"

#include "controls/Accessibility.h"
#include "graphics/PointPainting.h"
#include "graphics/Text.h"
#include "preferences/look/PrefsLook.h"
#include "preferences/look/PrefsPainting.h"
#include "preferences/look/PrefsTheme.h"
#include "preferences/recorder/KeyCaptureView.h"
#include "preferences/recorder/ShortcutSilence.h"

#include <QKeyEvent>
#include <QPainterPath>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace lumacap {

KeyRecorderView::KeyRecorderView(const QString &name, const KeyCombo &keyCombo,
                                 ShortcutSilence &silence, QWidget *parent)
    : PrefsControl(QAccessible::Button, name, parent)
    , m_keyCombo(keyCombo)
    , m_silence(silence)
    , m_capture(new KeyCaptureView(this))
{
    describeAs(*m_capture, QAccessible::StaticText);
    m_capture->installEventFilter(this);
    m_capture->onKeyCombo = [this](std::uint32_t keyCode, std::uint32_t modifiers) {
        record({keyCode, modifiers});
    };
    m_capture->onCancel = [this] { setRecording(false); };
    connect(this, &QAbstractButton::clicked, this, [this] { setRecording(!m_isRecording); });
    setRecording(false);
}

KeyRecorderView::~KeyRecorderView()
{
    m_silence.end(this);
}

void KeyRecorderView::record(const KeyCombo &keyCombo)
{
    m_isKeyHeld = true;
    if (keyCombo != m_keyCombo) {
        m_keyCombo = keyCombo;
        Q_EMIT keyComboChanged(keyCombo);
    }
    setRecording(false);
}

void KeyRecorderView::setRecording(bool isRecording)
{
    m_isRecording = isRecording;
    m_capture->setTabKey(isRecording ? TabKey::Captured : TabKey::MovesFocus);
    showLabel();
    updateSilence();
    if (isRecording)
        requestFocus();
}

/// On the next turn: the click that asks for it is not over yet.
void KeyRecorderView::requestFocus()
{
    QMetaObject::invokeMethod(
        m_capture, [this] { m_capture->setFocus(Qt::OtherFocusReason); }, Qt::QueuedConnection);
}

/// While a key that has just been recorded is held, it repeats, and would fire at once.
void KeyRecorderView::updateSilence()
{
    if ((m_isRecording || m_isKeyHeld) && isActiveWindow())
        m_silence.begin(this);
    else
        m_silence.end(this);
}

bool KeyRecorderView::event(QEvent *event)
{
    const bool isHandled = PrefsControl::event(event);
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate
        || event->type() == QEvent::Hide)
        updateSilence();
    return isHandled;
}

bool KeyRecorderView::eventFilter(QObject *watched, QEvent *event)
{
    const bool isRelease =
        event->type() == QEvent::KeyRelease && !static_cast<QKeyEvent *>(event)->isAutoRepeat();
    if (watched == m_capture && m_isKeyHeld && (isRelease || event->type() == QEvent::FocusOut)) {
        m_isKeyHeld = false;
        updateSilence();
    }
    return PrefsControl::eventFilter(watched, event);
}

void KeyRecorderView::showLabel()
{
    const QString label =
        m_isRecording ? u"Appuyez sur un raccourci..."_s : m_keyCombo.displayString();
    m_label = std::make_unique<Text>(label, prefslook::bodyFont, FontWeight::Regular);
    m_capture->setAccessibleName(label);
    setAccessibleDescription(label);
    updateGeometry();
    update();
}

QSize KeyRecorderView::sizeHint() const
{
    const Size text = m_label->size();
    const int width =
        std::max(prefslook::recorderTextWidth, static_cast<int>(std::ceil(text.width)));
    return {width + 2 * prefslook::recorderSidePadding,
            static_cast<int>(std::ceil(text.height)) + 2 * prefslook::recorderEdgePadding};
}

QPainterPath KeyRecorderView::outline() const
{
    return continuousRoundedRect(rect(), prefslook::buttonRadius);
}

bool KeyRecorderView::showsRing() const
{
    return m_capture->hasFocus() || PrefsControl::showsRing();
}

void KeyRecorderView::resizeEvent(QResizeEvent *event)
{
    m_capture->setGeometry(rect());
    PrefsControl::resizeEvent(event);
}

void KeyRecorderView::paintFace(QPainter &painter, const PrefsTheme &theme) const
{
    paintBorderedGround(painter, rect(), prefslook::buttonRadius, feedback(theme.primary), theme);
    drawTextInMiddle(painter, *m_label, rect(), m_isRecording ? theme.secondary : theme.primary);
}

} // namespace lumacap
