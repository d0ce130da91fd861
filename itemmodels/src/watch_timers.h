// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_WATCH_TIMERS_H
#define ITEMMODELS_WATCH_TIMERS_H

#include <QObject>
#include <QTimer>

namespace Velk {

/// When a watch model reports to its views: new values together at the end of an interval, ages every second.
class WatchTimers : public QObject
{
    Q_OBJECT

public:
    /// The interval is that of a refresh of the primary screen; 16 ms without a screen.
    WatchTimers();

    int updateInterval() const { return m_update.interval(); }
    /// Milliseconds; less than 0 counts as 0. Returns whether the interval changed.
    bool setUpdateInterval(int intervalMs);

    /// Emits updateDue() at the end of the interval that this call begins, or that an earlier one began.
    void scheduleUpdate();
    void stopUpdate() { m_update.stop(); }

    /// Emits agesDue() every second until stopAging().
    void startAging();
    void stopAging() { m_aging.stop(); }

Q_SIGNALS:
    void updateDue();
    void agesDue();

private:
    QTimer m_update;
    QTimer m_aging;
};

} // namespace Velk

#endif
