#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLER_H

#include "redis_key_resolver.h"
#include "redis_periodic_timer.h"
#include "redis_sample_queue.h"
#include "redis_sampling_group.h"
#include "redis_stream_reader.h"
#include "redis_watched_key.h"

#include <connections/redis/client/redis_session.h>

#include <QMap>
#include <QObject>
#include <QTimer>
#include <QVariant>

#include <map>
#include <memory>
#include <vector>

namespace Velk {

/// Samples the watched keys and delivers what was gathered: one sampling group per period, one timer for the delivery,
/// and one for the streams, which are read on whatever the periods are, since each of their entries counts.
class RedisSampler : public QObject
{
    Q_OBJECT

public:
    /// The session outlives this object. Streams with a position in `carryOver` are read on from there.
    RedisSampler(RedisSession* session, std::shared_ptr<RedisCarryOver> carryOver);
    ~RedisSampler() override;

    void watch(const QString& name, const QByteArray& rawName, std::vector<RedisSource> sources, int periodMs);
    void unwatch(const QString& name);
    void unwatchAll();

    void start(int gatherPeriodMs, int samplingPeriodMs);
    /// What was gathered and not delivered is dropped; streams that are watched on begin anew with the next start().
    void stop();
    bool isRunning() const { return m_gatherTimer.isActive(); }
    void setGatherPeriod(int periodMs);
    void setSamplingPeriod(int periodMs);

    /// Delivers what was gathered, if anything, and remembers where the streams are. The end, when the connection is
    /// lost: nothing is sampled afterwards.
    void endForReconnection();

Q_SIGNALS:
    void gathered(const QMap<QString, QMap<double, QVariant>>& data);

private:
    void startTimers(int gatherPeriodMs);
    void stopTimers();
    void deliver();
    void resolveAgain();
    void scheduleGrouping();
    void group();
    int samplingPeriodOf(const RedisWatchedKey& key) const;
    void forgetPositions();

    RedisSession* m_session;
    std::shared_ptr<RedisCarryOver> m_carryOver;
    RedisSampleQueue m_queue;
    RedisKeyResolver m_resolver;
    RedisStreamReader m_streams;
    RedisPeriodicTimer m_gatherTimer;
    RedisPeriodicTimer m_streamTimer;
    QTimer m_resolveTimer;
    QTimer m_groupTimer;
    int m_samplingPeriodMs = 0;
    std::map<QString, RedisWatchedKeyPtr> m_keys;
    std::vector<RedisWatchedKeyPtr> m_unresolved; // watched since the last grouping
    QString m_nextUnresolvedKey;                  // where resolveAgain() goes on
    std::map<int, std::unique_ptr<RedisSamplingGroup>> m_groups;
};

} // namespace Velk

#endif
