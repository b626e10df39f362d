#include "overlay/OverlayView.h"

#include "annotation/shapes/MagnifierAnnotation.h"
#include "overlay/AnnotationTextField.h"
#include "overlay/MarchingAnts.h"
#include "overlay/OverlayKeys.h"
#include "overlay/OverlayPainting.h"

#include <QCoreApplication>
#include <QEnterEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <ranges>

using namespace std::chrono_literals;

namespace lumacap {
namespace {

constexpr auto antsInterval = 1000ms / 30;

/// The place in the window, which the view fills: the toolkit cuts places in a widget to whole
/// points, and with them pixels where a point has several. But just after the pointer has left a
/// control, its place in the window is one that the toolkit made up for the control.
QPointF placeOf(const QSinglePointEvent &event)
{
    constexpr double mostCut = 2;
    const QPointF exact = event.scenePosition();
    const QPointF cut = event.position();
    return (exact - cut).manhattanLength() < mostCut ? exact : cut;
}

} // namespace

OverlayView::OverlayView(const WindowList &windows, const PreferencesStorage &preferences,
                         const CapturedScreen &screen, const QImage &frozenImage,
                         AnnotationStore &store)
    : m_windowDetector(windows)
    , m_myPID(static_cast<std::int32_t>(QCoreApplication::applicationPid()))
    , m_preferences(preferences)
    , m_screen(screen)
    , m_canvas{screen.bounds().size, screen.scale}
    , m_frozenImage(frozenImage)
    , m_dimmedImage(dimmed(frozenImage))
    , m_store(store)
    , m_picture(m_dimmedImage.copy())
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus); // a press must not end what is typed in a child
    setMouseTracking(true);
    setCursor(invisibleCursor());
    m_store.needsRedraw = [self = QPointer(this)] {
        if (self)
            self->annotationsChanged();
    };
    connect(&m_store, &AnnotationStore::currentToolWillChange, this, &OverlayView::useTool,
            Qt::QueuedConnection);
    connect(&m_animationTimer, &QTimer::timeout, this, &OverlayView::advanceAnts);
}

OverlayView::~OverlayView() = default;

const QCursor &OverlayView::invisibleCursor()
{
    static const QCursor cursor = [] {
        QPixmap empty(16, 16);
        empty.fill(Qt::transparent);
        return QCursor(empty, 8, 8);
    }();
    return cursor;
}

void OverlayView::invalidateAnimationTimer()
{
    m_isAnimationOver = true;
    m_animationTimer.stop();
}

/// The timer runs only while there is something to outline: at rest nothing wakes the program.
void OverlayView::runAnimation()
{
    const bool hasOutline = m_shown.outline.has_value() && !m_isAnimationOver;
    if (hasOutline && !m_animationTimer.isActive())
        m_animationTimer.start(antsInterval);
    else if (!hasOutline)
        m_animationTimer.stop();
}

void OverlayView::advanceAnts()
{
    if (!selectionRectForDisplay())
        return;
    m_marchingAntsPhase = nextAntsPhase(m_marchingAntsPhase);
    redisplay();
}

/// The words under the rectangle, as they were laid out if they are there already.
OverlayLabel OverlayView::labelUnder(const Rect<Canvas> &rect, const QString &text) const
{
    const bool isShown = m_shown.label && m_shown.label->text() == text;
    return isShown ? m_shown.label->movedTo(rect) : OverlayLabel(text, rect);
}

std::optional<OverlayLabel> OverlayView::label() const
{
    if (!isSelecting() || m_store.selectedViewRect)
        return std::nullopt;
    if (const auto dragged = draggedRect())
        return labelUnder(*dragged, dimensionText(dragged->size));
    if (m_highlightedWindow)
        return labelUnder(viewRect(*m_highlightedWindow), m_highlightedWindow->ownerName);
    return std::nullopt;
}

OverlayScene OverlayView::scene() const
{
    const bool hasGuideLines = m_showGuideLines && !m_isDragging;
    return {.outline = selectionRectForDisplay(),
            .antsPhase = m_marchingAntsPhase,
            .label = label(),
            .pointer = m_cursorPosition,
            .guideLines = hasGuideLines ? GuideLines::Shown : GuideLines::Hidden,
            .annotations = m_drawnAnnotations,
            .inProgress = m_drawnInProgress};
}

/// Marks come and go at the end of the list.
void OverlayView::annotationsChanged()
{
    const auto &marks = m_store.annotations();
    const auto [known, fresh] =
        std::ranges::mismatch(m_drawnAnnotations, marks, {}, &DrawnAnnotation::id,
                              [](const auto &mark) { return mark->id(); });
    m_drawnAnnotations.erase(known, m_drawnAnnotations.cend());
    for (const auto &mark : std::ranges::subrange(fresh, marks.end()))
        m_drawnAnnotations.append(
            {mark.get(), mark->id(), drawnPixels(mark->drawnAreas(), m_canvas)});
    redisplay();
}

void OverlayView::redisplay()
{
    const OverlayScene next = scene();
    const QRegion pixels = changedPixels(m_shown, next, m_canvas);
    paintOverlay(m_picture, m_frozenImage, m_dimmedImage, next, m_canvas, pixels);
    m_shown = next;
    runAnimation();
    const QSizeF ratio = pixelsAUnit();
    if (ratio == QSizeF(1, 1)) {
        update(pixels);
        return;
    }
    for (const QRect &rect : pixels) {
        const QRectF shown(rect.x() / ratio.width(), rect.y() / ratio.height(),
                           rect.width() / ratio.width(), rect.height() / ratio.height());
        update(shown.toAlignedRect());
    }
}

/// The toolkit's ratio, but where the desktop's scale is none that the toolkit knows: there it
/// draws for the next whole one, and the compositor fits that into the screen's pixels.
QSizeF OverlayView::pixelsAUnit() const
{
    const double ratio = devicePixelRatio();
    const QSizeF beyond = QSizeF(size()) * ratio - QSizeF(m_picture.size());
    const auto isLessThanAUnit = [ratio](double pixels) { return std::abs(pixels) < ratio; };
    if (isLessThanAUnit(beyond.width()) && isLessThanAUnit(beyond.height()))
        return {ratio, ratio};
    if (size().isEmpty())
        return {ratio, ratio};
    return {static_cast<double>(m_picture.width()) / width(),
            static_cast<double>(m_picture.height()) / height()};
}

void OverlayView::paintEvent(QPaintEvent *event)
{
    const QSizeF ratio = pixelsAUnit();
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.scale(1 / ratio.width(), 1 / ratio.height()); // pixel for pixel
    if (ratio.width() != devicePixelRatio()) { // a part would not be put quite where the whole is
        painter.drawImage(0, 0, m_picture);
        return;
    }
    for (const QRect &rect : event->region()) {
        const QRect pixels =
            QRectF(QPointF(rect.topLeft()) * ratio.width(), QSizeF(rect.size()) * ratio.width())
                .toAlignedRect()
            & m_picture.rect();
        painter.setClipRect(pixels); // or the toolkit wakes its threads to copy a few rows
        painter.drawImage(pixels.topLeft(), m_picture, pixels);
    }
}

Point<Canvas> OverlayView::viewLocation(QPointF widgetPoint) const
{
    const QSizeF ratio = pixelsAUnit();
    return {widgetPoint.x() * ratio.width() / m_canvas.scale,
            m_canvas.size.height - widgetPoint.y() * ratio.height() / m_canvas.scale};
}

QRect OverlayView::widgetRect(const Rect<Canvas> &rect) const
{
    const QSizeF ratio = pixelsAUnit();
    const double across = m_canvas.scale / ratio.width();
    const double down = m_canvas.scale / ratio.height();
    return QRectF(rect.minX() * across, (m_canvas.size.height - rect.maxY()) * down,
                  rect.width() * across, rect.height() * down)
        .toRect();
}

void OverlayView::setToolbarFrame(QWidget &toolbar, const Rect<Canvas> &frame)
{
    m_toolbarFrame = frame;
    toolbar.setGeometry(widgetRect(frame));
}

void OverlayView::enterEvent(QEnterEvent *event)
{
    mouseMoved(viewLocation(placeOf(*event)));
}

void OverlayView::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mouseDown(viewLocation(placeOf(*event)));
}

void OverlayView::mouseMoveEvent(QMouseEvent *event)
{
    if ((event->buttons() & Qt::LeftButton) != 0)
        mouseDragged(viewLocation(placeOf(*event)));
    else
        mouseMoved(viewLocation(placeOf(*event)));
}

void OverlayView::mouseReleaseEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton)
        mouseUp(viewLocation(placeOf(*event)));
}

/// A mark is finished by the tool that began it, whatever the keyboard chose meanwhile.
bool OverlayView::isSelectingNow() const
{
    const bool isDrawing =
        m_inProgressAnnotation && m_magnifierPhase != MagnifierPhase::PositioningLoupe;
    return isSelecting() && !isDrawing;
}

void OverlayView::mouseDown(Point<Canvas> location)
{
    if (isSelecting())
        selectionDown(location);
    else
        editingDown(location);
}

void OverlayView::mouseDragged(Point<Canvas> location)
{
    m_cursorPosition = location;
    if (isSelectingNow())
        selectionDragged(location);
    else
        editingDragged(location);
}

void OverlayView::mouseUp(Point<Canvas> location)
{
    if (isSelectingNow())
        selectionUp(location);
    else
        editingUp();
}

void OverlayView::mouseMoved(Point<Canvas> location)
{
    m_cursorPosition = location;
    const bool isPlacingLoupe =
        m_magnifierPhase == MagnifierPhase::PositioningLoupe && loupeInProgress() != nullptr;
    const bool isOverLoupe = isPlacingLoupe && loupeInProgress()->loupe().contains(location);
    setCursor(isOverLoupe ? QCursor(Qt::OpenHandCursor) : invisibleCursor());
    m_showGuideLines = !isPlacingLoupe && isSelecting() && !m_store.selectedViewRect;
    if (m_showGuideLines && !m_isDragging)
        m_highlightedWindow = windowAt(m_screen.toGlobal(location));
    redisplay();
}

void OverlayView::keyPressEvent(QKeyEvent *event)
{
    if (isEscape(*event))
        cancelOperation();
    else if (isUndo(*event))
        m_store.undo();
    else
        QWidget::keyPressEvent(event);
}

/// Backs out of one thing: of the text, of the loupe that is being placed, or of the capture.
void OverlayView::cancelOperation()
{
    if (m_activeTextField) {
        removeTextField();
    } else if (m_magnifierPhase == MagnifierPhase::PositioningLoupe) {
        endPlacing();
        dropInProgress();
        redisplay();
    } else if (const auto cancel = m_store.cancelCallback) { // which may end this view
        cancel();
    }
}

} // namespace lumacap
