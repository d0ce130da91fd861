// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_GROUP_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_GROUP_H

#include "redis_sample_intake.h"
#include "redis_watched_key.h"

#include <connections/redis/client/redis_inquiry.h>

#include <QByteArray>
#include <QObject>

#include <memory>
#include <vector>

namespace Velk {

/// The keys whose values are sampled with one period. Every tick asks the server for its time and for all values in one
/// pipeline. A tick is skipped and counted while the answers to the previous one are outstanding: requests do not pile
/// up on a slow server. A tick counts as skipped for the keys concerned when the server refuses it, and when the
/// connection moves to another node of a cluster before the answers.
class RedisSamplingGroup : public QObject
{
    Q_OBJECT

public:
    /// The session and the intake outlive this object.
    RedisSamplingGroup(RedisSession* session, RedisSampleIntake* intake, std::shared_ptr<RedisCarryOver> carryOver);

    /// Samples the keys once, or counts the tick as skipped. `missed` ticks of the period were left out before it.
    void tick(int periodMs, qint64 missed);
    /// `count` ticks of the period were missed.
    void countMissedTicks(int periodMs, qint64 count);
    /// The keys to sample from now on; also to be called when their sources have become others.
    void setKeys(const std::vector<RedisWatchedKeyPtr>& keys);

private:
    struct Chunk
    {
        QByteArray command;
        std::vector<RedisSourceRef> sources;
    };
    struct Tick
    {
        double stamp = 0.0; ///< seconds since the Unix epoch; 0: the server has not answered its time
        std::vector<std::shared_ptr<Chunk>> unanswered; ///< refused ones too
    };

    void countTicks(LossCause cause, qint64 count, double from, double to);
    void sample();
    void buildChunks();
    void onTime(const RedisReply& reply);
    void onValues(const std::shared_ptr<Chunk>& chunk, const RedisReply& reply);
    void takeValue(const RedisSourceRef& ref, const RedisReply& reply);
    void endTick();

    RedisSession* m_session;
    RedisInquiry m_inquiry;
    RedisSampleIntake* m_intake;
    std::shared_ptr<RedisCarryOver> m_carryOver;
    std::vector<RedisWatchedKeyPtr> m_keys;
    std::vector<std::shared_ptr<Chunk>> m_chunks;
    Tick m_tick;                         // the latest one
    QVector<LossAccount*> m_sampledKeys; // those with a source in a chunk
    std::size_t m_keysPerCommand;
};

} // namespace Velk

#endif
