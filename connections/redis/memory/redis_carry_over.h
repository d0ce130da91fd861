// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_CARRY_OVER_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_CARRY_OVER_H

#include "redis_stream_position.h"

#include <connections/link/loss_ledger.h>
#include <connections/link/sample_stamps.h>

#include <QHash>
#include <QString>

#include <map>

namespace Velk {

/// What is kept of one key for as long as the robot is open.
struct RedisCarriedKey
{
    LossAccount* losses = nullptr;
    /// The step is the resolution of the server's clock, in which the robot's producers count as well.
    SampleStamps stamps = SampleStamps(1e-6);
    /// Where the key's streams were when the connection was lost, by the server's key: reading goes on from there.
    QHash<QByteArray, RedisStreamPosition> positions;
};

/// What outlives a connection: time stamps go on over a reconnection, and so do streams. The ledger is the link's.
struct RedisCarryOver
{
    explicit RedisCarryOver(LossLedger* lossLedger)
        : ledger(lossLedger)
    {}

    RedisCarriedKey* ofKey(const QString& name)
    {
        RedisCarriedKey& key = keys[name];
        if (!key.losses)
            key.losses = ledger->account(name);
        return &key;
    }

    LossLedger* ledger;
    std::map<QString, RedisCarriedKey> keys; // a map: watched keys point to their entries
};

} // namespace Velk

#endif
