#include "overlay/OverlayWindowController.h"

#include "annotation/AnnotationRenderer.h"
#include "annotation/AnnotationStore.h"
#include "capture/CaptureEngine.h"
#include "overlay/KeyableWindow.h"
#include "overlay/OverlayKeys.h"
#include "overlay/OverlayToolbar.h"
#include "overlay/OverlayView.h"
#include "platform/OverlaySurface.h"
#include "platform/Screens.h"
#include "platform/Spawn.h"
#include "platform/WindowList.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QPointer>

#include <algorithm>
#include <cstdio>
#include <utility>

namespace lumacap {

namespace {

/// What was selected, with its annotations, in its frame if it has one. Nothing when there is
/// nothing to render.
std::optional<QImage> finalImage(const QImage &frozenImage, const AnnotationStore &store,
                                 const CapturedScreen &screen)
{
    auto base = AnnotationRenderer::renderFinalImage(frozenImage, store.selectedViewRect,
                                                     store.annotations(), screen.bounds().size,
                                                     screen.scale);
    if (!base || !store.showFrame())
        return base;
    auto framed = AnnotationRenderer::renderFramedImage(*base, store.sourceAppName,
                                                        store.frameBackground(), screen.scale);
    return framed ? framed : base;
}

} // namespace

void OverlayWindowController::DeleteLater::operator()(QObject *object) const
{
    object->deleteLater();
}

OverlayWindowController::OverlayWindowController(const OverlayServices &services,
                                                 CaptureEngine &captureEngine)
    : m_services(services)
    , m_captureEngine(captureEngine)
    , m_imageSaver(services.pasteboard, services.soundPlayer, services.preferences)
{
}

OverlayWindowController::~OverlayWindowController()
{
    dismissAll();
}

void OverlayWindowController::showOverlay()
{
    if (m_overlayWindows.empty() && !m_isFreezing)
        spawn(beginSelection());
}

std::optional<Screen> OverlayWindowController::activeScreen() const
{
    const std::vector<Screen> screens = m_services.screens.screens();
    if (const auto pointer = m_services.screens.pointerPosition()) {
        const auto under = std::ranges::find_if(
            screens, [&](const Screen &screen) { return screen.frame.contains(*pointer); });
        if (under != screens.end())
            return *under;
    }
    if (const auto main = m_services.screens.mainScreen())
        return main;
    return screens.empty() ? std::nullopt : std::optional(screens.front());
}

QCoro::Task<> OverlayWindowController::beginSelection()
{
    const QPointer self{this};
    m_isFreezing = true;
    const unsigned int dismissals = m_dismissals;
    co_await m_services.screens.prepare();
    if (!self)
        co_return;
    const auto screen = activeScreen();
    if (screen && dismissals == m_dismissals)
        co_await freeze(*screen);
    if (self)
        m_isFreezing = false;
}

QCoro::Task<> OverlayWindowController::freeze(Screen screen)
{
    const QPointer self{this};
    const unsigned int dismissals = m_dismissals;
    co_await m_services.windowList.prepare();
    if (!self)
        co_return;
    const auto frozenImage = co_await m_captureEngine.captureFreezeImage(screen);
    if (!self)
        co_return;
    if (dismissals != m_dismissals) { // nobody waits for it any more
        m_services.windowList.release();
        co_return;
    }
    if (!frozenImage) {
        std::puts("Failed to capture freeze image");
        std::fflush(stdout);
        m_services.windowList.release();
        co_return;
    }
    presentOverlay(*frozenImage, screen);
}

CapturedScreen OverlayWindowController::capturedScreen(const Screen &screen, QSize pixelSize) const
{
    const std::vector<Screen> screens = m_services.screens.screens();
    const double height = screens.empty() ? 0 : screens.front().frame.height();
    return {screen.frame, static_cast<int>(screen.backingScaleFactor), pixelSize, height,
            screen.pointerStep};
}

void OverlayWindowController::presentOverlay(const QImage &frozenImage, const Screen &screen)
{
    const CapturedScreen captured = capturedScreen(screen, frozenImage.size());
    m_frozenImage = frozenImage;
    m_captureScreen = captured;
    m_store.reset(new AnnotationStore(m_services.preferences));
    m_store->confirmCallback = [self = QPointer(this)] {
        if (self)
            self->handleConfirm();
    };
    m_store->cancelCallback = [self = QPointer(this)] {
        if (self)
            self->dismissAll();
    };
    auto *const window = new KeyableWindow;
    m_overlayWindows.emplace_back(window);
    auto *const view = new OverlayView(m_services.windowList, m_services.preferences, captured,
                                       frozenImage, *m_store);
    window->setContentView(view);
    m_overlayViews.push_back(view);
    m_services.surface.cover(*window, screen, [self = QPointer(this)] {
        if (self)
            self->dismissAll();
    });
    new OverlayToolbar(*m_store, *view, frozenImage);
    QCoreApplication::instance()->installEventFilter(this);
}

bool OverlayWindowController::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        if (isConfirmation(*static_cast<const QKeyEvent *>(event))) {
            handleConfirm();
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}

void OverlayWindowController::handleConfirm()
{
    if (!m_frozenImage || !m_store || !m_captureScreen)
        return;
    const auto image = finalImage(*m_frozenImage, *m_store, *m_captureScreen);
    if (image)
        m_imageSaver.copy(*image); // while the overlay has the keyboard: some desktops ask for that
    // The overlay goes before the file: to write a big one takes a while, in which it would look
    // dead.
    dismissAll();
    if (image)
        m_imageSaver.store(*image);
}

void OverlayWindowController::dismissAll()
{
    ++m_dismissals;
    QCoreApplication::instance()->removeEventFilter(this);
    for (OverlayView *const view : m_overlayViews)
        view->invalidateAnimationTimer();
    for (const auto &window : m_overlayWindows) {
        m_services.surface.uncover(*window);
        window->hide();
    }
    if (!m_overlayWindows.empty())
        m_services.windowList.release();
    m_overlayViews.clear();
    m_overlayWindows.clear();
    m_store.reset();
    m_frozenImage.reset();
    m_captureScreen.reset();
}

} // namespace lumacap
