// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "embedded_session.h"

#include <connections/link/unix_time.h>

#include <QSignalSpy>
#include <QThread>

#include <algorithm>
#include <functional>

using namespace Velk;

/// What a link to a robot memory samples, delivers, and counts as lost.
class TestEmbeddedSampling : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysThatAreSampledTogetherShareATimeStamp();
    void keysOfSeveralPeriodsShareTheTimeStampsThatTheyHaveInCommon();
    void everyAppendedSampleIsDeliveredOnce();
    void aWatcherThatStartsLaterSamplesTheNewestAppendedSample();
    void ticksThatABusyEventLoopMissesAreCounted();
    void ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted_data();
    void ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted();
    void aKeyWithoutSamplesMissesNothing();
    void aTimeStampOfTheRobotIsDeliveredOnce();
    void aDeclaredKeyIsNotSampledBeforeItHasAValue();
    void whatIsRaisedWhileTheWatcherIsStoppedIsNotDelivered();
    void stoppingDiscardsWhatWasCollected();
    void anOverfullQueueKeepsTheNewestAndCountsTheRest();
    void lossesOutliveTheConnectionAndEndWithTheNextOpening();
    void nonsensicalPeriodsAreTheShortest();
};

void TestEmbeddedSampling::keysThatAreSampledTogetherShareATimeStamp()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.memory->setData(otherData, 2);
    session.service->watchKey(data, 20);
    session.service->watchKey(otherData, 20);

    session.service->startWatcher(200, 0);

    QTRY_VERIFY_WITH_TIMEOUT(session.stamps.value(data).size() >= 10, timeoutMs);
    QCOMPARE(session.stamps.value(otherData), session.stamps.value(data));
}

void TestEmbeddedSampling::keysOfSeveralPeriodsShareTheTimeStampsThatTheyHaveInCommon()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.memory->setData(otherData, 2);
    session.service->watchKey(data, 10);
    session.service->watchKey(otherData, 20);

    session.service->startWatcher(100, 0);

    QTRY_VERIFY_WITH_TIMEOUT(session.stamps.value(otherData).size() >= 10, timeoutMs);
    for (const double stamp : session.stamps.value(otherData))
        QVERIFY(session.stamps.value(data).contains(stamp));
}

void TestEmbeddedSampling::everyAppendedSampleIsDeliveredOnce()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->appendData(data, 0);
    session.service->watchKey(data, 10);
    session.service->startWatcher(50, 0);
    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(data), QStringList(QStringLiteral("0")), timeoutMs);
    QStringList expected{QStringLiteral("0")};

    for (int i = 1; i <= 1000; ++i) {
        QVERIFY(session.memory->appendData(data, i));
        expected << QString::number(i);
    }

    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(data), expected, timeoutMs);
    const int batches = session.batches;
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= batches + 3, timeoutMs);
    QCOMPARE(session.values.value(data), expected);
    const QList<double> stamps = session.stamps.value(data);
    QVERIFY(std::adjacent_find(stamps.begin(), stamps.end(), std::greater_equal<double>()) == stamps.end());
}

void TestEmbeddedSampling::aWatcherThatStartsLaterSamplesTheNewestAppendedSample()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->appendData(data, 1, 12.5);
    session.memory->appendData(data, 2, 13.5);
    session.service->watchKey(data, 10);

    session.service->startWatcher(50, 0);

    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 3, timeoutMs);
    QCOMPARE(session.values.value(data), QStringList(QStringLiteral("2")));
    QCOMPARE(session.stamps.value(data), QList<double>{13.5});
}

void TestEmbeddedSampling::ticksThatABusyEventLoopMissesAreCounted()
{
    constexpr int periodMs = 10;
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.service->watchKey(data, periodMs);
    session.service->watchKey(anEvent, periodMs);
    const double before = unixTime();
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= 5, timeoutMs);
    QSignalSpy recorded(session.link.get(), &RobotLink::lossesRecorded);

    QThread::msleep(300);
    QTRY_VERIFY_WITH_TIMEOUT(recorded.count() > 0, timeoutMs);
    const qint64 rows = session.values.value(data).size();
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() > rows, timeoutMs);

    const qint64 missed = session.link->losses().missedTicks;
    QVERIFY2(missed >= 300 / periodMs - 2, qPrintable(QString::number(missed)));
    // Rows and missed ticks are together what was due until the newest row.
    const double newest = session.stamps.value(data).last();
    const double due = (newest - session.stamps.value(data).first()) * 1000 / periodMs + 1;
    const double counted = double(session.values.value(data).size() + session.link->losses().missedTicks);
    QVERIFY2(qAbs(counted - due) <= 2, qPrintable(QStringLiteral("%1 of %2").arg(counted).arg(due)));
    QCOMPARE(session.link->losses(data).missedTicks, session.link->losses().missedTicks);
    QCOMPARE(session.link->losses(anEvent), SampleLosses());
    const LossSpan span = session.link->lossLedger().total().span(LossCause::MissedTick);
    QVERIFY(span.from >= before - 0.1 && span.from <= span.to && span.to <= unixTime());
}

void TestEmbeddedSampling::ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted_data()
{
    QTest::addColumn<QString>("change");
    for (const QString change : {"unwatched", "all unwatched", "another unwatched", "stopped", "closed"})
        QTest::newRow(qPrintable(change)) << change;
}

void TestEmbeddedSampling::ticksMissedBeforeTheKeyIsUnwatchedOrTheWatcherStopsAreCounted()
{
    QFETCH(QString, change);
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.service->watchKey(data, 10);
    session.service->watchKey(otherData, 10);
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= 5, timeoutMs);
    const qint64 before = session.link->losses(data).missedTicks;

    QThread::msleep(300);
    if (change == "unwatched") {
        session.service->unwatchKey(data);
    } else if (change == "all unwatched") {
        session.service->unwatchAll();
    } else if (change == "another unwatched") {
        session.service->unwatchKey(otherData);
    } else if (change == "stopped") {
        session.service->stopWatcher();
    } else {
        session.link->close();
    }

    const qint64 missed = session.link->losses(data).missedTicks - before;
    QVERIFY2(missed >= 300 / 10 - 2, qPrintable(QString::number(missed)));
}

void TestEmbeddedSampling::aKeyWithoutSamplesMissesNothing()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->declareData(data);
    session.memory->appendData(otherData, 1);
    for (const QString& name : {data, otherData, anEvent})
        session.service->watchKey(name, 5);
    session.service->startWatcher(20, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 2, timeoutMs);

    QThread::msleep(50);
    const int batches = session.batches;
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= batches + 2, timeoutMs);

    QCOMPARE(session.link->losses(), SampleLosses());
}

void TestEmbeddedSampling::aTimeStampOfTheRobotIsDeliveredOnce()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1, 12.5);
    session.service->watchKey(data, 10);
    session.service->startWatcher(50, 0);
    QTRY_COMPARE_WITH_TIMEOUT(session.stamps.value(data), QList<double>{12.5}, timeoutMs);
    const int batches = session.batches;
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= batches + 3, timeoutMs);
    QCOMPARE(session.stamps.value(data), QList<double>{12.5});

    session.memory->setData(data, 2, 13.5);

    QTRY_COMPARE_WITH_TIMEOUT(session.stamps.value(data), (QList<double>{12.5, 13.5}), timeoutMs);
    QCOMPARE(session.values.value(data), QStringList({QStringLiteral("1"), QStringLiteral("2")}));
}

void TestEmbeddedSampling::aDeclaredKeyIsNotSampledBeforeItHasAValue()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->declareData(data);
    session.service->watchKey(data, 10);
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 3, timeoutMs);
    QCOMPARE(session.values.size(), 0);

    session.memory->setData(data, QVariant());

    QTRY_VERIFY_WITH_TIMEOUT(!session.values.value(data).isEmpty(), timeoutMs);
}

void TestEmbeddedSampling::whatIsRaisedWhileTheWatcherIsStoppedIsNotDelivered()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.memory->raiseEvent(anEvent, QStringLiteral("before"));
    session.service->startWatcher(50, 0);
    session.memory->raiseEvent(anEvent, QStringLiteral("running"));
    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(anEvent), QStringList(QStringLiteral("running")), timeoutMs);
    session.service->stopWatcher();
    session.memory->raiseEvent(anEvent, QStringLiteral("stopped"));

    session.service->startWatcher(50, 0);
    session.memory->raiseEvent(anEvent, QStringLiteral("running again"));

    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(anEvent),
                              QStringList({QStringLiteral("running"), QStringLiteral("running again")}), timeoutMs);
}

void TestEmbeddedSampling::stoppingDiscardsWhatWasCollected()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.service->startWatcher(hoursMs, 0);
    session.memory->raiseEvent(anEvent, 1);

    session.service->stopWatcher();
    session.service->startWatcher(50, 0);
    QTRY_VERIFY_WITH_TIMEOUT(session.batches >= 3, timeoutMs);

    QCOMPARE(session.values.size(), 0);
    // Nobody was listening any more: that is not a loss.
    QCOMPARE(session.link->losses().dropped, 0);
}

void TestEmbeddedSampling::anOverfullQueueKeepsTheNewestAndCountsTheRest()
{
    EmbeddedSession session(3);
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.service->watchKey(data, 100);
    session.service->startWatcher(200, 0);

    for (int i = 1; i <= 10; ++i)
        session.memory->raiseEvent(anEvent, i);

    QTRY_COMPARE_WITH_TIMEOUT(session.values.value(anEvent),
                              QStringList({QStringLiteral("8"), QStringLiteral("9"), QStringLiteral("10")}), timeoutMs);
    QCOMPARE(session.link->losses(anEvent).dropped, 7);
    QCOMPARE(session.link->losses(data).dropped, 0);
    QCOMPARE(session.link->losses(QStringLiteral("Nowhere")), SampleLosses());
    QCOMPARE(session.link->losses().dropped, 7);
}

void TestEmbeddedSampling::lossesOutliveTheConnectionAndEndWithTheNextOpening()
{
    EmbeddedSession session(1);
    QVERIFY(session.isConnected);
    session.service->watchKey(anEvent, 100);
    session.service->startWatcher(200, 0);
    session.memory->raiseEvent(anEvent, 1);
    session.memory->raiseEvent(anEvent, 2);
    QCOMPARE(session.link->losses().dropped, 1);

    session.service->unwatchAll();
    session.link->feed().outOfReach();
    QTRY_COMPARE_WITH_TIMEOUT(session.link->state(), RobotLink::Lost, timeoutMs);
    session.link->feed().inReach();
    QTRY_VERIFY_WITH_TIMEOUT(session.link->isConnected(), timeoutMs);
    QCOMPARE(session.link->losses(anEvent).dropped, 1);
    session.link->close();
    QCOMPARE(session.link->losses(anEvent).dropped, 1);

    session.link->open();
    QCOMPARE(session.link->losses(anEvent).dropped, 0);
}

void TestEmbeddedSampling::nonsensicalPeriodsAreTheShortest()
{
    EmbeddedSession session;
    QVERIFY(session.isConnected);
    session.memory->setData(data, 1);
    session.service->watchKey(data, -5);

    session.service->startWatcher(0, -1);

    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= 10, timeoutMs);
    session.service->setGatherPeriod(-1);
    session.service->watchKey(data, 0);
    const auto delivered = session.values.value(data).size();
    QTRY_VERIFY_WITH_TIMEOUT(session.values.value(data).size() >= delivered + 10, timeoutMs);
}

QTEST_GUILESS_MAIN(TestEmbeddedSampling)
#include "tst_embedded_sampling.moc"
