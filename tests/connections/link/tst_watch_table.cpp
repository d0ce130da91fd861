// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/watch_table.h>

#include <QStringList>
#include <QTest>

using namespace Velk;

namespace {

using Table = WatchTable<QString>;

/// "10: A B, 20: C": the groups of periods up to 100 ms.
QString groups(const Table& table)
{
    QStringList texts;
    for (int period = 1; period <= 100; ++period) {
        QStringList names;
        for (const auto* const entry : table.keysOfPeriod(period))
            names << entry->key;
        if (names.isEmpty())
            continue;
        names.sort();
        texts << QStringLiteral("%1: %2").arg(period).arg(names.join(' '));
    }
    return texts.join(", ");
}

bool watch(Table& table, const QString& name, int period)
{
    return table.watch(name, period, [&name] { return name; });
}

} // namespace

class TestWatchTable : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keysAreGroupedByTheirOwnPeriods();
    void theWatchersPeriodHoldsForEveryKey();
    void watchingAgainChangesThePeriodOnly();
    void aPeriodIsAtLeastOneMillisecond();
    void anUnwatchedKeyLeavesItsGroup();
    void aChangedKeyStaysInItsGroupUntilTheNextGrouping();
    void unwatchingAllKeysEmptiesTheGroups();
    void aKeyStaysWhereItIs();
    void aPeriodWithoutKeysHasNone();
};

void TestWatchTable::keysAreGroupedByTheirOwnPeriods()
{
    Table table;
    watch(table, "C", 20);
    watch(table, "A", 10);
    watch(table, "B", 10);

    QCOMPARE(table.group(), std::vector<int>({10, 20}));

    QCOMPARE(groups(table), QStringLiteral("10: A B, 20: C"));
    QCOMPARE(table.keysOfPeriod(20).front()->key, QStringLiteral("C"));
}

void TestWatchTable::theWatchersPeriodHoldsForEveryKey()
{
    Table table;
    watch(table, "A", 10);
    watch(table, "B", 20);

    table.setSamplingPeriod(50);
    table.group();
    QCOMPARE(groups(table), QStringLiteral("50: A B"));
    table.setSamplingPeriod(0);
    table.group();

    QCOMPARE(groups(table), QStringLiteral("10: A, 20: B"));
}

void TestWatchTable::watchingAgainChangesThePeriodOnly()
{
    Table table;
    QVERIFY(watch(table, "A", 10));

    QVERIFY(!table.watch("A", 30, [] { return QStringLiteral("another"); }));

    table.group();
    QCOMPARE(groups(table), QStringLiteral("30: A"));
}

void TestWatchTable::aPeriodIsAtLeastOneMillisecond()
{
    Table table;
    watch(table, "A", -3);
    table.setSamplingPeriod(-1);

    QCOMPARE(table.group(), std::vector<int>({1}));
}

void TestWatchTable::anUnwatchedKeyLeavesItsGroup()
{
    Table table;
    for (const char* name : {"A", "B", "C"})
        watch(table, name, 10);
    table.group();

    table.unwatch("A");
    QCOMPARE(groups(table), QStringLiteral("10: B C"));
    QVERIFY(!table.find("A"));
    table.unwatch("C");
    QCOMPARE(groups(table), QStringLiteral("10: B"));
    table.unwatch("B");
    QCOMPARE(groups(table), QString());
    QVERIFY(table.group().empty());
}

void TestWatchTable::aChangedKeyStaysInItsGroupUntilTheNextGrouping()
{
    Table table;
    watch(table, "A", 10);
    watch(table, "B", 10);
    table.group();

    watch(table, "A", 20);
    watch(table, "C", 10);
    table.setSamplingPeriod(5);
    QCOMPARE(groups(table), QStringLiteral("10: A B"));
    table.unwatch("C");
    table.unwatch("A");
    QCOMPARE(groups(table), QStringLiteral("10: B"));
    table.group();

    QCOMPARE(groups(table), QStringLiteral("5: B"));
}

void TestWatchTable::unwatchingAllKeysEmptiesTheGroups()
{
    Table table;
    watch(table, "A", 10);
    table.group();

    table.unwatchAll();

    QCOMPARE(groups(table), QString());
    QVERIFY(table.group().empty());
}

void TestWatchTable::aKeyStaysWhereItIs()
{
    Table table;
    watch(table, "M", 10);
    const QString* const key = table.find("M");

    for (int i = 0; i < 100; ++i)
        watch(table, QString::number(i), 10);
    table.unwatch("50");

    QCOMPARE(table.find("M"), key);
}

void TestWatchTable::aPeriodWithoutKeysHasNone()
{
    Table table;

    QVERIFY(table.keysOfPeriod(10).empty());
}

QTEST_APPLESS_MAIN(TestWatchTable)
#include "tst_watch_table.moc"
