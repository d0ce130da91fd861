#include "redis_round_trips.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace Velk {

RedisRoundTrips::RedisRoundTrips(RedisSession* session, QObject* parent)
    : QObject(parent)
    , m_session(session)
{
    connect(session, &RedisSession::replaced, this, [this] {
        m_timesMs.clear();
        if (m_done)
            ping();
    });
}

void RedisRoundTrips::measure(std::function<void(const std::vector<double>&)> done)
{
    m_done = std::move(done);
    m_timesMs.clear();
    ping();
}

double RedisRoundTrips::percentile99(const std::vector<double>& sortedMs)
{
    const auto rank = std::size_t(std::ceil(0.99 * double(sortedMs.size())));
    return sortedMs.empty() ? 0.0 : sortedMs[rank - 1];
}

void RedisRoundTrips::ping()
{
    m_clock.start();
    m_session->send(this, {"PING"}, [this](const RedisReply&) {
        m_timesMs.push_back(double(m_clock.nsecsElapsed()) / 1e6);
        if (m_timesMs.size() < count) {
            ping();
            return;
        }
        std::sort(m_timesMs.begin(), m_timesMs.end());
        // Last statement on purpose: whoever is told may delete this object.
        std::exchange(m_done, nullptr)(m_timesMs);
    });
}

} // namespace Velk
