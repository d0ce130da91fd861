// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_SAMPLE_STAMPS_H
#define CONNECTIONS_LINK_SAMPLE_STAMPS_H

#include <cmath>
#include <limits>

namespace Velk {

/// Makes the time stamps of one key strictly ascending: a stamp that is not later than the last one, as after a clock
/// was set back, becomes the next double above that one.
class SampleStamps
{
public:
    /// Minus infinity before the first stamp.
    double last() const { return m_last; }
    double next(double stamp)
    {
        m_last = stamp > m_last ? stamp : std::nextafter(m_last, std::numeric_limits<double>::infinity());
        return m_last;
    }

private:
    double m_last = -std::numeric_limits<double>::infinity();
};

} // namespace Velk

#endif
