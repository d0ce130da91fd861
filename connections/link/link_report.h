// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_LINK_REPORT_H
#define CONNECTIONS_LINK_LINK_REPORT_H

#include <QString>
#include <QVector>

namespace Velk {

/// Facts about the robot's side, one line per subject, translated and ready to print.
struct LinkReport
{
    struct Line
    {
        QString subject; ///< a word or two: "round trip"
        QString text;    ///< "0.210 ms, the longest of 20 0.450 ms"
    };

    QVector<Line> lines; ///< in the order in which they are shown; empty when there is nothing to say

    void add(const QString& subject, const QString& text) { lines.append({subject, text}); }
};

} // namespace Velk

#endif
