// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_SAMPLING_TICKS_H
#define CONNECTIONS_LINK_SAMPLING_TICKS_H

#include <QtGlobal>

#include <algorithm>

namespace Velk {

/// The moments at which something of one period happens: the multiples of the period on a clock of the caller, which
/// counts milliseconds and never goes back. So equal periods meet, and the rate stays true however late a tick is.
class SamplingTicks
{
public:
    /// What is due at some moment. If several ticks are due, the newest one is taken and the others are missed.
    struct Due
    {
        bool isDue = false;
        qint64 missed = 0;
    };

    /// The first tick is the first multiple after `now`. A period is at least 1.
    explicit SamplingTicks(int periodMs = 1, qint64 now = 0)
        : m_periodMs(std::max(periodMs, 1))
        , m_last(now)
        , m_countedFrom(now)
    {}

    int periodMs() const { return m_periodMs; }
    /// The ticks of the new period go on from the last one: frequent changes of the period do not delay the next tick.
    /// Ticks before `now` do not count as missed.
    void setPeriod(int periodMs, qint64 now)
    {
        m_periodMs = std::max(periodMs, 1);
        m_countedFrom = now;
    }

    /// How many ticks have come due by now and were missed, without the newest one, which is still to be taken. Each is
    /// returned once.
    qint64 takeMissed(qint64 now)
    {
        const qint64 missed = countDue(now) - 1;
        if (missed <= 0)
            return 0;
        m_last = (now / m_periodMs - 1) * m_periodMs;
        return missed;
    }

    /// When the next tick is due; in the past when it is late.
    qint64 next() const { return (m_last / m_periodMs + 1) * m_periodMs; }

    /// Whether a tick has come due since the last call that had one, and how many more were missed before it.
    Due take(qint64 now)
    {
        if (now < next())
            return {};
        const qint64 missed = std::max<qint64>(countDue(now) - 1, 0);
        m_last = now;
        return {true, missed};
    }

private:
    qint64 countDue(qint64 now) const { return now / m_periodMs - std::max(m_last, m_countedFrom) / m_periodMs; }

    int m_periodMs;
    qint64 m_last;        // time of the last tick that was taken
    qint64 m_countedFrom; // when the period came into force
};

} // namespace Velk

#endif
