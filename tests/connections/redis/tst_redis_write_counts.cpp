// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/redis_robot.h"

#include <connections/redis/redis_robot_writer.h>

#include <QSignalSpy>
#include <QTest>

using namespace Velk;

namespace {

constexpr int patienceMs = 60000;
constexpr int raisedCount = 5;

std::unique_ptr<RedisRobotWriter> connectedWriter(const QString& url)
{
    std::unique_ptr<RedisRobotWriter> writer = RedisRobotWriter::fromUrl(url + "?pong-timeout=60000", nullptr);
    writer->open();
    return QTest::qWaitFor([&writer] { return writer->isConnected(); }, patienceMs) ? std::move(writer) : nullptr;
}

} // namespace

// Whatever is handed to a writer is written, lost for a cause, or open.
class TestRedisWriteCounts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qunsetenv("VELK_REDIS_PASSWORD"); }
    void init()
    {
        m_robot = std::make_unique<RedisRobot>();
        QVERIFY2(m_robot->start(), qPrintable(m_robot->server().errorString()));
    }

    void whatWaitsOrIsNotAnsweredIsOpen();
    void refusedWritesAreCountedAsRefused();
    void occurrencesWithoutAConnectionAreCountedAsDropped();
    void valuesThatWaitForAConnectionAreOpen();
    void aValueThatIsRemovedIsNotOpen();
    void aLossIsCountedWhenItIsReported();
    void occurrencesThatWereNotSentAreCountedAsDropped();
    void aWrittenValueThatIsRepeatedIsNotOpen();
    void aCutAnywhereLeavesEveryOccurrenceCounted();

private:
    QByteArray command(const QByteArrayList& words) { return m_robot->client().command(words); }

    std::unique_ptr<RedisRobot> m_robot;
};

void TestRedisWriteCounts::whatWaitsOrIsNotAnsweredIsOpen()
{
    const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(m_robot->url());
    QVERIFY(writer);
    QSignalSpy idle(writer.get(), &RobotWriter::idle);
    QCOMPARE(writer->openCount(), qint64(0));

    writer->put("Angle", 1);
    writer->raise("Bumper", 1);
    QCOMPARE(writer->openCount(), qint64(2));
    m_robot->server().pause();
    QTest::qWait(0); // sent, but for the value, whose type is asked for first
    writer->raise("Bumper", 2);
    QCOMPARE(writer->openCount(), qint64(3));
    QCOMPARE(idle.count(), 0);
    m_robot->server().resume();

    QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(idle.count() > 0, patienceMs);
    QCOMPARE(writer->lostCount(), qint64(0));
    QCOMPARE(command({"XLEN", "mem:{arm1}:e:Bumper"}), QByteArray("2"));
}

void TestRedisWriteCounts::refusedWritesAreCountedAsRefused()
{
    command({"SET", "mem:{arm1}:e:Bumper", "no stream"});
    command({"LPUSH", "mem:{arm1}:v:Angle", "1"});
    const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(m_robot->url());
    QVERIFY(writer);
    QSignalSpy idle(writer.get(), &RobotWriter::idle);

    writer->raise("Bumper", 1);
    writer->put("Angle", 2);

    QTRY_VERIFY_WITH_TIMEOUT(idle.count() > 0 && writer->openCount() == 0, patienceMs);
    QCOMPARE(writer->losses().refused, qint64(2));
    QCOMPARE(writer->losses().total(), qint64(2));
}

void TestRedisWriteCounts::occurrencesWithoutAConnectionAreCountedAsDropped()
{
    const std::unique_ptr<RedisRobotWriter> writer = RedisRobotWriter::fromUrl(m_robot->url(), nullptr);

    writer->raise("Bumper", 1);

    QCOMPARE(writer->losses().dropped, qint64(1));
    QCOMPARE(writer->losses().total(), qint64(1));
    QCOMPARE(writer->openCount(), qint64(0));
}

void TestRedisWriteCounts::valuesThatWaitForAConnectionAreOpen()
{
    FaultProxy proxy(m_robot->server().port());
    const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(proxy.url());
    QVERIFY(writer);
    QSignalSpy lost(writer.get(), &RobotWriter::connectionLost);
    writer->put("Sent", 1);
    QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);
    proxy.setSwallowing(true);
    writer->put("Sent", 2); // without an answer
    QTest::qWait(0);
    writer->put("Waiting", 1);
    proxy.closeAll();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);

    writer->put("Kept", 1);
    QCOMPARE(writer->openCount(), qint64(3));
    proxy.setSwallowing(false);

    QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);
    QCOMPARE(command({"MGET", "mem:{arm1}:v:Sent", "mem:{arm1}:v:Waiting", "mem:{arm1}:v:Kept"}),
             QByteArray("2\n1\n1"));
    QCOMPARE(writer->lostCount(), qint64(0));
}

void TestRedisWriteCounts::aValueThatIsRemovedIsNotOpen()
{
    const std::unique_ptr<RedisRobotWriter> writer = RedisRobotWriter::fromUrl(m_robot->url(), nullptr);
    writer->declare({{"Angle", "Speed", "Height"}, {}, {}});
    for (const QString name : {"Angle", "Speed", "Height"})
        writer->put(name, 1);
    QCOMPARE(writer->openCount(), qint64(3));

    writer->declare({{"Speed", "Height"}, {}, {}});
    QCOMPARE(writer->openCount(), qint64(2));
    writer->remove({"Speed"});
    QCOMPARE(writer->openCount(), qint64(1));
}

void TestRedisWriteCounts::aLossIsCountedWhenItIsReported()
{
    FaultProxy proxy(m_robot->server().port());
    const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(proxy.url());
    QVERIFY(writer);
    writer->put("Angle", 1);
    QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);
    QStringList counts;
    QObject::connect(writer.get(), &RobotWriter::connectionLost, writer.get(), [&] {
        const WriteLosses losses = writer->losses();
        counts << QString("%1 unknown, %2 dropped, %3 open")
                      .arg(losses.unknown)
                      .arg(losses.dropped)
                      .arg(writer->openCount());
    });
    proxy.setSwallowing(true);
    writer->raise("Bumper", 1);
    writer->raise("Bumper", 2);
    writer->put("Angle", 2);
    QTest::qWait(0); // sent
    writer->raise("Bumper", 3);
    proxy.closeAll();

    QTRY_COMPARE_WITH_TIMEOUT(counts, QStringList({"2 unknown, 1 dropped, 1 open"}), patienceMs);
    proxy.setSwallowing(false);
    QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);
    QCOMPARE(writer->lostCount(), qint64(3));
}

void TestRedisWriteCounts::occurrencesThatWereNotSentAreCountedAsDropped()
{
    FaultProxy proxy(m_robot->server().port());
    const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(proxy.url());
    QVERIFY(writer);
    QSignalSpy lost(writer.get(), &RobotWriter::connectionLost);
    proxy.setSwallowing(true);
    for (int i = 0; i < 10001; ++i) // one more than a transaction takes
        writer->raise("Bumper", i);
    QTest::qWait(0); // the first transaction is sent
    proxy.closeAll();

    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);
    QCOMPARE(writer->losses().unknown, qint64(10000));
    QCOMPARE(writer->losses().dropped, qint64(1));
}

void TestRedisWriteCounts::aWrittenValueThatIsRepeatedIsNotOpen()
{
    command({"XADD", "mem:{arm1}:v:Log", "*", "v", "0"});
    FaultProxy proxy(m_robot->server().port());
    const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(proxy.url());
    QVERIFY(writer);
    writer->put("Log", 1);
    writer->put("Angle", 1);
    QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);
    QSignalSpy lost(writer.get(), &RobotWriter::connectionLost);
    QSignalSpy connected(writer.get(), &RobotWriter::connected);

    // Lost again before the types of the keys are known.
    QObject::connect(writer.get(), &RobotWriter::connected, &proxy, [&proxy, &connected] {
        if (connected.count() == 1)
            proxy.closeAll();
    });
    proxy.closeAll();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 2, patienceMs);

    QCOMPARE(writer->openCount(), qint64(0));
    QTRY_COMPARE_WITH_TIMEOUT(connected.count(), 2, patienceMs);
    writer->put("Angle", 2);
    QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Angle"}), QByteArray("2"), patienceMs);
    QCOMPARE(command({"XLEN", "mem:{arm1}:v:Log"}), QByteArray("2"));
    QCOMPARE(writer->lostCount(), qint64(0));
}

void TestRedisWriteCounts::aCutAnywhereLeavesEveryOccurrenceCounted()
{
    FaultProxy proxy(m_robot->server().port());
    // All replies to one transaction of five occurrences.
    const qint64 replyBytes = 5 + (raisedCount + 1) * 9 + 4 + 5 + raisedCount * 25;
    for (qint64 bytes = 0; bytes <= replyBytes; bytes += 3) {
        command({"FLUSHALL"});
        const std::unique_ptr<RedisRobotWriter> writer = connectedWriter(proxy.url());
        QVERIFY(writer);
        proxy.cutAfter(bytes);
        for (int i = 0; i < raisedCount; ++i)
            writer->raise("Bumper", i);
        QTRY_COMPARE_WITH_TIMEOUT(writer->openCount(), qint64(0), patienceMs);

        const qint64 written = command({"XLEN", "mem:{arm1}:e:Bumper"}).toLongLong();
        const WriteLosses losses = writer->losses();
        // An occurrence whose outcome is unknown may be among those that were written.
        QCOMPARE(losses.refused + losses.dropped, qint64(0));
        QVERIFY2(
            losses.unknown == 0 ? written == raisedCount : losses.unknown == raisedCount,
            qPrintable(QString("cut after %1: %2 written, %3 unknown").arg(bytes).arg(written).arg(losses.unknown)));
        proxy.cutAfter(0);
        proxy.closeAll();
    }
}

QTEST_GUILESS_MAIN(TestRedisWriteCounts)
#include "tst_redis_write_counts.moc"
