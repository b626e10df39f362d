#include "app/FileCapture.h"

#include "capture/ImageEncoder.h"
#include "capture/encoding/AtomicFile.h"
#include "platform/ScreenCapture.h"

using namespace Qt::StringLiterals;

namespace lumacap {

QCoro::Task<Result<void>> captureFirstDisplay(ScreenCapture &screenCapture, QString path,
                                              ImageFormat format)
{
    auto file = AtomicFile::create(path);
    if (!file)
        co_return std::unexpected(file.error());
    const auto displays = co_await screenCapture.displays();
    if (!displays)
        co_return std::unexpected(displays.error());
    if (displays->empty())
        co_return failure(u"no display is attached"_s);
    const DisplayInfo &first = displays->front();
    // The answer is native pixels whatever is asked: this asks for a pixel a point.
    const QSize size(qRound(first.width), qRound(first.height));
    const auto image = co_await screenCapture.grab(first.displayID, size);
    if (!image)
        co_return std::unexpected(image.error());
    const auto bytes = encodeImage(*image, format);
    if (!bytes)
        co_return std::unexpected(bytes.error());
    if (const auto written = file->write(*bytes); !written)
        co_return written;
    co_return file->commit();
}

} // namespace lumacap
