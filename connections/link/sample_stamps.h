// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_SAMPLE_STAMPS_H
#define CONNECTIONS_LINK_SAMPLE_STAMPS_H

#include <algorithm>
#include <cmath>
#include <limits>

namespace Velk {

/// Makes the time stamps of one key strictly ascending: a stamp that is not later than the last one, as after a clock
/// was set back, becomes the last one plus a step.
class SampleStamps
{
public:
    /// `step`: seconds. Where it is less than the distance to the next double, as with 0, the step is that distance.
    explicit SampleStamps(double step = 0.0)
        : m_step(step)
    {}

    /// Minus infinity before the first stamp.
    double last() const { return m_last; }
    double next(double stamp)
    {
        if (stamp > m_last)
            m_last = stamp;
        else
            m_last = std::max(m_last + m_step, std::nextafter(m_last, std::numeric_limits<double>::infinity()));
        return m_last;
    }
    /// Makes the next stamp later than this one as well.
    void raise(double stamp) { m_last = std::max(m_last, stamp); }

private:
    double m_step;
    double m_last = -std::numeric_limits<double>::infinity();
};

} // namespace Velk

#endif
