#include "platform/kwin/pointer/KWinPointerFinder.h"

#include "platform/kwin/Script.h"

#include <QStringList>

#include <chrono>
#include <cmath>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::kwin {

namespace {

/// It takes some milliseconds, unless KWin is busy.
constexpr auto limit = 500ms;

constexpr auto source = R"JS(
tell(workspace.cursorPos.x + " " + workspace.cursorPos.y);
)JS";

} // namespace

KWinPointerFinder::KWinPointerFinder(QDBusConnection bus)
    : m_bus(std::move(bus))
{
}

QCoro::Task<std::optional<QPointF>> KWinPointerFinder::find()
{
    Script script(m_bus, u"lumacap-pointer"_s, source);
    const auto words = co_await script.run(QDeadlineTimer(limit));
    co_return words ? pointerPlace(*words) : std::nullopt;
}

std::optional<QPointF> pointerPlace(const QString &words)
{
    const QStringList numbers = words.split(u' ');
    bool isX = false;
    bool isY = false;
    const double x = numbers.value(0).toDouble(&isX);
    const double y = numbers.value(1).toDouble(&isY);
    if (numbers.size() != 2 || !isX || !isY || !std::isfinite(x) || !std::isfinite(y))
        return std::nullopt;
    constexpr double half = 0.5;
    return QPointF(std::floor(x) + half, std::floor(y) + half);
}

} // namespace lumacap::kwin
