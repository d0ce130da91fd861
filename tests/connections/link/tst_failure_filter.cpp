// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/failure_filter.h>

#include <QTest>

using namespace Velk;

class TestFailureFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void theSameFailureIsNewOnce();
    void alternatingFailuresAreNewOnceEach();
    void everyFailureIsNewAfterClear();
    void onlyTheNewestAreRemembered();
    void anIntervalHasABoundedNumberOfFailures();
    void aFailureThatFoundNoRoomIsNewLater();
    void clearingMakesNoRoomInTheInterval();
};

void TestFailureFilter::theSameFailureIsNewOnce()
{
    FailureFilter filter;

    QVERIFY(filter.isNew("Refused", "by a"));
    QVERIFY(!filter.isNew("Refused", "by a"));
    QVERIFY(filter.isNew("Refused", "by b"));
    QVERIFY(filter.isNew("Lost", "by a"));
}

void TestFailureFilter::alternatingFailuresAreNewOnceEach()
{
    FailureFilter filter;
    int reported = 0;

    for (int i = 0; i < 10; ++i)
        reported += filter.isNew("Refused", i % 2 ? "by a" : "by b") ? 1 : 0;

    QCOMPARE(reported, 2);
}

void TestFailureFilter::everyFailureIsNewAfterClear()
{
    FailureFilter filter;
    filter.isNew("Refused", "by a");

    filter.clear();

    QVERIFY(filter.isNew("Refused", "by a"));
}

void TestFailureFilter::onlyTheNewestAreRemembered()
{
    FailureFilter filter;
    FailureFilter::Clock::time_point now;
    for (int i = 0; i <= 100; ++i)
        QVERIFY(filter.isNew("Refused", QString::number(i), now += FailureFilter::interval));

    now += FailureFilter::interval;
    QVERIFY(!filter.isNew("Refused", "100", now));
    QVERIFY(!filter.isNew("Refused", "1", now));
    QVERIFY(filter.isNew("Refused", "0", now));
}

void TestFailureFilter::anIntervalHasABoundedNumberOfFailures()
{
    FailureFilter filter;
    const FailureFilter::Clock::time_point begin;
    int reported = 0;

    // A thousand a second, each with a text of its own, for five minutes.
    for (int i = 0; i < 300000; ++i)
        reported += filter.isNew("Refused", QString::number(i), begin + std::chrono::milliseconds(i)) ? 1 : 0;

    QCOMPARE(reported, 5 * 20);
}

void TestFailureFilter::aFailureThatFoundNoRoomIsNewLater()
{
    FailureFilter filter;
    const FailureFilter::Clock::time_point now;
    for (int i = 0; i < FailureFilter::maxPerInterval; ++i)
        QVERIFY(filter.isNew("Refused", QString::number(i), now));

    QVERIFY(!filter.isNew("Lost", "by a", now));
    QVERIFY(filter.isNew("Lost", "by a", now + FailureFilter::interval));
    QVERIFY(!filter.isNew("Lost", "by a", now + FailureFilter::interval));
}

void TestFailureFilter::clearingMakesNoRoomInTheInterval()
{
    FailureFilter filter;
    const FailureFilter::Clock::time_point now;
    for (int i = 0; i < FailureFilter::maxPerInterval; ++i)
        QVERIFY(filter.isNew("Refused", QString::number(i), now));

    filter.clear();

    QVERIFY(!filter.isNew("Refused", "0", now));
}

QTEST_APPLESS_MAIN(TestFailureFilter)
#include "tst_failure_filter.moc"
