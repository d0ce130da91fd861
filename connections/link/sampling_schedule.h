// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_SAMPLING_SCHEDULE_H
#define CONNECTIONS_LINK_SAMPLING_SCHEDULE_H

#include <connections/link/link_export.h>
#include <connections/link/sampling_ticks.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QObject>

#include <vector>

namespace Velk {

/// When a running watcher samples and delivers: one timer for the delivery and for every sampling period in force.
///
/// Ticks come at the multiples of their periods since start(), sampling before delivering: a delivery holds the samples
/// of its own moment. A tick that this program was too busy for, or stopped, is counted as missed at the next one.
///
/// A memory interface calls scheduleGrouping() when its watched keys or their periods change, and gives the new periods
/// in a slot of groupingDue(): many keys are often watched in a row, and are sorted once.
class LINK_EXPORT SamplingSchedule : public QObject
{
    Q_OBJECT

public:
    explicit SamplingSchedule(QObject* parent = nullptr);

    bool isRunning() const { return m_isRunning; }
    /// Counts the turns in which something was due: what is sampled in one turn is sampled at one moment.
    qint64 turn() const { return m_turn; }
    /// Starts with a grouping; a running schedule gets the delivery period only. Periods are milliseconds, at least 1.
    void start(int gatherPeriodMs);
    /// No signal comes afterwards. The sampling periods are forgotten.
    void stop();
    /// Counts from the last delivery. Nothing unless it runs.
    void setGatherPeriod(int periodMs);

    /// Emits groupingDue() once, from the event loop. Nothing unless it runs.
    void scheduleGrouping();
    /// The sampling periods in force, each once, in any order. A period that was in force goes on; one that is new
    /// takes the place of one that is gone.
    void setPeriods(const std::vector<int>& periodsMs);

Q_SIGNALS:
    void groupingDue();
    /// The keys of this sampling period are to be sampled, once; `missed` ticks of theirs were left out before. A slot
    /// neither stops nor deletes this object.
    void samplingDue(int periodMs, qint64 missed);
    /// What was gathered is to be delivered. The last signal of a turn: a slot may stop or delete this object.
    void deliveryDue();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void arm();
    void onTimer();

    bool m_isRunning = false;
    bool m_isGroupingDue = false;
    qint64 m_turn = 0;
    QElapsedTimer m_clock; // since start()
    QBasicTimer m_timer;
    SamplingTicks m_delivery;
    std::vector<SamplingTicks> m_sampling;
};

} // namespace Velk

#endif
