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
    for (int i = 0; i <= 100; ++i)
        QVERIFY(filter.isNew("Refused", QString::number(i)));

    QVERIFY(!filter.isNew("Refused", "100"));
    QVERIFY(!filter.isNew("Refused", "1"));
    QVERIFY(filter.isNew("Refused", "0"));
}

QTEST_APPLESS_MAIN(TestFailureFilter)
#include "tst_failure_filter.moc"
