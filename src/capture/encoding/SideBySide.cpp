#include "capture/encoding/SideBySide.h"

#include <atomic>
#include <new>
#include <system_error>
#include <thread>
#include <vector>

namespace lumacap {

bool doSideBySide(int parts, int workers, const std::function<PartWork()> &makeWork)
{
    std::atomic<int> next = 0;
    std::atomic<bool> ranOut = false;
    const auto takeParts = [&] {
        try {
            const PartWork work = makeWork();
            for (int part = next++; part < parts && !ranOut; part = next++)
                work(part);
        } catch (const std::bad_alloc &) {
            ranOut = true;
        }
    };
    {
        std::vector<std::jthread> others;
        try {
            for (int worker = 1; worker < workers && worker < parts; ++worker)
                others.emplace_back(takeParts);
        } catch (const std::system_error &) { // NOLINT(bugprone-empty-catch)
            // No more threads to be had: those that started, and this one, do the work.
        }
        takeParts();
    }
    return !ranOut;
}

} // namespace lumacap
