#include "app/AbsentServices.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

const QString reason = u"this desktop offers no way to take a picture of the screen"_s;

} // namespace

QCoro::Task<Result<std::vector<DisplayInfo>>> AbsentScreenCapture::displays()
{
    co_return failure(reason);
}

QCoro::Task<> AbsentScreenCapture::settle()
{
    co_return;
}

QCoro::Task<Result<QImage>> AbsentScreenCapture::grab(DisplayId /*display*/, QSize /*pixelSize*/)
{
    co_return failure(reason);
}

QCoro::Task<> AbsentScreens::prepare()
{
    co_return;
}

std::optional<Screen> AbsentScreens::mainScreen() const
{
    return std::nullopt;
}

std::vector<Screen> AbsentScreens::screens() const
{
    return {};
}

std::optional<Point<Global>> AbsentScreens::pointerPosition() const
{
    return std::nullopt;
}

void AbsentOverlaySurface::cover(QWidget &widget, const Screen & /*screen*/,
                                 std::function<void()> onScreenChanged)
{
    m_widget = &widget;
    m_onScreenChanged = std::move(onScreenChanged);
    // On the next turn of the loop, when whoever called is done with showing the widget.
    QMetaObject::invokeMethod(
        &m_context,
        [this] {
            if (m_widget && m_onScreenChanged)
                std::exchange(m_onScreenChanged, nullptr)();
        },
        Qt::QueuedConnection);
}

void AbsentOverlaySurface::uncover(QWidget &widget)
{
    if (m_widget == &widget)
        m_onScreenChanged = nullptr;
}

QCoro::Task<> AbsentWindowList::prepare()
{
    co_return;
}

void AbsentWindowList::release() { }

std::vector<WindowRecord> AbsentWindowList::windows() const
{
    return {};
}

void AbsentHotkeyService::setPressedHandler(PressedHandler /*handler*/) { }

HotKeyRef AbsentHotkeyService::registerHotKey(const HotKey & /*hotKey*/, Answer answer)
{
    m_lastRef = HotKeyRef{std::to_underlying(m_lastRef) + 1};
    m_unanswered.insert(m_lastRef);
    QMetaObject::invokeMethod(
        &m_context,
        [this, ref = m_lastRef, answer = std::move(answer)] {
            if (m_unanswered.erase(ref) != 0)
                answer(HotKeyState::NotLive);
        },
        Qt::QueuedConnection);
    return m_lastRef;
}

void AbsentHotkeyService::unregisterHotKey(HotKeyRef ref)
{
    m_unanswered.erase(ref);
}

void AbsentHotkeyService::suspend() { }

void AbsentHotkeyService::resume() { }

void AbsentPasteboard::clearContents() { }

void AbsentPasteboard::write(std::unique_ptr<PasteboardItem> /*item*/) { }

QCoro::Task<> AbsentPasteboard::handOver()
{
    co_return;
}

} // namespace lumacap
