// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "support/fault_proxy.h"
#include "support/redis_writer_test.h"

#include <QSignalSpy>

using namespace Velk;

class TestRedisWriteReconnection : public RedisWriterTest
{
    Q_OBJECT

private Q_SLOTS:
    void aKeyThatLeavesWithoutAConnectionIsRemovedByTheNextOne()
    {
        FaultProxy proxy(m_robot->server().port());
        m_writer = writerFor(proxy.url());
        QVERIFY(connectWriter(*m_writer));
        m_writer->declare({{"Stays", "Goes"}, {}, {}});
        m_writer->put("Goes", 2);
        QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Goes"}), QByteArray("2"), patienceMs);
        QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);

        proxy.closeAll();
        QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);
        m_writer->declare({{"Stays"}, {}, {}});

        QTRY_COMPARE_WITH_TIMEOUT(members("data"), QByteArrayList{"Stays"}, patienceMs);
        QCOMPARE(command({"EXISTS", "mem:{arm1}:v:Goes"}), QByteArray("0"));
    }

    void aValueThatIsPutAfterAnUnansweredRemovalStays_data()
    {
        QTest::addColumn<bool>("isDeclaration");
        QTest::addColumn<bool>("isPutAtLoss");
        QTest::newRow("removed, put without a connection") << false << false;
        QTest::newRow("removed, put when the loss is reported") << false << true;
        QTest::newRow("declared no longer, put without a connection") << true << false;
        QTest::newRow("declared no longer, put when the loss is reported") << true << true;
    }
    void aValueThatIsPutAfterAnUnansweredRemovalStays()
    {
        QFETCH(bool, isDeclaration);
        QFETCH(bool, isPutAtLoss);
        FaultProxy proxy(m_robot->server().port());
        m_writer = writerFor(proxy.url());
        QVERIFY(connectWriter(*m_writer));
        m_writer->declare({{"Angle", "Goes", "Stays"}, {}, {}});
        m_writer->put("Angle", 1);
        m_writer->put("Goes", 1);
        QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
        QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);
        if (isPutAtLoss)
            connect(m_writer.get(), &RobotWriter::connectionLost, &proxy, [this] { m_writer->put("Angle", 2); });

        proxy.setSwallowing(true);
        if (isDeclaration)
            m_writer->declare({{"Stays"}, {}, {}});
        else
            m_writer->remove({"Angle", "Goes"});
        QCoreApplication::processEvents(); // the removal is sent, and goes nowhere
        proxy.setSwallowing(false);
        proxy.closeAll();
        QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);
        if (!isPutAtLoss)
            m_writer->put("Angle", 2);

        // Both keys are removed at the same time: when that is done, the value is not removed any more.
        QTRY_COMPARE_WITH_TIMEOUT(command({"EXISTS", "mem:{arm1}:v:Goes"}), QByteArray("0"), patienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
        QCOMPARE(command({"GET", "mem:{arm1}:v:Angle"}), QByteArray("2"));
        QCOMPARE(members("data"), (QByteArrayList{"Angle", "Stays"}));
        QCOMPARE(m_writer->lostCount(), qint64(0));
    }

    void whatWasNotAnsweredIsDeclaredWithTheFirstValuesOfTheNextConnection()
    {
        FaultProxy proxy(m_robot->server().port());
        m_writer = writerFor(proxy.url());
        QVERIFY(connectWriter(*m_writer));
        m_writer->put("Goes", 1);
        QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);
        QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);

        proxy.setSwallowing(true);
        m_writer->declare({{"Angle"}, {"Bumper"}, {}});
        m_writer->remove({"Goes"});
        QCoreApplication::processEvents(); // sent, and gone
        proxy.setSwallowing(false);
        proxy.closeAll();
        QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);
        m_writer->put("Angle", 2);
        QTRY_COMPARE_WITH_TIMEOUT(m_writer->openCount(), qint64(0), patienceMs);

        QCOMPARE(members("data"), QByteArrayList{"Angle"});
        QCOMPARE(members("event"), QByteArrayList{"Bumper"});
        QCOMPARE(command({"EXISTS", "mem:{arm1}:v:Goes"}), QByteArray("0"));
    }

    void occurrencesWithoutAnAnswerAreCountedAtALoss()
    {
        FaultProxy proxy(m_robot->server().port());
        m_writer = writerFor(proxy.url());
        QVERIFY(connectWriter(*m_writer));
        QSignalSpy lost(m_writer.get(), &RobotWriter::connectionLost);
        bool isAnswered = false;
        m_writer->raise("Bumper", 0, {}, [&isAnswered](const QString&) { isAnswered = true; });
        QTRY_VERIFY_WITH_TIMEOUT(isAnswered, patienceMs);

        proxy.setSwallowing(true);
        m_writer->raise("Bumper", 1);
        m_writer->raise("Bumper", 2);
        QCoreApplication::processEvents(); // they are sent, and go nowhere
        m_writer->raise("Bumper", 3);
        proxy.closeAll();
        QTRY_COMPARE_WITH_TIMEOUT(lost.count(), 1, patienceMs);
        m_writer->raise("Bumper", 4);

        QTRY_COMPARE_WITH_TIMEOUT(m_writer->lostCount(), qint64(4), patienceMs);
    }

    void theNewestValuesAreWrittenAgainAfterAReconnection()
    {
        QVERIFY(connectWriter(*m_writer));
        m_writer->declare({{"Angle"}, {"Bumper"}, {}});
        m_writer->setRealTimeSupported(true);
        m_writer->put("Angle", 1);
        m_writer->put("Angle", 2);
        QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Angle"}), QByteArray("2"), patienceMs);

        m_robot->server().kill();
        QVERIFY(m_robot->server().start());

        QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Angle"}), QByteArray("2"), patienceMs);
        QCOMPARE(members("data"), QByteArrayList{"Angle"});
        QCOMPARE(members("event"), QByteArrayList{"Bumper"});
        QCOMPARE(command({"HGET", "mem:{arm1}:meta", "realtime"}), QByteArray("1"));
    }

    void aStreamIsNotGivenItsNewestValueAgainAfterAReconnection()
    {
        FaultProxy proxy(m_robot->server().port());
        m_writer = writerFor(proxy.url());
        m_robot->client().command({"XADD", "mem:{arm1}:v:Angle", "*", "v", "1"});
        QVERIFY(connectWriter(*m_writer));
        m_writer->put("Angle", 2);
        QTRY_COMPARE_WITH_TIMEOUT(command({"XLEN", "mem:{arm1}:v:Angle"}), QByteArray("2"), patienceMs);
        QSignalSpy connected(m_writer.get(), &RobotWriter::connected);

        proxy.closeAll();
        QTRY_COMPARE_WITH_TIMEOUT(connected.count(), 1, patienceMs);
        m_writer->put("Marker", 1);
        QTRY_COMPARE_WITH_TIMEOUT(command({"GET", "mem:{arm1}:v:Marker"}), QByteArray("1"), patienceMs);

        QCOMPARE(command({"XLEN", "mem:{arm1}:v:Angle"}), QByteArray("2"));
    }
};

QTEST_GUILESS_MAIN(TestRedisWriteReconnection)
#include "tst_redis_write_reconnection.moc"
