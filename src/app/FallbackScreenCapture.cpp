#include "app/FallbackScreenCapture.h"

#include <QDeadlineTimer>
#include <QPointer>

#include <algorithm>
#include <chrono>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap {

namespace {

// A refusal comes within milliseconds. A desktop that hangs would let the second way wait as well,
// and ask the person of a picture long forgotten once it moves again.
constexpr auto refusalLimit = 2s;

} // namespace

FallbackScreenCapture::FallbackScreenCapture(std::unique_ptr<ScreenCapture> first,
                                             std::unique_ptr<ScreenCapture> second)
    : m_first(std::move(first))
    , m_second(std::move(second))
{
}

FallbackScreenCapture::~FallbackScreenCapture() = default;

QCoro::Task<Result<std::vector<DisplayInfo>>> FallbackScreenCapture::displays()
{
    return m_first->displays();
}

QCoro::Task<> FallbackScreenCapture::settle()
{
    return m_first->settle();
}

QCoro::Task<Result<QImage>> FallbackScreenCapture::grab(DisplayId display, QSize pixelSize)
{
    const QPointer self{this};
    const QDeadlineTimer refusalTime(refusalLimit);
    auto picture = co_await m_first->grab(display, pixelSize);
    if (picture || !self || refusalTime.hasExpired())
        co_return picture;
    const bool isAttached = co_await isThere(display);
    if (!self || !isAttached)
        co_return picture;
    auto other = co_await m_second->grab(display, pixelSize);
    if (!other)
        co_return failure(picture.error().description + u"; "_s + other.error().description);
    co_return other;
}

QCoro::Task<bool> FallbackScreenCapture::isThere(DisplayId display)
{
    const auto all = co_await m_first->displays();
    co_return all &&std::ranges::find(*all, display, &DisplayInfo::displayID) != all->end();
}

} // namespace lumacap
