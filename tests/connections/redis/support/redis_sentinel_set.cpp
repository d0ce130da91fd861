// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_sentinel_set.h"

#include "redis_test_client.h"

#include <QFile>

#include <algorithm>

namespace {

// What the master and the replica need so that a fail-over takes a second: no delay before a full synchronisation.
QStringList serverArguments(const QStringList& further)
{
    return QStringList{QStringLiteral("--repl-diskless-sync-delay"), QStringLiteral("0")} + further;
}

QByteArray field(const QByteArrayList& fieldsAndValues, const QByteArray& name)
{
    return fieldsAndValues.value(fieldsAndValues.indexOf(name) + 1);
}

} // namespace

RedisSentinelSet::RedisSentinelSet(const QStringList& further)
    : m_servers{RedisServer(serverArguments(further)), RedisServer(serverArguments(further))}
    , m_sentinels{RedisServer({}, RedisServer::Sentinel), RedisServer({}, RedisServer::Sentinel),
                  RedisServer({}, RedisServer::Sentinel)}
{}

bool RedisSentinelSet::start()
{
    for (RedisServer& server : m_servers) {
        if (!server.start()) {
            m_errorString = server.errorString();
            return false;
        }
    }
    const QByteArray master = QByteArray::number(server(0).port());
    RedisTestClient(server(1).port()).command({"REPLICAOF", "127.0.0.1", master});

    for (RedisServer& sentinel : m_sentinels) {
        QFile file(sentinel.configurationPath());
        file.open(QIODevice::WriteOnly);
        file.write("sentinel monitor main 127.0.0.1 " + master +
                   " 2\n"
                   "sentinel down-after-milliseconds main 500\n"
                   "sentinel failover-timeout main 3000\n");
        file.close();
        if (!sentinel.start()) {
            m_errorString = sentinel.errorString();
            return false;
        }
    }
    const bool isReady = waitUntil([this] {
        return std::all_of(m_sentinels.begin(), m_sentinels.end(),
                           [this](RedisServer& sentinel) { return isComplete(sentinel); });
    });
    if (!isReady)
        m_errorString = QStringLiteral("The sentinels do not find each other:\n") + sentinel(0).log();
    return isReady;
}

bool RedisSentinelSet::isComplete(RedisServer& sentinel)
{
    RedisTestClient client(sentinel.port());
    const QByteArrayList master = client.list({"SENTINEL", "MASTER", "main"});
    const QByteArrayList replica = client.list({"SENTINEL", "REPLICAS", "main"});
    return field(master, "num-other-sentinels") == "2" && field(master, "num-slaves") == "1" &&
           replica.join().contains("master-link-status\nok");
}

QString RedisSentinelSet::url(const QString& robot) const
{
    QStringList addresses;
    for (const RedisServer& sentinel : m_sentinels)
        addresses << QStringLiteral("127.0.0.1:%1").arg(sentinel.port());
    return QStringLiteral("redis+sentinel://%1/main/%2").arg(addresses.join(QLatin1Char(',')), robot);
}

int RedisSentinelSet::masterIndex()
{
    QByteArrayList ports;
    for (RedisServer& sentinel : m_sentinels) {
        if (sentinel.isRunning())
            ports << RedisTestClient(sentinel.port()).list({"SENTINEL", "GET-MASTER-ADDR-BY-NAME", "main"}).value(1);
    }
    const bool agree = std::adjacent_find(ports.cbegin(), ports.cend(), std::not_equal_to<>()) == ports.cend();
    for (int i = 0; agree && i < int(m_servers.size()); ++i) {
        if (ports.value(0).toInt() == server(i).port())
            return i;
    }
    return -1;
}

bool RedisSentinelSet::requestFailover()
{
    return waitUntil([this] {
        return RedisTestClient(sentinel(0).port()).command({"SENTINEL", "FAILOVER", "main"}) == "OK";
    });
}

bool RedisSentinelSet::waitForMaster(int index)
{
    return waitUntil([this, index] {
        return masterIndex() == index && RedisTestClient(server(index).port()).list({"ROLE"}).value(0) == "master";
    });
}

bool RedisSentinelSet::waitForReplication()
{
    const int master = masterIndex();
    if (master == -1)
        return false;
    RedisTestClient client(server(master).port());
    return waitUntil([&client] { return client.command({"WAIT", "1", "100"}) == "1"; });
}
