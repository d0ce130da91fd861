// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_TESTED_HISTORY_H
#define TESTS_ITEMMODELS_TESTED_HISTORY_H

#include "model_text.h"
#include "watched_robot.h"

#include <itemmodels/sample_history.h>

namespace Velk {

/// "time=value" of each sample; a "|" before one that comes after a gap.
inline QString spanText(const HistorySpan& span)
{
    QStringList samples;
    for (const HistorySample& sample : span)
        samples << (sample.isAfterGap ? QStringLiteral("| ") : QString()) +
                       QStringLiteral("%1=%2").arg(sample.time).arg(sample.value.toString());
    return samples.join(QLatin1Char(' '));
}

/// A history of a robot under the test's hand.
struct TestedHistory
{
    QString samples(const char* name) const { return spanText(history.samples(text(name))); }

    WatchedRobot robot;
    SampleHistory history{robot.keys};
};

} // namespace Velk

#endif
