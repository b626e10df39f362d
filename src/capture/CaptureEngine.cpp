#include "capture/CaptureEngine.h"

#include "capture/ImageSaver.h"
#include "graphics/Fatal.h"
#include "platform/Screens.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <limits>

namespace lumacap {

namespace {

/// The factor where no screen is attached at all.
constexpr int factorWithoutScreen = 2;

int wholeNumber(double value, const char *brokenRule)
{
    if (!std::isfinite(value) || std::abs(value) > std::numeric_limits<int>::max())
        fatal(brokenRule);
    return static_cast<int>(value);
}

int wholeFactor(const Screen &screen)
{
    return wholeNumber(screen.backingScaleFactor, "a screen's backing factor is no whole number");
}

QSize pixelSize(const DisplayInfo &display, int factor)
{
    constexpr auto brokenRule = "a display's size in pixels is too large for a number";
    return {wholeNumber(display.width * factor, brokenRule),
            wholeNumber(display.height * factor, brokenRule)};
}

void report(const char *prefix, const Failure &failure)
{
    std::printf("%s%s\n", prefix, qUtf8Printable(failure.description));
    std::fflush(stdout);
}

} // namespace

CaptureEngine::CaptureEngine(ScreenCapture &screenCapture, const Screens &screens,
                             ImageSaver &imageSaver)
    : m_screenCapture(screenCapture)
    , m_screens(screens)
    , m_imageSaver(imageSaver)
{
}

int CaptureEngine::scaleFactor() const
{
    const auto screen = m_screens.mainScreen();
    return screen ? wholeFactor(*screen) : factorWithoutScreen;
}

QCoro::Task<> CaptureEngine::captureFullScreen()
{
    const auto displays = co_await m_screenCapture.displays();
    if (!displays) {
        report("Capture failed: ", displays.error());
        co_return;
    }
    if (displays->empty())
        co_return;
    // The density is the main screen's, whichever display is taken.
    const DisplayInfo &display = displays->front();
    const QSize size = pixelSize(display, scaleFactor());
    const auto image = co_await m_screenCapture.grab(display.displayID, size);
    if (image)
        m_imageSaver.save(*image);
    else
        report("Capture failed: ", image.error());
}

QCoro::Task<std::optional<QImage>> CaptureEngine::captureFreezeImage(Screen screen)
{
    const auto displays = co_await m_screenCapture.displays();
    if (!displays) {
        report("Freeze capture failed: ", displays.error());
        co_return std::nullopt;
    }
    if (displays->empty())
        co_return std::nullopt;
    const DisplayId number = screen.number.value_or(DisplayId{});
    auto display = std::ranges::find(*displays, number, &DisplayInfo::displayID);
    if (display == displays->end())
        display = displays->begin();
    const QSize size = pixelSize(*display, wholeFactor(screen));
    const auto image = co_await m_screenCapture.grab(display->displayID, size);
    if (image)
        co_return *image;
    report("Freeze capture failed: ", image.error());
    co_return std::nullopt;
}

} // namespace lumacap
