// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/sampling_schedule.h>

#include <QElapsedTimer>
#include <QMap>
#include <QPointer>
#include <QSignalSpy>
#include <QTest>
#include <QThread>

#include <memory>
#include <utility>
#include <vector>

using namespace Velk;

namespace {

constexpr int timeoutMs = 60000;
constexpr int hoursMs = 9999990;

/// A schedule with sampling periods, and the counts of its signals.
struct Session
{
    explicit Session(std::vector<int> samplingPeriods)
        : periods(std::move(samplingPeriods))
    {
        QObject::connect(&schedule, &SamplingSchedule::groupingDue, &schedule, [this] {
            ++groupings;
            schedule.setPeriods(periods);
        });
        QObject::connect(&schedule, &SamplingSchedule::samplingDue, &schedule, [this](int period, qint64 missedTicks) {
            ++ticks[period];
            missed[period] += missedTicks;
        });
        QObject::connect(&schedule, &SamplingSchedule::ticksMissed, &schedule,
                         [this](int period, qint64 count) { missed[period] += count; });
        QObject::connect(&schedule, &SamplingSchedule::deliveryDue, &schedule, [this] { ++deliveries; });
    }

    SamplingSchedule schedule;
    std::vector<int> periods;
    int groupings = 0;
    int deliveries = 0;
    QMap<int, qint64> ticks;
    QMap<int, qint64> missed;
};

} // namespace

class TestSamplingSchedule : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void eachPeriodTicksAndDeliveriesComeBetween();
    void manyChangesOfOneTurnAreGroupedOnce();
    void aBusyThreadMissesTicksAndEachIsCounted();
    void ticksMissedBeforeTheirPeriodGoesAreCounted();
    void ticksMissedAfterTheChangeOfTheirPeriodAreCounted();
    void ticksMissedBeforeAStopAreCounted();
    void aStoppedScheduleIsSilent();
    void nothingIsScheduledUnlessItRuns();
    void startingARunningScheduleChangesTheDelivery();
    void aShorterPeriodTakesEffectAtOnce();
    void aSlotMayStopOrDeleteTheSchedule_data();
    void aSlotMayStopOrDeleteTheSchedule();
};

void TestSamplingSchedule::eachPeriodTicksAndDeliveriesComeBetween()
{
    Session session({5, 20, hoursMs});

    session.schedule.start(50);

    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(20) >= 5 && session.deliveries >= 2, timeoutMs);
    QVERIFY(session.ticks.value(5) > 0);
    QCOMPARE(session.ticks.value(hoursMs), 0);
    QCOMPARE(session.groupings, 1);
}

void TestSamplingSchedule::manyChangesOfOneTurnAreGroupedOnce()
{
    Session session({20});
    session.schedule.start(50);
    for (int i = 0; i < 100; ++i)
        session.schedule.scheduleGrouping();
    QCOMPARE(session.groupings, 0);
    QTRY_COMPARE_WITH_TIMEOUT(session.groupings, 1, timeoutMs);

    session.schedule.scheduleGrouping();

    QTRY_COMPARE_WITH_TIMEOUT(session.groupings, 2, timeoutMs);
}

void TestSamplingSchedule::aBusyThreadMissesTicksAndEachIsCounted()
{
    Session session({5});
    QElapsedTimer clock;
    clock.start();
    session.schedule.start(hoursMs);
    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(5) >= 2, timeoutMs);

    QThread::msleep(100);
    const qint64 before = session.ticks.value(5);
    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(5) > before, timeoutMs);
    session.schedule.stop();

    // No more than were due: the clock of the test starts before the schedule's.
    QVERIFY(session.missed.value(5) >= 100 / 5 - 2);
    const qint64 counted = session.ticks.value(5) + session.missed.value(5);
    QVERIFY2(counted <= clock.elapsed() / 5, qPrintable(QString::number(counted)));
}

void TestSamplingSchedule::ticksMissedBeforeTheirPeriodGoesAreCounted()
{
    Session session({5});
    session.schedule.start(hoursMs);
    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(5) >= 2, timeoutMs);

    QThread::msleep(100);
    session.periods = {hoursMs};
    session.schedule.scheduleGrouping();

    QVERIFY(session.missed.value(5) >= 100 / 5 - 2);
    const qint64 ticks = session.ticks.value(5);
    QTRY_COMPARE_WITH_TIMEOUT(session.groupings, 2, timeoutMs);
    QCOMPARE(session.ticks.value(5), ticks + 1);
}

void TestSamplingSchedule::ticksMissedAfterTheChangeOfTheirPeriodAreCounted()
{
    Session session({5});
    session.schedule.start(hoursMs);
    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(5) >= 2, timeoutMs);

    session.periods = {hoursMs};
    session.schedule.scheduleGrouping();
    QThread::msleep(100);

    QTRY_COMPARE_WITH_TIMEOUT(session.groupings, 2, timeoutMs);
    QVERIFY(session.missed.value(5) >= 100 / 5 - 2);
}

void TestSamplingSchedule::ticksMissedBeforeAStopAreCounted()
{
    Session session({5});
    session.schedule.start(hoursMs);
    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(5) >= 2, timeoutMs);

    QThread::msleep(100);
    session.schedule.stop();

    QVERIFY(session.missed.value(5) >= 100 / 5 - 2);
}

void TestSamplingSchedule::aStoppedScheduleIsSilent()
{
    Session session({5});
    session.schedule.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(session.deliveries >= 1, timeoutMs);
    session.schedule.scheduleGrouping();

    session.schedule.stop();

    const int groupings = session.groupings;
    const qint64 ticks = session.ticks.value(5);
    const int deliveries = session.deliveries;
    Session other({5});
    other.schedule.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(other.deliveries >= 3, timeoutMs);
    QVERIFY(!session.schedule.isRunning());
    QCOMPARE(session.groupings, groupings);
    QCOMPARE(session.ticks.value(5), ticks);
    QCOMPARE(session.deliveries, deliveries);
}

void TestSamplingSchedule::nothingIsScheduledUnlessItRuns()
{
    Session session({5});

    session.schedule.scheduleGrouping();
    session.schedule.setGatherPeriod(5);
    QCoreApplication::processEvents();

    QCOMPARE(session.groupings, 0);
    QVERIFY(!session.schedule.isRunning());
}

void TestSamplingSchedule::startingARunningScheduleChangesTheDelivery()
{
    Session session({hoursMs});
    session.schedule.start(hoursMs);
    QTRY_COMPARE_WITH_TIMEOUT(session.groupings, 1, timeoutMs);

    session.schedule.start(10);

    QTRY_VERIFY_WITH_TIMEOUT(session.deliveries >= 2, timeoutMs);
    QCOMPARE(session.groupings, 1);
}

void TestSamplingSchedule::aShorterPeriodTakesEffectAtOnce()
{
    Session session({hoursMs});
    session.schedule.start(hoursMs);
    QTRY_COMPARE_WITH_TIMEOUT(session.groupings, 1, timeoutMs);

    session.periods = {10, 20};
    session.schedule.scheduleGrouping();

    QTRY_VERIFY_WITH_TIMEOUT(session.ticks.value(10) >= 2 && session.ticks.value(20) >= 2, timeoutMs);
    QCOMPARE(session.ticks.value(hoursMs), 0);
}

void TestSamplingSchedule::aSlotMayStopOrDeleteTheSchedule_data()
{
    QTest::addColumn<QString>("signal");
    QTest::addColumn<bool>("isDeleted");
    for (const QString signal : {"grouping", "sampling", "delivery"}) {
        QTest::newRow(qPrintable(signal + ", stopped")) << signal << false;
        QTest::newRow(qPrintable(signal + ", deleted")) << signal << true;
    }
}

void TestSamplingSchedule::aSlotMayStopOrDeleteTheSchedule()
{
    QFETCH(QString, signal);
    QFETCH(bool, isDeleted);
    const QPointer<SamplingSchedule> schedule(new SamplingSchedule);
    QStringList log;
    const auto onSignal = [&](const QString& name) {
        log << name;
        if (name == signal && isDeleted)
            delete schedule;
        else if (name == signal)
            schedule->stop();
    };
    connect(schedule, &SamplingSchedule::groupingDue, this, [&] {
        schedule->setPeriods({5, 10});
        onSignal("grouping");
    });
    connect(schedule, &SamplingSchedule::samplingDue, this, [&] { onSignal("sampling"); });
    connect(schedule, &SamplingSchedule::deliveryDue, this, [&] { onSignal("delivery"); });
    schedule->start(20);
    QThread::msleep(25); // everything is due in the first turns

    QTRY_VERIFY_WITH_TIMEOUT(!schedule || !schedule->isRunning(), timeoutMs);
    Session other({5});
    other.schedule.start(10);
    QTRY_VERIFY_WITH_TIMEOUT(other.deliveries >= 3, timeoutMs);

    QCOMPARE(log.count(signal), 1);
    QCOMPARE(log.last(), signal);
    delete schedule;
}

QTEST_GUILESS_MAIN(TestSamplingSchedule)
#include "tst_sampling_schedule.moc"
