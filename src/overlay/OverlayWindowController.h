#pragma once

#include "capture/ImageSaver.h"
#include "overlay/CapturedScreen.h"

#include <QCoroTask>
#include <QImage>
#include <QObject>

#include <memory>
#include <optional>
#include <vector>

namespace lumacap {

class AnnotationStore;
class CaptureEngine;
class KeyableWindow;
class OverlaySurface;
class OverlayView;
class Screens;
class WindowList;
struct Screen;

/// What a selection capture asks of the desktop. All outlive the controller.
struct OverlayServices {
    Screens &screens;
    WindowList &windowList;
    OverlaySurface &surface;
    Pasteboard &pasteboard;
    SoundPlayer &soundPlayer;
    const PreferencesStorage &preferences;
};

/// Runs selection captures, one at a time: freezes the screen under the pointer, covers it with the
/// overlay, and on confirmation renders and saves what was selected.
class OverlayWindowController final : public QObject {
    Q_OBJECT

public:
    /// Borrows all, which outlive the controller.
    OverlayWindowController(const OverlayServices &services, CaptureEngine &captureEngine);
    Q_DISABLE_COPY_MOVE(OverlayWindowController)
    ~OverlayWindowController() override;

    /// Begins a capture; nothing while one is under way.
    void showOverlay();

    /// Ends the capture without saving; nothing when none is under way.
    void dismissAll();

    /// Whether a capture is on the screen, or about to be.
    bool isSelecting() const { return m_isFreezing || !m_overlayWindows.empty(); }
    /// Holds what is on the clipboard in as little memory as it can.
    void shrink() { m_imageSaver.shrink(); }

protected:
    /// Sees every key before any widget does while an overlay is up.
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct DeleteLater {
        void operator()(QObject *object) const;
    };

    QCoro::Task<> beginSelection();
    QCoro::Task<> freeze(Screen screen);
    std::optional<Screen> activeScreen() const;
    CapturedScreen capturedScreen(const Screen &screen, QSize pixelSize) const;
    void presentOverlay(const QImage &frozenImage, const Screen &screen);
    void handleConfirm();

    OverlayServices m_services;
    CaptureEngine &m_captureEngine;
    ImageSaver m_imageSaver;
    /// Each with its view as content; not empty while a capture is on the screen. They may be ended
    /// by one of their own events, and go after it.
    std::vector<std::unique_ptr<KeyableWindow, DeleteLater>> m_overlayWindows;
    std::vector<OverlayView *> m_overlayViews;
    std::optional<QImage> m_frozenImage;
    std::unique_ptr<AnnotationStore, DeleteLater> m_store;
    std::optional<CapturedScreen> m_captureScreen;
    bool m_isFreezing = false;
    unsigned int m_dismissals = 0; ///< so that a freeze knows of one meanwhile
};

} // namespace lumacap
