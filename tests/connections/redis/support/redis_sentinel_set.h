// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_SENTINEL_SET_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_SENTINEL_SET_H

#include "redis_server.h"

#include <array>

/// A master, its replica, and three sentinels that watch over them under the service name "main" and make the replica
/// the master about a second after the master went away.
class RedisSentinelSet
{
public:
    /// `serverArguments` go to the master and to the replica.
    explicit RedisSentinelSet(const QStringList& serverArguments = {});

    /// Starts all five and waits until each sentinel knows the replica and the other sentinels. On false errorString()
    /// says why.
    bool start();
    QString errorString() const { return m_errorString; }

    /// "redis+sentinel://127.0.0.1:1,127.0.0.1:2,127.0.0.1:3/main/arm1".
    QString url(const QString& robot = QStringLiteral("arm1")) const;

    RedisServer& server(int index) { return m_servers.at(std::size_t(index)); }
    RedisServer& sentinel(int index) { return m_sentinels.at(std::size_t(index)); }
    /// The index of the server that the sentinels name as the master; -1 when they do not agree.
    int masterIndex();

    /// Asks a sentinel to make the replica the master, the old master becoming its replica.
    bool requestFailover();
    /// Waits until the sentinels agree on this server as the master and it takes writes.
    bool waitForMaster(int index);
    /// Waits until what was written to the master has reached the replica.
    bool waitForReplication();

private:
    bool isComplete(RedisServer& sentinel);

    std::array<RedisServer, 2> m_servers;
    std::array<RedisServer, 3> m_sentinels;
    QString m_errorString;
};

#endif
