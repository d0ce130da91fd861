// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_cluster.h"

#include "redis_test_client.h"

#include <QProcess>

#include <algorithm>
#include <set>

namespace {

constexpr int nodeTotal = 6;

QStringList clusterArguments(const QStringList& further)
{
    return QStringList{
               QStringLiteral("--cluster-enabled"),
               QStringLiteral("yes"),
               // Nodes of a busy machine need time to join: a node forgets one that takes longer than this.
               QStringLiteral("--cluster-node-timeout"),
               QStringLiteral("60000"),
               // A node that is missing leaves the other nodes' slots in service.
               QStringLiteral("--cluster-require-full-coverage"),
               QStringLiteral("no"),
               QStringLiteral("--cluster-replica-validity-factor"),
               QStringLiteral("0"),
               QStringLiteral("--repl-diskless-sync-delay"),
               QStringLiteral("0"),
           } +
           further;
}

// A node that has just joined knows who serves a slot before it serves any.
bool isInService(const std::unique_ptr<RedisServer>& node)
{
    return RedisTestClient(node->port()).command({"CLUSTER", "INFO"}).contains("cluster_state:ok");
}

} // namespace

RedisCluster::RedisCluster(const QStringList& nodeArguments)
{
    for (int i = 0; i < nodeTotal; ++i)
        m_nodes.push_back(std::make_unique<RedisServer>(clusterArguments(nodeArguments)));
}

bool RedisCluster::start()
{
    QStringList arguments = {QStringLiteral("--cluster"), QStringLiteral("create")};
    for (const auto& node : m_nodes) {
        if (!node->start()) {
            m_errorString = node->errorString();
            return false;
        }
        arguments << QStringLiteral("127.0.0.1:%1").arg(node->port());
    }
    arguments << QStringLiteral("--cluster-replicas") << QStringLiteral("1") << QStringLiteral("--cluster-yes");

    const QString program = findProgram(QStringLiteral("redis-cli"), QStringLiteral("redis-tools"), &m_errorString);
    if (program.isEmpty())
        return false;
    QProcess create;
    create.setProcessChannelMode(QProcess::MergedChannels);
    create.start(program, arguments);
    if (!create.waitForFinished(120000) || create.exitCode() != 0) {
        m_errorString = QStringLiteral("redis-cli --cluster create failed:\n") + QString::fromUtf8(create.readAll());
        return false;
    }
    const bool isReady = waitUntil([this] {
        std::set<int> masters;
        for (int slot : {0, 8192, 16383})
            masters.insert(masterOf(slot));
        return std::all_of(m_nodes.begin(), m_nodes.end(), isInService) && masters.size() == 3 &&
               masters.count(-1) == 0 &&
               std::all_of(masters.begin(), masters.end(), [this](int master) { return replicaOf(master) != -1; });
    });
    for (const auto& node : m_nodes)
        RedisTestClient(node->port()).command({"CONFIG", "SET", "cluster-node-timeout", "1000"});
    if (!isReady)
        m_errorString = QStringLiteral("The cluster's nodes do not agree:\n") + node(0).log();
    return isReady;
}

QString RedisCluster::url(int node, const QString& robot) const
{
    return m_nodes.at(std::size_t(node))->url(robot);
}

int RedisCluster::slotOf(const QString& robot)
{
    for (const auto& node : m_nodes) {
        if (node->isRunning())
            return RedisTestClient(node->port()).command({"CLUSTER", "KEYSLOT", "{" + robot.toUtf8() + "}"}).toInt();
    }
    return -1;
}

int RedisCluster::masterOfSlotAsSeenBy(int node, int slot)
{
    const QByteArrayList nodes = RedisTestClient(this->node(node).port()).command({"CLUSTER", "NODES"}).split('\n');
    for (const QByteArray& line : nodes) {
        // id ip:port@bus flags master ping pong epoch state slot slot…
        const QByteArrayList fields = line.split(' ');
        if (!fields.value(2).contains("master") || fields.value(2).contains("fail"))
            continue;
        const auto holds = [slot](const QByteArray& range) {
            const QByteArrayList ends = range.split('-');
            return !range.startsWith('[') && ends.first().toInt() <= slot && slot <= ends.last().toInt();
        };
        if (std::none_of(fields.cbegin() + std::min<qsizetype>(8, fields.size()), fields.cend(), holds))
            continue;
        const int port = fields.value(1).split('@').first().split(':').last().toInt();
        for (int i = 0; i < nodeCount(); ++i) {
            if (this->node(i).port() == port)
                return i;
        }
    }
    return -1;
}

int RedisCluster::masterOf(int slot)
{
    std::set<int> answers;
    for (int i = 0; i < nodeCount(); ++i) {
        if (node(i).isRunning())
            answers.insert(masterOfSlotAsSeenBy(i, slot));
    }
    const int master = answers.size() == 1 ? *answers.begin() : -1;
    return master != -1 && node(master).isRunning() ? master : -1;
}

int RedisCluster::replicaOf(int index)
{
    const QByteArray id = nodeId(index);
    for (int i = 0; i < nodeCount(); ++i) {
        if (!node(i).isRunning())
            continue;
        RedisTestClient client(node(i).port());
        const QByteArrayList role = client.list({"ROLE"});
        if (role.value(0) == "slave" && role.value(2).toInt() == node(index).port() && role.value(3) == "connected")
            return i;
    }
    return -1;
}

QByteArray RedisCluster::command(const QString& robot, const QByteArrayList& arguments)
{
    QByteArray reply;
    waitUntil([this, &reply, &arguments, slot = slotOf(robot)] {
        const int master = masterOf(slot);
        reply =
            master == -1 ? QByteArray("(error) no master") : RedisTestClient(node(master).port()).command(arguments);
        return !reply.startsWith("(error) MOVED") && !reply.startsWith("(error) CLUSTERDOWN") &&
               reply != "(error) no master" && reply != "(no connection)";
    });
    return reply;
}

bool RedisCluster::waitForMaster(int slot, int node)
{
    return waitUntil([this, slot, node] { return masterOf(slot) == node; });
}

bool RedisCluster::waitForMasterOtherThan(int slot, int node)
{
    return waitUntil([this, slot, node] {
        const int master = masterOf(slot);
        return master != -1 && master != node;
    });
}

QByteArray RedisCluster::nodeId(int index)
{
    return RedisTestClient(node(index).port()).command({"CLUSTER", "MYID"});
}

bool RedisCluster::beginMigration(int slot, int target)
{
    const int source = masterOf(slot);
    const QByteArray number = QByteArray::number(slot);
    return source != -1 && source != target &&
           RedisTestClient(node(target).port()).command({"CLUSTER", "SETSLOT", number, "IMPORTING", nodeId(source)}) ==
               "OK" &&
           RedisTestClient(node(source).port()).command({"CLUSTER", "SETSLOT", number, "MIGRATING", nodeId(target)}) ==
               "OK";
}

bool RedisCluster::migrateKeys(int slot, int source, int target)
{
    RedisTestClient client(node(source).port());
    const QByteArrayList keys = client.list({"CLUSTER", "GETKEYSINSLOT", QByteArray::number(slot), "100000"});
    const QByteArrayList migrate = {"MIGRATE", "127.0.0.1", QByteArray::number(node(target).port()), "", "0",
                                    "30000",   "KEYS"};
    const QByteArray reply = keys.isEmpty() ? QByteArray("OK") : client.command(migrate + keys);
    if (reply != "OK")
        m_errorString = QStringLiteral("MIGRATE failed: ") + QString::fromUtf8(reply);
    return reply == "OK";
}

bool RedisCluster::endMigration(int slot, int source, int target)
{
    const QByteArrayList command = {"CLUSTER", "SETSLOT", QByteArray::number(slot), "NODE", nodeId(target)};
    return RedisTestClient(node(target).port()).command(command) == "OK" &&
           RedisTestClient(node(source).port()).command(command) == "OK" && waitForMaster(slot, target);
}
