#pragma once

#include "platform/Pasteboard.h"
#include "platform/ScreenCapture.h"
#include "platform/Screens.h"

namespace lumacap {

/// On a desktop that gives out no pictures of itself.
class AbsentScreenCapture final : public ScreenCapture {
public:
    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override;
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override;
};

/// On a desktop that does not tell its screens.
class AbsentScreens final : public Screens {
public:
    std::optional<Screen> mainScreen() const override;
    std::vector<Screen> screens() const override;
};

/// On a desktop without a clipboard.
class AbsentPasteboard final : public Pasteboard {
public:
    void clearContents() override;
    void write(std::unique_ptr<PasteboardItem> item) override;
    QCoro::Task<> handOver() override;
};

} // namespace lumacap
