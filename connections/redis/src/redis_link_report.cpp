// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_link_report.h"

namespace Velk {

LinkReport linkReport(const RedisServerReport& report)
{
    LinkReport lines;
    if (!report.robotName.isEmpty())
        lines.add(QStringLiteral("name"), report.robotName);
    const QString version = report.version.isEmpty() ? QStringLiteral("of unknown version") : report.version;
    QStringList server = {QStringLiteral("Redis ") + version, report.mode, report.role,
                          QStringLiteral("at ") + report.address};
    server.removeAll(QString());
    lines.add(QStringLiteral("server"), server.join(QStringLiteral(", ")));
    lines.add(QStringLiteral("round trip"), QStringLiteral("%1 ms, the longest of 20 %2 ms")
                                                .arg(report.roundTripMedianMs, 0, 'f', 3)
                                                .arg(report.roundTripLongestMs, 0, 'f', 3));
    lines.add(QStringLiteral("clock"), QStringLiteral("%1%2 s against this computer's")
                                           .arg(report.clockOffsetSeconds < 0 ? QString() : QStringLiteral("+"))
                                           .arg(report.clockOffsetSeconds, 0, 'f', 3));
    lines.add(QStringLiteral("user"),
              report.user.isEmpty() ? QStringLiteral("not reported by the server") : report.user);
    lines.add(QStringLiteral("granted"), report.granted.join(QLatin1Char(' ')));
    if (!report.refused.isEmpty())
        lines.add(QStringLiteral("refused"), report.refused.join(QLatin1Char(' ')));
    return lines;
}

} // namespace Velk
