#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_HISTORY_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLING_HISTORY_H

#include "redis_stream_position.h"

#include <connections/link/loss_ledger.h>

#include <QHash>
#include <QString>

#include <limits>
#include <map>

namespace Velk {

/// What is remembered of one key for as long as the robot is open.
struct RedisKeyHistory
{
    LossAccount* losses = nullptr;
    double newestStamp = -std::numeric_limits<double>::infinity();
    /// Where the key's streams were when the connection was lost, by the server's key: reading goes on from there.
    QHash<QByteArray, RedisStreamPosition> positions;
};

/// What outlives a connection: time stamps go on over a reconnection, and so do streams. The ledger is the link's.
struct RedisSamplingHistory
{
    explicit RedisSamplingHistory(LossLedger* lossLedger)
        : ledger(lossLedger)
    {}

    RedisKeyHistory* ofKey(const QString& name)
    {
        RedisKeyHistory& key = keys[name];
        if (!key.losses)
            key.losses = ledger->account(name);
        return &key;
    }

    LossLedger* ledger;
    std::map<QString, RedisKeyHistory> keys; // a map: watched keys point to their entries
};

} // namespace Velk

#endif
