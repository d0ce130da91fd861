// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_round_trips.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Velk {

RedisRoundTrips::RedisRoundTrips(RedisSession* session, QObject* parent)
    : QObject(parent)
    , m_inquiry(session)
{
    connect(&m_inquiry, &RedisInquiry::finished, this, &RedisRoundTrips::onFinished);
    connect(&m_inquiry, &RedisInquiry::interrupted, this, &RedisRoundTrips::start);
}

void RedisRoundTrips::measure(std::function<void(const std::vector<double>&)> done)
{
    m_done = std::move(done);
    m_inquiry.cancel();
    start();
}

double RedisRoundTrips::percentile99(const std::vector<double>& sortedMs)
{
    const auto rank = std::size_t(std::ceil(0.99 * double(sortedMs.size())));
    return sortedMs.empty() ? 0.0 : sortedMs[rank - 1];
}

void RedisRoundTrips::start()
{
    m_timesMs.clear();
    ping();
}

void RedisRoundTrips::ping()
{
    m_clock.start();
    m_inquiry.ask({"PING"}, [this](const RedisReply&) {
        m_timesMs.push_back(double(m_clock.nsecsElapsed()) / 1e6);
        if (m_timesMs.size() < count)
            ping();
    });
}

void RedisRoundTrips::onFinished()
{
    std::sort(m_timesMs.begin(), m_timesMs.end());
    // Last statement on purpose: the receiver may delete this object.
    std::exchange(m_done, nullptr)(m_timesMs);
}

} // namespace Velk
