// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_CONNECTION_STATUS_H
#define APPS_VELK_WATCH_CONNECTION_STATUS_H

#include <connections/link/robot_link.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QString>

namespace Velk {

/// The state of the connection and its duration in words: "Connected for 3 min 20 s".
class ConnectionStatus
{
    Q_DECLARE_TR_FUNCTIONS(Velk::ConnectionStatus)

public:
    /// Takes the state that holds since `since`. The same state again keeps its first time.
    void setState(RobotLink::State state, const QDateTime& since);
    RobotLink::State state() const { return m_state; }
    /// The sentence at the time `now`.
    QString text(const QDateTime& now) const;

    /// A duration in at most two units: "45 s", "3 min 20 s", "2 h 5 min", "3 d 4 h". A negative one, from a clock that
    /// was set back, counts as zero.
    static QString durationText(qint64 seconds);

private:
    RobotLink::State m_state = RobotLink::Disconnected;
    QDateTime m_since;
};

} // namespace Velk

#endif
