// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/model_viewer.h"
#include "support/redis_cluster.h"
#include "support/redis_test_client.h"

#include <memorykeymodel/memory_key_list_model.h>

#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

using namespace Velk;

namespace {

constexpr int patience = 60000;

const QString robotName = QStringLiteral("arm1");
const QString dataKey = QStringLiteral("A");
const QString eventKey = QStringLiteral("E");

QByteArray prefix(const QString& robot)
{
    return "mem:{" + robot.toUtf8() + "}:";
}

// Sets the data key A and raises the event E, both with this number. False when the cluster did not take both.
bool write(RedisCluster& cluster, const QString& robot, int value)
{
    const QByteArray number = QByteArray::number(value);
    return cluster.command(robot, {"SADD", prefix(robot) + "event", "E"}) != "(error)" &&
           cluster.command(robot, {"SET", prefix(robot) + "v:A", number}) == "OK" &&
           cluster.command(robot, {"XADD", prefix(robot) + "e:E", "*", "v", number}).contains('-');
}

QList<QVariant> numbersBelow(int end)
{
    QList<QVariant> result;
    for (int i = 0; i < end; ++i)
        result << qlonglong(i);
    return result;
}

} // namespace

class TestRedisCluster : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // Joining six nodes takes seconds: all tests share the cluster, and each has robots of its own.
        QVERIFY2(m_cluster.start(), qPrintable(m_cluster.errorString()));
    }

    void aRobotIsFoundByWayOfAnyNode_data()
    {
        QTest::addColumn<int>("node");
        for (int node = 0; node < m_cluster.nodeCount(); ++node)
            QTest::addRow("node %d", node) << node;
    }
    void aRobotIsFoundByWayOfAnyNode()
    {
        QFETCH(int, node);
        const QString robot = QStringLiteral("found%1").arg(node);
        QVERIFY(write(m_cluster, robot, 0));
        ModelViewer viewer(m_cluster.url(node, robot));

        viewer.link().open();
        viewer.display({dataKey});

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(0LL), patience);
        MemoryKeyListModel catalogue(&viewer.link(), {});
        QTRY_VERIFY_WITH_TIMEOUT(catalogue.isReady(), patience);
        QCOMPARE(catalogue.keys(EventNature).size(), 1);
        QCOMPARE(viewer.failures(), QStringList());
        QCOMPARE(viewer.states, QStringList({QStringLiteral("robotConnected true")}));
    }

    void aRobotWhoseSlotMovesIsFollowedWithoutALossOrARepetition()
    {
        const int slot = m_cluster.slotOf(robotName);
        const int source = m_cluster.masterOf(slot);
        const int target = m_cluster.masterOf((slot + 5462) % 16384);
        QVERIFY(source != -1 && target != -1 && source != target);
        QVERIFY(write(m_cluster, robotName, 0));
        ModelViewer viewer(m_cluster.url(source, robotName));
        viewer.link().open();
        viewer.display({dataKey, eventKey});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);
        QVERIFY(write(m_cluster, robotName, 1));
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(1LL), patience);

        QVERIFY(m_cluster.beginMigration(slot, target));
        QVERIFY2(m_cluster.migrateKeys(slot, source, target), qPrintable(m_cluster.errorString()));
        QVERIFY(m_cluster.endMigration(slot, source, target));
        QVERIFY(write(m_cluster, robotName, 2));

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(2LL), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(2LL), patience);
        QCOMPARE(viewer.values(eventKey), QList<QVariant>({1LL, 2LL}));
        QCOMPARE(viewer.disorder(), QString());
        QCOMPARE(viewer.states, QStringList({QStringLiteral("robotConnected true")}));
    }

    // As long as the move of a slot is under way the old node answers ASK for what it does not have any more.
    void aRobotWhoseSlotIsOnItsWayIsReadWhereItsKeysAre()
    {
        const QString robot = QStringLiteral("moving");
        const int slot = m_cluster.slotOf(robot);
        const int source = m_cluster.masterOf(slot);
        const int target = m_cluster.masterOf((slot + 5462) % 16384);
        QVERIFY(write(m_cluster, robot, 0));
        ModelViewer viewer(m_cluster.url(source, robot));
        viewer.link().open();
        viewer.display({dataKey, eventKey});
        QTRY_VERIFY_WITH_TIMEOUT(viewer.newestValue(dataKey).isValid(), patience);

        QVERIFY(m_cluster.beginMigration(slot, target));
        QVERIFY2(m_cluster.migrateKeys(slot, source, target), qPrintable(m_cluster.errorString()));
        RedisTestClient producer(m_cluster.node(target).port());
        QCOMPARE(producer.pipeline({{"ASKING"},
                                    {"SET", prefix(robot) + "v:A", "1"},
                                    {"ASKING"},
                                    {"XADD", prefix(robot) + "e:E", "*", "v", "1"}}),
                 4);

        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(1LL), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(1LL), patience);
        QVERIFY(m_cluster.endMigration(slot, source, target));
        QVERIFY(write(m_cluster, robot, 2));
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(dataKey), QVariant(2LL), patience);
        QTRY_COMPARE_WITH_TIMEOUT(viewer.newestValue(eventKey), QVariant(2LL), patience);
        QCOMPARE(viewer.values(eventKey), QList<QVariant>({1LL, 2LL}));
        QCOMPARE(viewer.disorder(), QString());
        QCOMPARE(viewer.states, QStringList({QStringLiteral("robotConnected true")}));
    }

    // Comes last: the cluster has one node less afterwards.
    void onlyTheRobotsOfANodeThatDiesAreLostAndTheyComeBack()
    {
        constexpr int robots = 30;
        QStringList names;
        std::vector<int> homes;
        std::vector<std::unique_ptr<ModelViewer>> viewers;
        for (int i = 0; i < robots; ++i) {
            names << QStringLiteral("robot%1").arg(i);
            QVERIFY(write(m_cluster, names[i], 0));
            homes.push_back(m_cluster.masterOf(m_cluster.slotOf(names[i])));
            viewers.push_back(std::make_unique<ModelViewer>(m_cluster.url(i % m_cluster.nodeCount(), names[i])));
            viewers.back()->link().open();
            viewers.back()->display({dataKey, eventKey});
        }
        const auto allHave = [&viewers](const QString& key, qlonglong value) {
            return std::all_of(viewers.begin(), viewers.end(),
                               [&](const auto& viewer) { return viewer->newestValue(key) == QVariant(value); });
        };
        QTRY_VERIFY_WITH_TIMEOUT(allHave(dataKey, 0), patience);
        const int victim = homes.front();
        const auto lost = std::count(homes.begin(), homes.end(), victim);
        QVERIFY(lost > 0 && lost < robots);
        // What a replica does not have when its master dies is nobody's fault, and not what this is about.
        for (int i = 0; i < robots; ++i)
            QVERIFY(write(m_cluster, names[i], 1));
        QTRY_VERIFY_WITH_TIMEOUT(allHave(eventKey, 1), patience);
        QTRY_VERIFY_WITH_TIMEOUT(RedisTestClient(m_cluster.node(victim).port()).command({"WAIT", "1", "100"}) == "1",
                                 patience);

        m_cluster.node(victim).kill();
        QTRY_COMPARE_WITH_TIMEOUT(
            std::count_if(
                viewers.begin(), viewers.end(),
                [](const auto& viewer) { return viewer->states.contains(QStringLiteral("robotConnected false")); }),
            lost, patience);
        QTRY_VERIFY_WITH_TIMEOUT(std::all_of(viewers.begin(), viewers.end(),
                                             [](const auto& viewer) { return viewer->link().isConnected(); }),
                                 patience);
        for (int i = 0; i < robots; ++i)
            QVERIFY(write(m_cluster, names[i], 2));
        QTRY_VERIFY_WITH_TIMEOUT(allHave(dataKey, 2), patience);
        QTRY_VERIFY_WITH_TIMEOUT(allHave(eventKey, 2), patience);

        QStringList wrong;
        for (int i = 0; i < robots; ++i) {
            const ModelViewer& viewer = *viewers[std::size_t(i)];
            const bool wasLost = viewer.states.contains(QStringLiteral("robotConnected false"));
            if (wasLost != (homes[std::size_t(i)] == victim) || viewer.values(eventKey) != numbersBelow(3).mid(1) ||
                !viewer.disorder().isEmpty())
                wrong << names[i] + QLatin1Char(' ') + viewer.states.join(QLatin1Char(',')) + viewer.disorder();
        }
        QCOMPARE(wrong, QStringList());
    }

private:
    RedisCluster m_cluster;
};

QTEST_GUILESS_MAIN(TestRedisCluster)
#include "tst_redis_cluster.moc"
