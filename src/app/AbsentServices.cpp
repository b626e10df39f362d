#include "app/AbsentServices.h"

using namespace Qt::StringLiterals;

namespace lumacap {

namespace {

const QString reason = u"this desktop offers no way to take a picture of the screen"_s;

} // namespace

QCoro::Task<Result<std::vector<DisplayInfo>>> AbsentScreenCapture::displays()
{
    co_return failure(reason);
}

QCoro::Task<Result<QImage>> AbsentScreenCapture::grab(DisplayId /*display*/, QSize /*pixelSize*/)
{
    co_return failure(reason);
}

std::optional<Screen> AbsentScreens::mainScreen() const
{
    return std::nullopt;
}

std::vector<Screen> AbsentScreens::screens() const
{
    return {};
}

void AbsentPasteboard::clearContents() { }

void AbsentPasteboard::write(std::unique_ptr<PasteboardItem> /*item*/) { }

QCoro::Task<> AbsentPasteboard::handOver()
{
    co_return;
}

} // namespace lumacap
