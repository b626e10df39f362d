#pragma once

#include "platform/WindowList.h"

#include <QCoroTimer>

#include <chrono>
#include <vector>

namespace lumacap {

/// Windows from data, frontmost first, told once they have been asked for.
class FakeWindowList final : public WindowList {
public:
    QCoro::Task<> prepare() override
    {
        co_await QCoro::sleepFor(std::chrono::milliseconds(0)); // late, as a desktop answers
        isFollowing = true;
    }
    void release() override { isFollowing = false; }
    std::vector<WindowRecord> windows() const override
    {
        ++questions;
        return isFollowing ? all : std::vector<WindowRecord>();
    }

    std::vector<WindowRecord> all;
    bool isFollowing = false;
    mutable int questions = 0;
};

} // namespace lumacap
