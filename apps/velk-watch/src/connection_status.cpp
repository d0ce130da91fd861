// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "connection_status.h"

#include <algorithm>

namespace Velk {

void ConnectionStatus::setState(RobotLink::State state, const QDateTime& since)
{
    if (m_state == state && m_since.isValid())
        return;
    m_state = state;
    m_since = since;
}

QString ConnectionStatus::text(const QDateTime& now) const
{
    // No robot was opened yet: there is no duration.
    if (!m_since.isValid())
        return tr("Disconnected");
    const QString duration = durationText(m_since.secsTo(now));
    switch (m_state) {
    case RobotLink::Disconnected:
        return tr("Disconnected for %1").arg(duration);
    case RobotLink::Connecting:
        return tr("Connecting for %1").arg(duration);
    case RobotLink::Connected:
        return tr("Connected for %1").arg(duration);
    case RobotLink::Lost:
        return tr("Connection lost for %1, trying again").arg(duration);
    }
    return {};
}

QString ConnectionStatus::durationText(qint64 seconds)
{
    const qint64 whole = std::max<qint64>(0, seconds);
    if (whole < 60)
        return tr("%1 s").arg(whole);
    if (whole < 3600)
        return tr("%1 min %2 s").arg(whole / 60).arg(whole % 60);
    if (whole < 86400)
        return tr("%1 h %2 min").arg(whole / 3600).arg(whole / 60 % 60);
    return tr("%1 d %2 h").arg(whole / 86400).arg(whole / 3600 % 24);
}

} // namespace Velk
