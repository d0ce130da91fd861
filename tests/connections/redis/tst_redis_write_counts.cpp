// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/redis_writer_test.h"

#include <QSignalSpy>

using namespace Velk;

namespace {

constexpr int raisedCount = 5;

} // namespace

// Whatever is handed to a writer is written, lost for a cause, or open.
class TestRedisWriteCounts : public RedisWriterTest
{
    Q_OBJECT

private Q_SLOTS:
    void whatWaitsOrIsNotAnsweredIsOpen();
    void aWriterIsIdleWhenItsDeclarationsAreAnswered();
    void aWriterIsNotIdleWhileARedirectionIsFollowed();
    void aWriterWithoutAConnectionIsIdleWhenNothingIsOpen();
    void refusedWritesAreCountedAsRefused();
    void occurrencesWithoutAConnectionAreCountedAsDropped();
    void valuesThatWaitForAConnectionAreOpen();
    void aValueThatIsRemovedIsNotOpen();
    void aLossIsCountedWhenItIsReported();
    void occurrencesThatWereNotSentAreCountedAsDropped();
    void samplesWithoutAConnectionAreCountedAllButTheNewest_data();
    void samplesWithoutAConnectionAreCountedAllButTheNewest();
    void aWrittenValueThatIsRepeatedIsNotOpen();
    void aCutAnywhereLeavesEveryOccurrenceCounted();
    void whatIsOpenWhenTheWriterIsClosedIsCounted();
    void openSamplesOfAStreamAreCountedWhenTheWriterIsClosed();
    void whatIsOpenWhenACallbackClosesTheWriterIsCounted();
};

void TestRedisWriteCounts::whatWaitsOrIsNotAnsweredIsOpen()
{
    QVERIFY(connectWriter(*m_writer));
    QSignalSpy idle(m_writer.get(), &RobotWriter::idle);
    QCOMPARE(m_writer->openCount(), qint64(0));

    m_writer->put("Angle", 1);
    m_writer->raise("Bumper", 1);
    QCOMPARE(m_writer->openCount(), qint64(2));
    m_robot->server().pause();
    QTest::qWait(0); // sent, but for the value, whose type is asked for first
    m_writer->raise("Bumper", 2);
    QCOMPARE(m_writer->openCount(), qint64(3));
    QCOMPARE(idle.count(), 0);
    m_robot->server().resume();

    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    QTRY_VERIFY_WITH_TIMEOUT(idle.count() > 0, patienceMs);
    QCOMPARE(m_writer->lostCount(), qint64(0));
    QCOMPARE(command({"XLEN", "mem:{arm1}:e:Bumper"}), QByteArray("2"));
}

void TestRedisWriteCounts::aWriterIsIdleWhenItsDeclarationsAreAnswered()
{
    QVERIFY(connectWriter(*m_writer));
    QTRY_VERIFY_WITH_TIMEOUT(m_writer->isIdle(), patienceMs);
    QSignalSpy idle(m_writer.get(), &RobotWriter::idle);

    m_writer->declare({{"Angle"}, {}, {}});
    QVERIFY(!m_writer->isIdle());
    m_robot->server().pause();
    QTest::qWait(0); // sent
    QVERIFY(!m_writer->isIdle());
    QCOMPARE(m_writer->openCount(), qint64(0));
    QCOMPARE(idle.count(), 0);
    m_robot->server().resume();

    QTRY_VERIFY_WITH_TIMEOUT(idle.count() > 0, patienceMs);
    QVERIFY(m_writer->isIdle());
    QCOMPARE(command({"SMEMBERS", "mem:{arm1}:data"}), QByteArray("Angle"));
}

void TestRedisWriteCounts::aWriterIsNotIdleWhileARedirectionIsFollowed()
{
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QVERIFY(connectWriter(*m_writer));
    m_writer->put("Angle", 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs); // all is answered
    proxy.setSwallowing(true);
    m_writer->declare({{"Angle"}, {"Bumper"}, {}});
    QTest::qWait(0); // sent, and gone
    const int connections = proxy.connectionCount();
    proxy.inject("-MOVED 1 127.0.0.1:" + QByteArray::number(proxy.port()) + "\r\n");
    QTRY_VERIFY_WITH_TIMEOUT(proxy.connectionCount() > connections, patienceMs);
    QSignalSpy idle(m_writer.get(), &RobotWriter::idle);

    QVERIFY(m_writer->isConnected());
    QVERIFY(!m_writer->isIdle());
    proxy.setSwallowing(false);
    proxy.closeAll(); // the next address is that of the proxy, too

    QTRY_VERIFY_WITH_TIMEOUT(idle.count() > 0, patienceMs);
    QVERIFY(m_writer->isIdle());
    QCOMPARE(command({"SMEMBERS", "mem:{arm1}:event"}), QByteArray("Bumper"));
}

void TestRedisWriteCounts::aWriterWithoutAConnectionIsIdleWhenNothingIsOpen()
{
    QVERIFY(m_writer->isIdle());
    m_writer->declare({{"Angle"}, {}, {}});
    QVERIFY(m_writer->isIdle());
    m_writer->put("Angle", 1);
    QVERIFY(!m_writer->isIdle());
}

void TestRedisWriteCounts::refusedWritesAreCountedAsRefused()
{
    command({"SET", "mem:{arm1}:e:Bumper", "no stream"});
    command({"LPUSH", "mem:{arm1}:v:Angle", "1"});
    QVERIFY(connectWriter(*m_writer));
    QSignalSpy idle(m_writer.get(), &RobotWriter::idle);

    m_writer->raise("Bumper", 1);
    m_writer->put("Angle", 2);

    QTRY_VERIFY_WITH_TIMEOUT(idle.count() > 0 && m_writer->openCount() == 0, patienceMs);
    QCOMPARE(m_writer->losses().refused, qint64(2));
    QCOMPARE(m_writer->losses().total(), qint64(2));
}

void TestRedisWriteCounts::occurrencesWithoutAConnectionAreCountedAsDropped()
{
    m_writer->raise("Bumper", 1);

    QCOMPARE(m_writer->losses().dropped, qint64(1));
    QCOMPARE(m_writer->losses().total(), qint64(1));
    QCOMPARE(m_writer->openCount(), qint64(0));
}

void TestRedisWriteCounts::valuesThatWaitForAConnectionAreOpen()
{
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QVERIFY(connectWriter(*m_writer));
    QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);
    m_writer->put("Sent", 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    proxy.setSwallowing(true);
    m_writer->put("Sent", 2); // without an answer
    QTest::qWait(0);
    m_writer->put("Waiting", 1);
    proxy.closeAll();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);

    m_writer->put("Kept", 1);
    QCOMPARE(m_writer->openCount(), qint64(3));
    proxy.setSwallowing(false);

    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    QCOMPARE(command({"MGET", "mem:{arm1}:v:Sent", "mem:{arm1}:v:Waiting", "mem:{arm1}:v:Kept"}),
             QByteArray("2\n1\n1"));
    QCOMPARE(m_writer->lostCount(), qint64(0));
}

void TestRedisWriteCounts::aValueThatIsRemovedIsNotOpen()
{
    m_writer->declare({{"Angle", "Speed", "Height"}, {}, {}});
    for (const QString name : {"Angle", "Speed", "Height"})
        m_writer->put(name, 1);
    QCOMPARE(m_writer->openCount(), qint64(3));

    m_writer->declare({{"Speed", "Height"}, {}, {}});
    QCOMPARE(m_writer->openCount(), qint64(2));
    m_writer->remove({"Speed"});
    QCOMPARE(m_writer->openCount(), qint64(1));
}

void TestRedisWriteCounts::aLossIsCountedWhenItIsReported()
{
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QVERIFY(connectWriter(*m_writer));
    m_writer->put("Angle", 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    QStringList counts;
    QObject::connect(m_writer.get(), &RobotWriter::connectionLost, &proxy, [&] {
        const WriteLosses losses = m_writer->losses();
        counts << QString("%1 unknown, %2 dropped, %3 open")
                      .arg(losses.unknown)
                      .arg(losses.dropped)
                      .arg(m_writer->openCount());
    });
    proxy.setSwallowing(true);
    m_writer->raise("Bumper", 1);
    m_writer->raise("Bumper", 2);
    m_writer->put("Angle", 2);
    QTest::qWait(0); // sent
    m_writer->raise("Bumper", 3);
    proxy.closeAll();

    QTRY_COMPARE_WITH_TIMEOUT(counts, QStringList({"2 unknown, 1 dropped, 1 open"}), patienceMs);
    proxy.setSwallowing(false);
    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    QCOMPARE(m_writer->lostCount(), qint64(3));
}

void TestRedisWriteCounts::occurrencesThatWereNotSentAreCountedAsDropped()
{
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QVERIFY(connectWriter(*m_writer));
    QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);
    proxy.setSwallowing(true);
    for (int i = 0; i < 10001; ++i) // one more than a transaction takes
        m_writer->raise("Bumper", i);
    QTest::qWait(0); // the first transaction is sent
    proxy.closeAll();

    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);
    QCOMPARE(m_writer->losses().unknown, qint64(10000));
    QCOMPARE(m_writer->losses().dropped, qint64(1));
}

void TestRedisWriteCounts::samplesWithoutAConnectionAreCountedAllButTheNewest_data()
{
    QTest::addColumn<bool>("isConnectedBefore");
    QTest::addColumn<bool>("isRedirected");
    QTest::newRow("put before the first connection") << false << false;
    QTest::newRow("lost before the type of the key is known") << true << false;
    QTest::newRow("lost while a redirection is followed") << true << true;
}
void TestRedisWriteCounts::samplesWithoutAConnectionAreCountedAllButTheNewest()
{
    QFETCH(bool, isConnectedBefore);
    QFETCH(bool, isRedirected);
    command({"XADD", "mem:{arm1}:v:Log", "*", "v", "0"});
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);
    if (isConnectedBefore) {
        QVERIFY(connectWriter(*m_writer));
        m_writer->put(isRedirected ? "Log" : "Marker", 1); // this type is known then
        QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
        proxy.setSwallowing(true);
    }
    if (isRedirected) {
        m_writer->put("New", 1);
        QTest::qWait(0); // its type is asked for
        proxy.inject("-MOVED 1 127.0.0.1:" + QByteArray::number(proxy.port()) + "\r\n");
    }

    for (int i = 2; i <= 4; ++i)
        m_writer->put("Log", i, 2000.0 + i);
    if (isConnectedBefore) {
        QTest::qWait(0); // sent what can be
        const auto isLost = [&proxy, &lost] {
            proxy.closeAll();
            return lost.count() == 1;
        };
        QTRY_VERIFY_WITH_TIMEOUT(isLost(), patienceMs);
        QCOMPARE(m_writer->openCount(), qint64(isRedirected ? 2 : 1));
        QCOMPARE(m_writer->lostCount(), qint64(0));
        proxy.setSwallowing(false);
    } else {
        QVERIFY(connectWriter(*m_writer));
    }

    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    const QByteArrayList entries = m_robot->client().list({"XRANGE", "mem:{arm1}:v:Log", "-", "+"});
    QCOMPARE(int(entries.size()), isRedirected ? 3 : 2);
    const QByteArray newest = QByteArray(entries.constLast()).replace('\n', ' ');
    QVERIFY2(newest.contains("t 2004.000000 v 4"), newest);
    QCOMPARE(m_writer->losses().dropped, qint64(2));
    QCOMPARE(m_writer->lostCount(), qint64(2));
}

void TestRedisWriteCounts::aWrittenValueThatIsRepeatedIsNotOpen()
{
    command({"XADD", "mem:{arm1}:v:Log", "*", "v", "0"});
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QVERIFY(connectWriter(*m_writer));
    m_writer->put("Log", 1);
    m_writer->put("Angle", 1);
    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);
    QSignalSpy connected(m_writer.get(), &RobotWriter::connected);

    // Lost again before the types of the keys are known.
    QObject::connect(m_writer.get(), &RobotWriter::connected, &proxy, [&proxy, &connected] {
        if (connected.count() == 1)
            proxy.closeAll();
    });
    proxy.closeAll();
    QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 2, patienceMs);

    QCOMPARE(m_writer->openCount(), qint64(0));
    QTRY_COMPARE_WITH_TIMEOUT(connected.count(), 2, patienceMs);
    m_writer->put("Angle", 2);
    QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Angle"}), QByteArray("2"), patienceMs);
    QCOMPARE(command({"XLEN", "mem:{arm1}:v:Log"}), QByteArray("2"));
    QCOMPARE(m_writer->lostCount(), qint64(0));
}

void TestRedisWriteCounts::aCutAnywhereLeavesEveryOccurrenceCounted()
{
    FaultProxy proxy(m_robot->server().port());
    // All replies to one transaction of five occurrences.
    const qint64 replyBytes = 5 + (raisedCount + 1) * 9 + 4 + 5 + raisedCount * 25;
    for (qint64 bytes = 0; bytes <= replyBytes; bytes += 3) {
        command({"FLUSHALL"});
        const std::unique_ptr<RedisRobotWriter> writer = writerFor(proxy.url());
        QVERIFY(connectWriter(*writer));
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

void TestRedisWriteCounts::whatIsOpenWhenTheWriterIsClosedIsCounted()
{
    FaultProxy proxy(m_robot->server().port());
    m_writer = writerFor(proxy.url());
    QVERIFY(connectWriter(*m_writer));
    proxy.setSwallowing(true);
    m_writer->raise("Bumper", 1);
    QTest::qWait(0); // sent
    m_writer->raise("Bumper", 2);
    m_writer->put("Angle", 1);
    QCOMPARE(m_writer->openCount(), qint64(3));

    m_writer->close();

    QCOMPARE(m_writer->openCount(), qint64(0));
    QCOMPARE(m_writer->losses().unknown, qint64(1));
    QCOMPARE(m_writer->losses().dropped, qint64(2));
}

void TestRedisWriteCounts::openSamplesOfAStreamAreCountedWhenTheWriterIsClosed()
{
    command({"XADD", "mem:{arm1}:v:Log", "*", "v", "0"});
    QVERIFY(connectWriter(*m_writer));
    m_writer->put("Log", 0);
    QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
    for (int i = 1; i <= 5; ++i)
        m_writer->put("Log", i);
    QCOMPARE(m_writer->openCount(), qint64(5));

    m_writer->close();

    QCOMPARE(m_writer->openCount(), qint64(0));
    QCOMPARE(m_writer->losses().dropped, qint64(5));
    QCOMPARE(m_writer->lostCount(), qint64(5));
}

void TestRedisWriteCounts::whatIsOpenWhenACallbackClosesTheWriterIsCounted()
{
    QVERIFY(connectWriter(*m_writer));

    // Two more than a transaction takes: they are not sent yet when the first one is answered.
    m_writer->raise("Bumper", 0, {}, [this](const QString&) { m_writer->close(); });
    for (int i = 1; i < 10002; ++i)
        m_writer->raise("Bumper", i);
    QTRY_VERIFY_WITH_TIMEOUT(!m_writer->isConnected(), patienceMs);

    QCOMPARE(m_writer->openCount(), qint64(0));
    QCOMPARE(m_writer->losses().dropped, qint64(2));
    QCOMPARE(m_writer->lostCount(), qint64(2));
    QVERIFY(connectWriter(*m_writer));
    m_writer->raise("Bumper", 0);
    QTRY_VERIFY_WITH_TIMEOUT(m_writer->isIdle(), patienceMs);
    QCOMPARE(m_writer->lostCount(), qint64(0));
}

QTEST_GUILESS_MAIN(TestRedisWriteCounts)
#include "tst_redis_write_counts.moc"
