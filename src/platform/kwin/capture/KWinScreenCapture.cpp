#include "platform/kwin/capture/KWinScreenCapture.h"

#include "platform/kwin/capture/Screenshot.h"
#include "platform/wayland/Outputs.h"

#include <QCoroTimer>
#include <QDeadlineTimer>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <span>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace lumacap::kwin {

namespace {

// KWin tells nobody what it paints. A menu that was closed fades out, for a sixth of a second or
// as much longer as its person likes, and what it covered may be painted anew: it has gone when two
// pictures are the same. Where something always moves, a film say, no two ever are.
constexpr auto menuIsClosed = 100ms;
constexpr auto restLasts = 150ms;
constexpr auto settledAnyway = 1s;

/// Pictures of many pixels take some tenths of a second where a processor draws the screen.
constexpr auto pictureLimit = 8s;

enum class Pointer { Hidden, Shown };
enum class Pixels { OfDesktop, OfDisplay };

QVariantMap options(Pointer pointer, Pixels pixels)
{
    return {{u"include-cursor"_s, pointer == Pointer::Shown},
            {u"native-resolution"_s, pixels == Pixels::OfDisplay},
            // Newer ones leave out the windows of whoever asks, unless told.
            {u"hide-caller-windows"_s, false}};
}

/// KWin reckons the size from its own units, which a scale of fractions cuts to whole ones: of 1920
/// pixels at 2.25 it sends 1919.
bool isAbout(QSize size, QSize expected)
{
    constexpr int lostByRounding = 2;
    const QSize difference = size - expected;
    return std::abs(difference.width()) <= lostByRounding
        && std::abs(difference.height()) <= lostByRounding;
}

std::size_t fingerprint(const QImage &picture)
{
    return qHashBits(picture.constBits(), static_cast<std::size_t>(picture.sizeInBytes()));
}

/// Every output, a pixel for each of the desktop's units: no more than is needed to see a menu.
QCoro::Task<Result<QImage>> takeAll(QDBusConnection bus, QRect area, QDeadlineTimer deadline)
{
    const QVariantList arguments{area.x(), area.y(), static_cast<uint>(area.width()),
                                 static_cast<uint>(area.height()),
                                 options(Pointer::Hidden, Pixels::OfDesktop)};
    return takeScreenshot(std::move(bus), u"CaptureArea"_s, arguments, deadline);
}

} // namespace

KWinScreenCapture::KWinScreenCapture(const wayland::Outputs &outputs, QDBusConnection bus)
    : m_outputs(outputs)
    , m_bus(std::move(bus))
{
}

QCoro::Task<Result<std::vector<DisplayInfo>>> KWinScreenCapture::displays()
{
    co_return wayland::displaysOf(m_outputs.all());
}

QCoro::Task<> KWinScreenCapture::settle()
{
    const QDeadlineTimer deadline(settledAnyway);
    QRect area;
    for (const wayland::Output &output : m_outputs.all())
        area |= output.frame;
    const QDBusConnection bus = m_bus; // the object may go while this waits
    co_await QCoro::sleepFor(menuIsClosed);
    std::optional<std::size_t> last;
    while (!deadline.hasExpired()) {
        const auto picture = co_await takeAll(bus, area, deadline);
        if (!picture)
            co_return; // nor will there be a picture to spoil
        const std::size_t now = fingerprint(*picture);
        if (std::exchange(last, now) == now)
            co_return;
        co_await QCoro::sleepFor(restLasts);
    }
}

QCoro::Task<Result<QImage>> KWinScreenCapture::grab(DisplayId display, QSize /*pixelSize*/)
{
    const std::vector<wayland::Output> outputs = m_outputs.all();
    const auto output = std::ranges::find(outputs, display, &wayland::Output::id);
    if (output == outputs.end())
        co_return failure(u"the display has been unplugged"_s);
    const QVariantList arguments{output->name, options(Pointer::Shown, Pixels::OfDisplay)};
    auto picture =
        co_await takeScreenshot(m_bus, u"CaptureScreen"_s, arguments, QDeadlineTimer(pictureLimit));
    if (picture && !isAbout(picture->size(), output->pixels))
        co_return failure(u"KWin sent a picture of another size than the display's"_s);
    co_return picture;
}

} // namespace lumacap::kwin
