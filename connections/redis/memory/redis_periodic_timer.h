#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_PERIODIC_TIMER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_PERIODIC_TIMER_H

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

namespace Velk {

/// A timer whose period can be changed without putting its next tick off: a change counts from the last tick on, so
/// that one which is changed again and again goes on ticking.
class RedisPeriodicTimer : public QObject
{
    Q_OBJECT

public:
    RedisPeriodicTimer();

    /// Starts, or changes the period of the running timer.
    void start(int periodMs);
    void stop() { m_timer.stop(); }
    bool isActive() const { return m_timer.isActive(); }

Q_SIGNALS:
    void timeout();

private:
    void onTimeout();

    QTimer m_timer;
    QElapsedTimer m_clock;
    qint64 m_lastTickMs = 0;
    int m_periodMs = 0;
};

} // namespace Velk

#endif
