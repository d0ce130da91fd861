// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/sampling_schedule.h>

#include <QPointer>
#include <QTimerEvent>

#include <algorithm>
#include <utility>

namespace Velk {

SamplingSchedule::SamplingSchedule(QObject* parent)
    : QObject(parent)
{}

void SamplingSchedule::start(int gatherPeriodMs)
{
    if (m_isRunning) {
        setGatherPeriod(gatherPeriodMs);
        return;
    }
    m_isRunning = true;
    m_clock.start();
    m_delivery = SamplingTicks(gatherPeriodMs, 0);
    scheduleGrouping();
}

void SamplingSchedule::stop()
{
    if (!m_isRunning)
        return;
    reportMissedTicks();
    ++m_run;
    m_isRunning = false;
    m_isGroupingDue = false;
    m_timer.stop();
    m_sampling.clear();
}

void SamplingSchedule::setGatherPeriod(int periodMs)
{
    if (!m_isRunning)
        return;
    m_delivery.setPeriod(periodMs, m_clock.elapsed());
    arm();
}

void SamplingSchedule::scheduleGrouping()
{
    if (!m_isRunning)
        return;
    reportMissedTicks();
    if (m_isGroupingDue)
        return;
    m_isGroupingDue = true;
    arm();
}

void SamplingSchedule::setPeriods(const std::vector<int>& periodsMs)
{
    const qint64 now = m_clock.elapsed();
    std::vector<SamplingTicks> unused = std::exchange(m_sampling, {});
    std::vector<int> newPeriods;
    for (const int period : periodsMs) {
        const auto found = std::find_if(unused.begin(), unused.end(),
                                        [period](const SamplingTicks& ticks) { return ticks.periodMs() == period; });
        if (found == unused.end()) {
            newPeriods.push_back(period);
        } else {
            m_sampling.push_back(*found);
            unused.erase(found);
        }
    }
    for (const int period : newPeriods) {
        if (unused.empty()) {
            m_sampling.emplace_back(period, now);
        } else {
            m_sampling.push_back(unused.back());
            m_sampling.back().setPeriod(period, now);
            unused.pop_back();
        }
    }
    arm();
}

void SamplingSchedule::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        onTimer();
    else
        QObject::timerEvent(event);
}

void SamplingSchedule::arm()
{
    if (!m_isRunning)
        return;
    if (m_isGroupingDue) {
        m_timer.start(0, this);
        return;
    }
    qint64 next = m_delivery.next();
    for (const SamplingTicks& ticks : m_sampling)
        next = std::min(next, ticks.next());
    m_timer.start(static_cast<int>(std::max<qint64>(next - m_clock.elapsed(), 0)), Qt::PreciseTimer, this);
}

void SamplingSchedule::onTimer()
{
    ++m_turn;
    if (!sampleDue(m_clock.elapsed()))
        return;
    if (std::exchange(m_isGroupingDue, false)) {
        const QPointer<SamplingSchedule> self(this);
        const int run = m_run;
        emit groupingDue();
        // A new period may be due already.
        if (!self || m_run != run || !sampleDue(m_clock.elapsed()))
            return;
    }
    const bool isDeliveryDue = m_delivery.take(m_clock.elapsed()).isDue;
    arm();
    if (isDeliveryDue)
        emit deliveryDue();
}

// False when a slot has stopped or deleted this object.
bool SamplingSchedule::sampleDue(qint64 now)
{
    struct DuePeriod
    {
        int periodMs;
        qint64 missed;
    };
    std::vector<DuePeriod> periods; // a slot may change those of this object
    for (SamplingTicks& ticks : m_sampling) {
        const SamplingTicks::Due due = ticks.take(now);
        if (due.isDue)
            periods.push_back({ticks.periodMs(), due.missed});
    }
    const QPointer<SamplingSchedule> self(this);
    const int run = m_run;
    for (const DuePeriod& period : periods) {
        emit samplingDue(period.periodMs, period.missed);
        if (!self || m_run != run)
            return false;
    }
    return true;
}

void SamplingSchedule::reportMissedTicks()
{
    const qint64 now = m_clock.elapsed();
    for (SamplingTicks& ticks : m_sampling) {
        if (const qint64 missed = ticks.takeMissed(now); missed > 0)
            emit ticksMissed(ticks.periodMs(), missed);
    }
}

} // namespace Velk
