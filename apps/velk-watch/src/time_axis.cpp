// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "time_axis.h"

#include <algorithm>

namespace Velk {

void TimeAxis::setNewest(double time)
{
    m_newest = time;
    if (m_isFollowing || !m_hasNow)
        m_now = m_newest;
    m_hasNow = true;
}

void TimeAxis::restart()
{
    m_hasNow = false;
}

void TimeAxis::setFollowing(bool isFollowing)
{
    m_isFollowing = isFollowing;
    if (!isFollowing)
        return;
    m_right = 0.0;
    m_now = m_newest;
}

void TimeAxis::zoom(double factor, double around)
{
    if (!(factor > 0.0))
        return;
    const double span = std::clamp(m_span * factor, minSpan, maxSpan);
    if (!m_isFollowing) {
        // The fraction of the view to the right of the fixed time stays.
        const double fixed = std::clamp(around, left(), m_right);
        m_right = std::min(0.0, fixed + (m_right - fixed) * span / m_span);
    }
    m_span = span;
}

void TimeAxis::pan(double seconds)
{
    if (seconds == 0.0)
        return;
    m_isFollowing = false;
    m_right = std::clamp(m_right + seconds, -maxSpan, 0.0);
}

void TimeAxis::reset()
{
    m_span = initialSpan;
    setFollowing(true);
}

} // namespace Velk
