#pragma once

#include "platform/ScreenCapture.h"

#include <QCoroTask>
#include <QImage>

#include <optional>

namespace lumacap {

class ImageSaver;
class Screens;
struct Screen;

/// Takes pictures of displays at their pixel resolution, the pointer included. It keeps nothing
/// between calls; several may be under way at once.
class CaptureEngine {
public:
    /// Borrows all three, which outlive the object and every capture under way.
    CaptureEngine(ScreenCapture &screenCapture, const Screens &screens, ImageSaver &imageSaver);
    Q_DISABLE_COPY_MOVE(CaptureEngine)
    ~CaptureEngine() = default;

    /// Takes the first display and saves the picture. A failure is one line on standard output;
    /// nothing is saved then. Without any display nothing happens.
    QCoro::Task<> captureFullScreen();

    /// The picture of `screen`'s display, or of the first one where that has gone. Nothing without
    /// any display, and after a failure, which is one line on standard output.
    QCoro::Task<std::optional<QImage>> captureFreezeImage(Screen screen);

private:
    int scaleFactor() const;

    ScreenCapture &m_screenCapture;
    const Screens &m_screens;
    ImageSaver &m_imageSaver;
};

} // namespace lumacap
