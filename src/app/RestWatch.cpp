#include "app/RestWatch.h"

#include <QAbstractEventDispatcher>

#include <utility>

#include <sys/resource.h>

namespace lumacap {

namespace {

/// What hardly runs any code, such as an answer that nobody waits for, needs fewer.
constexpr long worthwhile = 8;

/// How often the process has touched pages that it had not in memory, each time getting a few.
long touchedPages()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_minflt;
}

} // namespace

RestWatch::RestWatch(std::chrono::milliseconds calm)
    : m_calm(calm)
{
    m_wakeUp.setSingleShot(true);
    m_wakeUp.setTimerType(Qt::PreciseTimer); // a coarse one may come early, and then again
    connect(&m_wakeUp, &QTimer::timeout, this, &RestWatch::onWokenUp);
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &RestWatch::onAboutToWait);
}

RestWatch::~RestWatch() = default;

void RestWatch::onAboutToWait()
{
    if (std::exchange(m_isOwnWakeUp, false)) {
        if (!m_wakeUp.isActive()) // what the step at rest itself needed is in memory by now
            m_pagesAtRest = touchedPages();
        return;
    }
    if (!m_wakeUp.isActive() && touchedPages() - m_pagesAtRest < worthwhile)
        return;
    m_endOfCalm.setRemainingTime(m_calm);
    if (!m_wakeUp
             .isActive()) // not begun anew each time: the loop may turn a hundred times a second
        m_wakeUp.start(m_calm);
}

void RestWatch::onWokenUp()
{
    m_isOwnWakeUp = true;
    if (!m_endOfCalm.hasExpired())
        return m_wakeUp.start(static_cast<int>(m_endOfCalm.remainingTime()) + 1);
    Q_EMIT cameToRest();
}

} // namespace lumacap
