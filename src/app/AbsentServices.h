#pragma once

#include "platform/HotkeyService.h"
#include "platform/OverlaySurface.h"
#include "platform/Pasteboard.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"
#include "platform/WindowList.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <set>

namespace lumacap {

/// On a desktop that gives out no pictures of itself.
class AbsentScreenCapture final : public ScreenCapture {
public:
    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<> settle() override;
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;
};

/// On a desktop that does not tell its screens.
class AbsentScreens final : public Screens {
public:
    QCoro::Task<> prepare() override;
    std::optional<Screen> mainScreen() const override;
    std::vector<Screen> screens() const override;
    std::optional<Point<Global>> pointerPosition() const override;
};

/// On a desktop that gives nobody a whole screen: it is over as soon as it has begun, as if the
/// screen had gone.
class AbsentOverlaySurface final : public OverlaySurface {
public:
    void cover(QWidget &widget, const Screen &screen,
               std::function<void()> onScreenChanged) override;
    void uncover(QWidget &widget) override;

private:
    QPointer<QWidget> m_widget;
    std::function<void()> m_onScreenChanged;
    QObject m_context;
};

/// On a desktop that tells nobody its windows.
class AbsentWindowList final : public WindowList {
public:
    QCoro::Task<> prepare() override;
    void release() override;
    std::vector<WindowRecord> windows() const override;
};

/// On a desktop that leaves all shortcuts to its settings.
class AbsentHotkeyService final : public HotkeyService {
public:
    void setPressedHandler(PressedHandler handler) override;
    HotKeyRef registerHotKey(const HotKey &hotKey, Answer answer) override;
    void unregisterHotKey(HotKeyRef ref) override;
    void suspend() override;
    void resume() override;

private:
    std::set<HotKeyRef> m_unanswered;
    HotKeyRef m_lastRef{};
    QObject m_context;
};

/// On a desktop without a clipboard.
class AbsentPasteboard final : public Pasteboard {
public:
    void clearContents() override;
    void write(std::unique_ptr<PasteboardItem> item) override;
    QCoro::Task<> handOver() override;
};

} // namespace lumacap
