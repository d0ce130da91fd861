#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_GROUP_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_GROUP_H

#include "redis_periodic_timer.h"
#include "redis_sample_queue.h"
#include "redis_watched_key.h"

#include <connections/redis/client/redis_inquiry.h>

#include <QByteArray>
#include <QObject>

#include <memory>
#include <vector>

namespace Velk {

/// The keys whose values are sampled with one period. Every tick asks the server for its time and for all values in one
/// pipeline. A tick that finds the answers to the one before outstanding is left out and counted, so a slow server is
/// never asked for more than it can give.
class RedisSamplingGroup : public QObject
{
    Q_OBJECT

public:
    /// The session and the queue outlive this object.
    RedisSamplingGroup(int periodMs, RedisSession* session, RedisSampleQueue* queue,
                       std::shared_ptr<RedisCarryOver> carryOver);

    void setPeriod(int periodMs) { m_timer.start(periodMs); }
    /// The keys to sample from now on; also to be called when their sources have become others.
    void setKeys(const std::vector<RedisWatchedKeyPtr>& keys);

private:
    struct Tick
    {
        double stamp = 0.0; ///< seconds since the Unix epoch; 0: the server has not answered its time
    };
    struct Chunk
    {
        QByteArray command;
        std::vector<RedisSourceRef> sources;
    };

    void onTimeout();
    void skipTick();
    void tick();
    void buildChunks();
    void onTime(Tick& tick, const RedisReply& reply);
    void onValues(const Tick& tick, const Chunk& chunk, const RedisReply& reply);
    void takeValue(const Tick& tick, const RedisSourceRef& ref, const RedisReply& reply);

    RedisSession* m_session;
    RedisInquiry m_inquiry;
    RedisSampleQueue* m_queue;
    std::shared_ptr<RedisCarryOver> m_carryOver;
    RedisPeriodicTimer m_timer;
    std::vector<RedisWatchedKeyPtr> m_keys;
    std::vector<std::shared_ptr<Chunk>> m_chunks;
    std::size_t m_keysPerCommand;
};

} // namespace Velk

#endif
