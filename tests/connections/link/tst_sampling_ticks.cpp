// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/sample_stamps.h>
#include <connections/link/sampling_ticks.h>

#include <QTest>

#include <cmath>

using namespace Velk;

class TestSamplingTicks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void ticksAreTheMultiplesOfThePeriod();
    void everyMultipleIsTakenOrMissed_data();
    void everyMultipleIsTakenOrMissed();
    void aShorterPeriodIsDueAtOnceWithoutMissedTicks();
    void ticksThatAreMissedAfterAChangeCount();
    void aPeriodThatChangesAgainAndAgainTicksOn();
    void ticksThatBeginLateHaveMissedNothing();
    void missedTicksAreTakenOnceAndLeaveTheNewest();
    void aPeriodIsAtLeastOneMillisecond();
    void stampsAscendStrictly();
    void stampsMoveOnByTheirStep();
    void raisedStampsGoOnFromThere();
};

void TestSamplingTicks::ticksAreTheMultiplesOfThePeriod()
{
    SamplingTicks ticks(20, 5);

    QCOMPARE(ticks.next(), 20);
    QVERIFY(!ticks.take(19).isDue);
    QVERIFY(ticks.take(27).isDue);
    QCOMPARE(ticks.next(), 40);
    QVERIFY(!ticks.take(39).isDue);
    QVERIFY(ticks.take(40).isDue);
    QVERIFY(!ticks.take(40).isDue);
}

void TestSamplingTicks::everyMultipleIsTakenOrMissed_data()
{
    QTest::addColumn<QVector<qint64>>("wakes");
    QTest::addColumn<int>("taken");
    QTest::addColumn<int>("missed");
    QTest::newRow("in time") << QVector<qint64>{10, 20, 30, 40, 50} << 5 << 0;
    QTest::newRow("each a little late") << QVector<qint64>{13, 29, 31, 49, 59} << 5 << 0;
    QTest::newRow("late by a period") << QVector<qint64>{10, 35, 50} << 3 << 2;
    QTest::newRow("stopped for long") << QVector<qint64>{10, 10000} << 2 << 998;
    QTest::newRow("woken too early as well") << QVector<qint64>{5, 10, 15, 50, 55} << 2 << 3;
}

void TestSamplingTicks::everyMultipleIsTakenOrMissed()
{
    QFETCH(QVector<qint64>, wakes);
    QFETCH(int, taken);
    QFETCH(int, missed);
    SamplingTicks ticks(10, 0);
    int takenTicks = 0;
    qint64 missedTicks = 0;

    for (const qint64 now : wakes) {
        const SamplingTicks::Due due = ticks.take(now);
        takenTicks += due.isDue ? 1 : 0;
        missedTicks += due.missed;
    }

    QCOMPARE(takenTicks, taken);
    QCOMPARE(missedTicks, qint64(missed));
    QCOMPARE(takenTicks + missedTicks, wakes.last() / 10);
}

void TestSamplingTicks::aShorterPeriodIsDueAtOnceWithoutMissedTicks()
{
    SamplingTicks ticks(100000, 0);

    ticks.setPeriod(10, 5000);

    QVERIFY(ticks.next() <= 5000);
    const SamplingTicks::Due due = ticks.take(5003);
    QVERIFY(due.isDue);
    QCOMPARE(due.missed, 0);
    QCOMPARE(ticks.next(), 5010);
}

void TestSamplingTicks::ticksThatAreMissedAfterAChangeCount()
{
    SamplingTicks ticks(100000, 0);
    ticks.setPeriod(10, 5000);

    QCOMPARE(ticks.take(5045).missed, 3); // 5010, 5020 and 5030; 5040 is taken
}

void TestSamplingTicks::aPeriodThatChangesAgainAndAgainTicksOn()
{
    SamplingTicks ticks(40, 0);
    int taken = 0;
    for (qint64 now = 1; now <= 1000; ++now) {
        if (now % 10 == 0)
            ticks.setPeriod(now % 20 == 0 ? 40 : 30, now);
        taken += ticks.take(now).isDue ? 1 : 0;
    }

    QVERIFY2(taken >= 1000 / 40 && taken <= 1000 / 10, qPrintable(QString::number(taken)));
}

void TestSamplingTicks::ticksThatBeginLateHaveMissedNothing()
{
    SamplingTicks ticks(10, 1234);

    QCOMPARE(ticks.next(), 1240);
    QCOMPARE(ticks.take(1240).missed, 0);
}

void TestSamplingTicks::missedTicksAreTakenOnceAndLeaveTheNewest()
{
    SamplingTicks ticks(10, 0);
    QCOMPARE(ticks.takeMissed(9), 0);
    QCOMPARE(ticks.takeMissed(19), 0);

    QCOMPARE(ticks.takeMissed(45), 3);
    QCOMPARE(ticks.takeMissed(45), 0);
    QCOMPARE(ticks.takeMissed(55), 1);

    const SamplingTicks::Due due = ticks.take(60);
    QVERIFY(due.isDue);
    QCOMPARE(due.missed, 1);
    QCOMPARE(ticks.next(), 70);
}

void TestSamplingTicks::aPeriodIsAtLeastOneMillisecond()
{
    SamplingTicks ticks(-5, 0);
    QCOMPARE(ticks.periodMs(), 1);

    ticks.setPeriod(0, 0);

    QCOMPARE(ticks.periodMs(), 1);
}

void TestSamplingTicks::stampsAscendStrictly()
{
    SampleStamps stamps;

    QCOMPARE(stamps.next(10.0), 10.0);
    QCOMPARE(stamps.next(12.0), 12.0);
    const double afterTheSame = stamps.next(12.0);
    QVERIFY(afterTheSame > 12.0);
    QCOMPARE(afterTheSame, std::nextafter(12.0, 13.0));
    QVERIFY(stamps.next(1.0) > afterTheSame);
    QCOMPARE(stamps.next(13.0), 13.0);
    QCOMPARE(stamps.last(), 13.0);
}

void TestSamplingTicks::stampsMoveOnByTheirStep()
{
    SampleStamps stamps(0.25);
    QCOMPARE(stamps.next(10.0), 10.0);

    QCOMPARE(stamps.next(10.0), 10.25);
    QCOMPARE(stamps.next(3.0), 10.5);
    QCOMPARE(stamps.next(10.625), 10.625);
    SampleStamps far(1e-6);
    far.next(1e18);
    QVERIFY(far.next(1e18) > 1e18);
}

void TestSamplingTicks::raisedStampsGoOnFromThere()
{
    SampleStamps stamps(1.0);
    stamps.raise(5.0);
    stamps.raise(4.0);
    QCOMPARE(stamps.last(), 5.0);

    QCOMPARE(stamps.next(5.0), 6.0);
}

QTEST_APPLESS_MAIN(TestSamplingTicks)
#include "tst_sampling_ticks.moc"
