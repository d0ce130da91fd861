#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_HISTORY_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_HISTORY_H

#include "redis_stream_position.h"

#include <connections/link/sample_losses.h>

#include <QHash>
#include <QString>

#include <limits>
#include <map>

namespace Velk {

/// What is remembered of one key for as long as the robot is open.
struct RedisKeyHistory
{
    SampleLosses losses;
    double newestStamp = -std::numeric_limits<double>::infinity();
    /// Where the key's streams were when the connection was lost, by the server's key: reading goes on from there.
    QHash<QByteArray, RedisStreamPosition> positions;
};

/// What outlives a connection: losses and time stamps go on over a reconnection, and so do streams.
struct RedisSamplingHistory
{
    std::map<QString, RedisKeyHistory> keys; // a map: watched keys point to their entries
    SampleLosses total;
};

} // namespace Velk

#endif
