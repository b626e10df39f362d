#pragma once

#include "platform/Screens.h"

namespace lumacap {

/// Screens from data, the main one first.
class FakeScreens final : public Screens {
public:
    QCoro::Task<> prepare() override { co_return; }
    std::optional<Screen> mainScreen() const override
    {
        return all.empty() ? std::nullopt : std::optional(all.front());
    }
    std::vector<Screen> screens() const override { return all; }

    std::optional<Point<Global>> pointerPosition() const override { return pointer; }

    std::vector<Screen> all;
    std::optional<Point<Global>> pointer;
};

} // namespace lumacap
