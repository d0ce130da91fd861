// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_SAMPLE_LOSSES_H
#define CONNECTIONS_LINK_SAMPLE_LOSSES_H

#include <QtGlobal>

namespace Velk {

/// Counts of what was not delivered to the models, by cause, since the robot was opened.
struct SampleLosses
{
    qint64 skippedTicks = 0; ///< sampling ticks refused, or skipped because the previous one had no answer yet
    qint64 missedTicks = 0;  ///< sampling ticks that came due while this program was busy or stopped
    qint64 dropped = 0;      ///< samples and occurrences that did not fit in the connection's buffer between deliveries
    qint64 trimmed = 0;      ///< occurrences that the robot itself had discarded before they could be fetched

    qint64 total() const { return skippedTicks + missedTicks + dropped + trimmed; }
};

inline bool operator==(const SampleLosses& a, const SampleLosses& b)
{
    return a.skippedTicks == b.skippedTicks && a.missedTicks == b.missedTicks && a.dropped == b.dropped &&
           a.trimmed == b.trimmed;
}

inline bool operator!=(const SampleLosses& a, const SampleLosses& b)
{
    return !(a == b);
}

} // namespace Velk

#endif
