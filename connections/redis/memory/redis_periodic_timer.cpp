#include "redis_periodic_timer.h"

#include <algorithm>

namespace Velk {

RedisPeriodicTimer::RedisPeriodicTimer()
{
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &RedisPeriodicTimer::onTimeout);
    m_clock.start();
}

void RedisPeriodicTimer::start(int periodMs)
{
    m_periodMs = std::max(1, periodMs);
    if (!isActive())
        m_lastTickMs = m_clock.elapsed();
    m_timer.start(int(std::max<qint64>(0, m_lastTickMs + m_periodMs - m_clock.elapsed())));
}

void RedisPeriodicTimer::onTimeout()
{
    // From tick to tick, not from the handling of one to the next: the rate stays true. A tick that is missed
    // altogether is left out.
    const qint64 now = m_clock.elapsed();
    m_lastTickMs = std::max(m_lastTickMs + m_periodMs, now - m_periodMs + 1);
    m_timer.start(int(std::clamp<qint64>(m_lastTickMs + m_periodMs - now, 0, m_periodMs)));
    emit timeout();
}

} // namespace Velk
