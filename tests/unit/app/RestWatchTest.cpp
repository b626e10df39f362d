#include "app/RestWatch.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <chrono>
#include <cstddef>

#include <sys/mman.h>

namespace lumacap {
namespace {

using namespace std::chrono_literals;

constexpr auto calm = 20ms;
constexpr std::size_t pageSize = 4096;

/// Touches pages that were not in memory, as work does.
void work(std::size_t pages)
{
    void *const memory =
        mmap(nullptr, pages * pageSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(memory, MAP_FAILED);
    madvise(memory, pages * pageSize, MADV_NOHUGEPAGE);
    for (std::size_t page = 0; page < pages; ++page)
        static_cast<volatile char *>(memory)[page * pageSize] = 1;
    munmap(memory, pages * pageSize);
}

/// Whether the loop goes to sleep with nothing left that would wake it up for the watch's sake.
bool fallsAsleep(RestWatch &watch)
{
    return QTest::qWaitFor([&watch] { return !watch.isWaiting(); });
}

/// One turn of the loop, which would wait if it had nothing to do.
void turnOnce()
{
    QMetaObject::invokeMethod(QCoreApplication::instance(), [] { }, Qt::QueuedConnection);
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

TEST(RestWatch, tellsOnceThatWorkIsOver)
{
    RestWatch watch(calm);
    QSignalSpy rests(&watch, &RestWatch::cameToRest);
    work(1000);
    turnOnce();
    ASSERT_TRUE(watch.isWaiting());
    ASSERT_TRUE(fallsAsleep(watch));
    EXPECT_EQ(rests.count(), 1);
    turnOnce();
    EXPECT_FALSE(watch.isWaiting());
}

TEST(RestWatch, tellsAgainAfterMoreWork)
{
    RestWatch watch(calm);
    QSignalSpy rests(&watch, &RestWatch::cameToRest);
    for (int round = 1; round <= 3; ++round) {
        work(1000);
        turnOnce();
        ASSERT_TRUE(fallsAsleep(watch));
        EXPECT_EQ(rests.count(), round);
        turnOnce();
    }
}

TEST(RestWatch, leavesATrifleAlone)
{
    RestWatch watch(calm);
    work(1000);
    turnOnce();
    ASSERT_TRUE(fallsAsleep(watch));
    turnOnce();
    work(1);
    turnOnce();
    EXPECT_FALSE(watch.isWaiting());
}

TEST(RestWatch, waitsUntilTheLastOfTheWorkIsACalmAgo)
{
    RestWatch watch(calm);
    QElapsedTimer sinceWork;
    QTimer ticking; // more often than the calm lasts
    int ticks = 0;
    QObject::connect(&ticking, &QTimer::timeout, &watch, [&] {
        sinceWork.start();
        if (++ticks == 100)
            ticking.stop();
    });
    QEventLoop loop;
    qint64 waited = 0;
    QObject::connect(&watch, &RestWatch::cameToRest, &loop, [&] {
        waited = sinceWork.nsecsElapsed();
        loop.quit();
    });
    QTimer::singleShot(20s, &loop, &QEventLoop::quit);
    ticking.start(1ms);
    work(1000);
    loop.exec();
    EXPECT_GE(std::chrono::nanoseconds(waited), calm);
}

} // namespace
} // namespace lumacap
