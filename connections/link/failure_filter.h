// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_FAILURE_FILTER_H
#define CONNECTIONS_LINK_FAILURE_FILTER_H

#include <connections/link/link_export.h>

#include <QString>
#include <QStringList>

#include <chrono>
#include <deque>

namespace Velk {

/// Bounds what a connection reports: the same failure once, however often it tries again, and no more than
/// maxPerInterval failures in an interval, however many texts they have.
class LINK_EXPORT FailureFilter
{
public:
    using Clock = std::chrono::steady_clock;

    static constexpr int maxPerInterval = 20;
    static constexpr std::chrono::seconds interval{60};

    /// Whether the failure is to be reported. It is not when it was reported since the last clear() (the newest 100 are
    /// remembered), or when maxPerInterval failures were reported within the interval before `now`. One that is not
    /// reported for that second reason is reported when it comes again later.
    bool isNew(const QString& title, const QString& message, Clock::time_point now = Clock::now());
    /// Forgets which failures were reported; those of the interval still count.
    void clear() { m_reported.clear(); }

private:
    QStringList m_reported;
    std::deque<Clock::time_point> m_times; // of the newest maxPerInterval reports
};

} // namespace Velk

#endif
