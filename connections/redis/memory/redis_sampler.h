// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLER_H

#include "redis_key_resolver.h"
#include "redis_sample_intake.h"
#include "redis_sampling_group.h"
#include "redis_stream_reader.h"
#include "redis_watched_key.h"

#include <connections/link/sampling_schedule.h>
#include <connections/link/watch_table.h>
#include <robotconnection/memory_interface.h>

#include <QObject>
#include <QTimer>

#include <map>
#include <memory>
#include <vector>

namespace Velk {

/// Samples the watched keys and delivers what was gathered: one sampling group for each period. Streams are read
/// with a period of their own: all their entries are delivered, whatever the sampling period.
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
    /// No longer samples; what was gathered stays. The ledger is not used afterwards.
    void halt();
    /// Discards what was gathered. Streams that are still watched are read from their end with the next start().
    void stop();
    bool isRunning() const { return m_schedule.isRunning(); }
    void setGatherPeriod(int periodMs);
    void setSamplingPeriod(int periodMs);

    /// After halt(), when the connection is lost: delivers what was gathered, if anything, and remembers where the
    /// streams are.
    void endForReconnection();

Q_SIGNALS:
    void gathered(const Velk::GatheredData& data);

private:
    void sample(int periodMs, qint64 missedTicks);
    void countMissedTicks(int periodMs, qint64 count);
    void deliver();
    void resolveAgain();
    void group();
    std::vector<RedisWatchedKeyPtr> allKeys() const;
    void forgetPositions();

    RedisSession* m_session;
    std::shared_ptr<RedisCarryOver> m_carryOver;
    RedisSampleIntake m_intake;
    RedisKeyResolver m_resolver;
    RedisStreamReader m_streams;
    SamplingSchedule m_schedule;
    int m_streamPeriodMs = 0;
    QTimer m_resolveTimer;
    WatchTable<RedisWatchedKeyPtr> m_keys;
    std::vector<RedisWatchedKeyPtr> m_unresolved; // watched since the last grouping
    QString m_nextUnresolvedKey;                  // where resolveAgain() goes on
    std::map<int, std::unique_ptr<RedisSamplingGroup>> m_groups;
};

} // namespace Velk

#endif
