#pragma once

#include "platform/ScreenCapture.h"

#include <QCoroTimer>

#include <chrono>
#include <optional>
#include <vector>

namespace lumacap {

/// Displays and pictures from data. What was asked is kept.
class FakeScreenCapture final : public ScreenCapture {
public:
    struct Request {
        DisplayId display;
        QSize pixelSize;

        friend bool operator==(const Request &, const Request &) = default;
    };

    QCoro::Task<Result<std::vector<DisplayInfo>>> displays() override
    {
        co_await QCoro::sleepFor(std::chrono::milliseconds(0)); // late, as a desktop answers
        auto answer = listed; // QCoro 0.8 moves from whatever is returned
        co_return answer;
    }
    QCoro::Task<> settle() override { co_return; }
    QCoro::Task<Result<QImage>> grab(DisplayId display, QSize pixelSize) override
    {
        requests.push_back({display, pixelSize});
        co_await QCoro::sleepFor(std::chrono::milliseconds(0));
        if (refusal)
            co_return std::unexpected(*refusal);
        QImage image(pixelSize, QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::darkCyan);
        co_return image;
    }

    Result<std::vector<DisplayInfo>> listed;
    std::optional<Failure> refusal;
    std::vector<Request> requests;
};

} // namespace lumacap
