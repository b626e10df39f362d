#include "capture/encoding/SideBySide.h"

#include <atomic>
#include <new>
#include <vector>

#include <gtest/gtest.h>

using namespace lumacap;

TEST(SideBySide, everyPartIsDoneOnce)
{
    for (const int workers : {1, 2, 8}) {
        std::vector<std::atomic<int>> times(100);
        EXPECT_TRUE(doSideBySide(100, workers, [&] {
            return [&](int part) { ++times[static_cast<std::size_t>(part)]; };
        }));
        for (const std::atomic<int> &time : times)
            EXPECT_EQ(time, 1);
    }
}

TEST(SideBySide, noMoreThreadsStartThanThereAreParts)
{
    std::atomic<int> threads = 0;
    EXPECT_TRUE(doSideBySide(2, 8, [&] {
        ++threads;
        return [](int) { };
    }));
    EXPECT_LE(threads, 2);
}

TEST(SideBySide, memoryRunningOutOnAnyThreadEndsTheWork)
{
    for (const int workers : {1, 4}) {
        std::atomic<int> done = 0;
        EXPECT_FALSE(doSideBySide(1'000'000, workers, [&] {
            return [&](int) {
                if (++done > 10)
                    throw std::bad_alloc();
            };
        }));
        EXPECT_LT(done, 1000);
    }
}
