// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/real_time_answer.h"
#include "support/redis_robot_test.h"
#include "support/redis_viewer.h"

using namespace Velk;

class TestRedisRealTime : public RedisRobotTest
{
    Q_OBJECT

private Q_SLOTS:
    void realTimeIsWhatTheMetadataSay_data();
    void realTimeIsWhatTheMetadataSay();
    void realTimeIsMeasuredWithoutMetadata();
    void aSlowConnectionIsNotRealTime();
};

void TestRedisRealTime::realTimeIsWhatTheMetadataSay_data()
{
    QTest::addColumn<QByteArray>("said");
    QTest::addColumn<bool>("isSupported");
    QTest::newRow("yes") << QByteArray("1") << true;
    QTest::newRow("no, however near the server is") << QByteArray("0") << false;
    QTest::newRow("in words") << QByteArray("true") << true;
}

void TestRedisRealTime::realTimeIsWhatTheMetadataSay()
{
    QFETCH(QByteArray, said);
    QFETCH(bool, isSupported);
    m_robot->client().command({"HSET", "mem:{arm1}:meta", "realtime", said});
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());
    RealTimeAnswer answer;

    viewer.memory()->isRealTimeSupported(&answer, "take");

    QTRY_COMPARE_WITH_TIMEOUT(answer.answers, QList<bool>{isSupported}, patienceMs);
}

void TestRedisRealTime::realTimeIsMeasuredWithoutMetadata()
{
    RedisViewer viewer(m_robot->url());
    QVERIFY(viewer.connectToRobot());
    RealTimeAnswer answer;

    viewer.memory()->isRealTimeSupported(&answer, "take");

    // Which answer depends on how busy this machine is.
    QTRY_COMPARE_WITH_TIMEOUT(answer.answers.size(), 1, patienceMs);
}

void TestRedisRealTime::aSlowConnectionIsNotRealTime()
{
    FaultProxy proxy(m_robot->server().port());
    proxy.setDelay(20);
    RedisViewer viewer(proxy.url());
    QVERIFY(viewer.connectToRobot());
    RealTimeAnswer answer;

    viewer.memory()->isRealTimeSupported(&answer, "take");

    QTRY_COMPARE_WITH_TIMEOUT(answer.answers, QList<bool>{false}, patienceMs);
}

QTEST_GUILESS_MAIN(TestRedisRealTime)
#include "tst_redis_real_time.moc"
