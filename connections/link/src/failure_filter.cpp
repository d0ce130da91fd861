// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/failure_filter.h>

namespace Velk {

namespace {

constexpr int maxRemembered = 100;

} // namespace

bool FailureFilter::isNew(const QString& title, const QString& message, Clock::time_point now)
{
    const bool isIntervalFull = m_times.size() == maxPerInterval && now - m_times.front() < interval;
    const QString failure = title + QLatin1Char('\n') + message;
    if (isIntervalFull || m_reported.contains(failure))
        return false;
    if (m_times.size() == maxPerInterval)
        m_times.pop_front();
    m_times.push_back(now);
    if (m_reported.size() == maxRemembered)
        m_reported.removeFirst();
    m_reported.append(failure);
    return true;
}

} // namespace Velk
