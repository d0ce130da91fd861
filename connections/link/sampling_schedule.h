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
/// of its own moment. A tick that came due while this program was busy or stopped is reported once as missed: with the
/// next tick, or by ticksMissed() when the schedule changes or stops before that.
///
/// A memory interface calls scheduleGrouping() before its watched keys or their periods change, and sets the new
/// periods in a slot of groupingDue(): many keys are often watched in a row, and are sorted once.
///
/// A slot of any signal but ticksMissed() may stop, start or delete this object. Signals of the same turn that would
/// follow are then not emitted.
class LINK_EXPORT SamplingSchedule : public QObject
{
    Q_OBJECT

public:
    explicit SamplingSchedule(QObject* parent = nullptr);

    bool isRunning() const { return m_isRunning; }
    /// Counts the turns in which something was due: what is sampled in one turn is sampled at one moment.
    qint64 turn() const { return m_turn; }
    /// Starts with a grouping. If the schedule runs already, only the delivery period changes. Periods are
    /// milliseconds, at least 1.
    void start(int gatherPeriodMs);
    /// Reports missed ticks, and emits nothing after that. The newest tick that is due counts as stopped and not as
    /// missed: it may have come due in this very turn. The sampling periods are forgotten.
    void stop();
    /// Counts from the last delivery. Nothing unless it runs.
    void setGatherPeriod(int periodMs);

    /// Reports missed ticks at once, and emits groupingDue() once, from the event loop. Nothing unless it runs.
    void scheduleGrouping();
    /// The sampling periods in force, each once, in any order. A period that was in force goes on; one that is new
    /// takes the place of one that is gone.
    void setPeriods(const std::vector<int>& periodsMs);

Q_SIGNALS:
    /// Comes after the ticks that the old periods still had.
    void groupingDue();
    /// The keys of this sampling period are to be sampled, once; `missed` ticks of theirs came due before.
    void samplingDue(int periodMs, qint64 missed);
    /// `count` ticks of this sampling period were missed so far. Emitted within scheduleGrouping() and stop(): a
    /// slot counts them, and does not change this object.
    void ticksMissed(int periodMs, qint64 count);
    /// What was gathered is to be delivered. The last signal of a turn.
    void deliveryDue();

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void arm();
    void onTimer();
    bool sampleDue(qint64 now);
    void reportMissedTicks();

    bool m_isRunning = false;
    bool m_isGroupingDue = false;
    qint64 m_turn = 0;
    int m_run = 0;         // counts the calls of stop(): a slot may have made one meanwhile
    QElapsedTimer m_clock; // since start()
    QBasicTimer m_timer;
    SamplingTicks m_delivery;
    std::vector<SamplingTicks> m_sampling;
};

} // namespace Velk

#endif
