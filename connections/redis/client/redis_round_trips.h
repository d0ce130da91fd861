// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_CLIENT_REDIS_ROUND_TRIPS_H
#define CONNECTIONS_REDIS_CLIENT_REDIS_ROUND_TRIPS_H

#include "redis_inquiry.h"

#include <QElapsedTimer>
#include <QObject>

#include <functional>
#include <vector>

namespace Velk {

/// Measures round trips to the server, one PING after the other.
class RedisRoundTrips : public QObject
{
    Q_OBJECT

public:
    explicit RedisRoundTrips(RedisSession* session, QObject* parent = nullptr);

    /// Measures, and calls `done` with the times in milliseconds, ascending; not when this object is deleted before. A
    /// connection that is replaced meanwhile is measured from the start.
    void measure(std::function<void(const std::vector<double>&)> done);

    static constexpr int count = 20;
    /// The 99th percentile (nearest rank). Of up to 100 times it is the longest.
    static double percentile99(const std::vector<double>& sortedMs);

private:
    void start();
    void ping();
    void onFinished();

    RedisInquiry m_inquiry;
    QElapsedTimer m_clock;
    std::vector<double> m_timesMs;
    std::function<void(const std::vector<double>&)> m_done;
};

} // namespace Velk

#endif
