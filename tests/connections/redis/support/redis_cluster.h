// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_CLUSTER_H
#define TESTS_CONNECTIONS_REDIS_SUPPORT_REDIS_CLUSTER_H

#include "redis_server.h"

#include <QByteArrayList>

#include <memory>
#include <vector>

/// A cluster of six nodes: three masters, each with a replica that takes over about a second after its master went
/// away. The slots of a master that has no replica left are missing, and the others go on.
class RedisCluster
{
public:
    explicit RedisCluster(const QStringList& nodeArguments = {});

    /// Starts the nodes, joins them with redis-cli --cluster create, and waits until all of them agree. On false
    /// errorString() says why.
    bool start();
    QString errorString() const { return m_errorString; }

    int nodeCount() const { return int(m_nodes.size()); }
    RedisServer& node(int index) { return *m_nodes.at(std::size_t(index)); }
    /// "redis://127.0.0.1:12345/arm1", by way of that node.
    QString url(int node, const QString& robot) const;

    /// The slot of a robot's keys.
    int slotOf(const QString& robot);
    /// The running node that serves the slot as all running nodes see it; -1 while they do not agree.
    int masterOf(int slot);
    /// A replica of the node; -1 when it has none that is up to date.
    int replicaOf(int node);
    /// Runs a command on the node that has the robot's keys; waits for it to be there.
    QByteArray command(const QString& robot, const QByteArrayList& arguments);

    /// Waits until the running nodes agree on who serves the slot, and that it is (not) this node.
    bool waitForMaster(int slot, int node);
    bool waitForMasterOtherThan(int slot, int node);

    /// Opens the move of a slot, from the present master to another node: from now on the source answers ASK for what
    /// it does not hold.
    bool beginMigration(int slot, int target);
    /// Moves what is in the slot.
    bool migrateKeys(int slot, int source, int target);
    /// Gives the slot to the target for good: from now on the source answers MOVED.
    bool endMigration(int slot, int source, int target);

private:
    QByteArray nodeId(int index);
    int masterOfSlotAsSeenBy(int node, int slot);

    std::vector<std::unique_ptr<RedisServer>> m_nodes;
    QString m_errorString;
};

#endif
