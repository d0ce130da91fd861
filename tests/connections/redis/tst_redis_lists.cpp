// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/parsed_reply.h"
#include "support/real_time_answer.h"
#include "support/redis_robot_test.h"
#include "support/redis_viewer.h"
#include "support/scripted_server.h"

using namespace Velk;

class TestRedisLists : public RedisRobotTest
{
    Q_OBJECT

private Q_SLOTS:
    void theThreeListsAreTheIndexSets();
    void aListThatCannotBeReadIsEmptyAndSaysWhy();
    void aListOfManyNamesIsCompleteAndWithoutRepetitions();
    void aListWhoseSlotIsBeingMovedIsFetchedAgain_data();
    void aListWhoseSlotIsBeingMovedIsFetchedAgain();
    void listsFinishEmptyWhenTheServerGoesAway();
    void listsFinishEmptyWhenTheLinkIsClosed();
    void anInterfaceThatOutlivesItsConnectionAnswersEmpty();
};

void TestRedisLists::theThreeListsAreTheIndexSets()
{
    m_robot->client().command({"SADD", "mem:{arm1}:data", "Arm/Angle", "Gripper"});
    m_robot->client().command({"SADD", "mem:{arm1}:event", "Bumper"});
    m_robot->client().command({"SADD", "mem:{arm1}:microevent", "Touch"});
    m_robot->client().command({"SADD", "mem:{arm2}:data", "of another robot"});
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());

    const QFuture<QStringList> data = viewer.memory()->getDataList();
    const QFuture<QStringList> events = viewer.memory()->getEventList();
    const QFuture<QStringList> microEvents = viewer.memory()->getMicroEventList();

    QCOMPARE(RedisViewer::names(data), (QStringList{"Arm/Angle", "Gripper"}));
    QCOMPARE(RedisViewer::names(events), QStringList{"Bumper"});
    QCOMPARE(RedisViewer::names(microEvents), QStringList{"Touch"});
}

void TestRedisLists::aListThatCannotBeReadIsEmptyAndSaysWhy()
{
    m_robot->client().command({"SET", "mem:{arm1}:data", "not a set"});
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());

    QCOMPARE(RedisViewer::names(viewer.memory()->getDataList()), QStringList());
    QCOMPARE(viewer.failures().size(), 1);
    QVERIFY2(viewer.failures().first().contains("mem:{arm1}:data"), qPrintable(viewer.failures().first()));
}

void TestRedisLists::aListOfManyNamesIsCompleteAndWithoutRepetitions()
{
    // More than are asked for at once, so that the set is walked through.
    const int count = 100001;
    m_robot->client().command(QByteArrayList{"SADD", "mem:{arm1}:data"} + keyNames(count));
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());

    const QStringList list = RedisViewer::names(viewer.memory()->getDataList());

    QCOMPARE(list.size(), count);
    QCOMPARE(QSet<QString>(list.begin(), list.end()).size(), count);
}

void TestRedisLists::aListWhoseSlotIsBeingMovedIsFetchedAgain_data()
{
    QTest::addColumn<QByteArray>("refusedCommand");
    QTest::addColumn<int>("count");
    QTest::newRow("when its length is asked for") << QByteArray("SCARD") << 2;
    QTest::newRow("when all names are asked for") << QByteArray("SMEMBERS") << 2;
    QTest::newRow("when names are asked for in portions") << QByteArray("SSCAN") << 100001;
}

void TestRedisLists::aListWhoseSlotIsBeingMovedIsFetchedAgain()
{
    QFETCH(QByteArray, refusedCommand);
    QFETCH(int, count);
    const QByteArray names = list({"$1\r\nA\r\n", "$1\r\nB\r\n"});
    int refusals = 0;
    ScriptedServer server([&](const QByteArrayList& sent) -> QByteArray {
        const QByteArray& command = sent.front();
        if (command == refusedCommand && refusals < 2) {
            ++refusals;
            return "-TRYAGAIN Multiple keys request during rehashing of slot\r\n";
        }
        if (command == "SCARD")
            return ':' + QByteArray::number(count) + "\r\n";
        if (command == "SSCAN")
            return list({"$1\r\n0\r\n", names});
        return command == "SMEMBERS" ? names : list({"$-1\r\n", "$-1\r\n"});
    });
    RedisViewer viewer(QStringLiteral("redis://127.0.0.1:%1/arm1").arg(server.serverPort()));
    QVERIFY(viewer.connectToRobot());

    QCOMPARE(RedisViewer::names(viewer.memory()->getDataList()), QStringList({"A", "B"}));
    QCOMPARE(refusals, 2);
    QCOMPARE(viewer.failures(), QStringList());
}

void TestRedisLists::listsFinishEmptyWhenTheServerGoesAway()
{
    m_robot->client().command({"SADD", "mem:{arm1}:data", "Arm/Angle"});
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());

    m_robot->server().pause();
    const QFuture<QStringList> data = viewer.memory()->getDataList();
    m_robot->server().kill();

    QCOMPARE(RedisViewer::names(data), QStringList());
}

void TestRedisLists::listsFinishEmptyWhenTheLinkIsClosed()
{
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());
    const QFuture<QStringList> data = viewer.memory()->getDataList();

    viewer.link().close();

    QVERIFY(data.isFinished());
    QCOMPARE(RedisViewer::names(data), QStringList());
}

void TestRedisLists::anInterfaceThatOutlivesItsConnectionAnswersEmpty()
{
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());
    const boost::shared_ptr<MemoryInterface> memory = viewer.memory();
    viewer.link().close();
    RealTimeAnswer answer;

    memory->watchKey("Arm/Angle", 100);
    memory->startWatcher(200, 100);
    memory->setGatherPeriod(200);
    memory->setSamplingPeriod(100);
    memory->isRealTimeSupported(&answer, "take");
    memory->unwatchKey("Arm/Angle");
    memory->unwatchAll();
    memory->stopWatcher();

    QCOMPARE(RedisViewer::names(memory->getDataList()), QStringList());
    QCOMPARE(RedisViewer::names(memory->getEventList()), QStringList());
    QCOMPARE(RedisViewer::names(memory->getMicroEventList()), QStringList());
    QTRY_COMPARE_WITH_TIMEOUT(answer.answers, QList<bool>{false}, patienceMs);
}

QTEST_GUILESS_MAIN(TestRedisLists)
#include "tst_redis_lists.moc"
