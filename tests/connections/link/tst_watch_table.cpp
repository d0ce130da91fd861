// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/watch_table.h>

#include <QStringList>
#include <QTest>

using namespace Velk;

namespace {

using Table = WatchTable<QString>;

/// "10: A B, 20: C": the groups.
QString groups(const Table& table)
{
    QStringList texts;
    for (const auto& [period, keys] : table.groups()) {
        QStringList names;
        for (const QString* const key : keys)
            names << *key;
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
    void theGroupsOfAnUnwatchedKeyAreEmptyUntilTheyAreMadeAgain();
    void everyChangeAsksForNewGroups();
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
    QCOMPARE(*table.keysOfPeriod(20).front(), QStringLiteral("C"));
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

void TestWatchTable::theGroupsOfAnUnwatchedKeyAreEmptyUntilTheyAreMadeAgain()
{
    Table table;
    watch(table, "A", 10);
    watch(table, "B", 10);
    table.group();

    table.unwatch("A");
    QCOMPARE(groups(table), QString());
    QVERIFY(!table.find("A"));
    table.group();
    QCOMPARE(groups(table), QStringLiteral("10: B"));

    table.unwatchAll();
    QCOMPARE(groups(table), QString());
    QVERIFY(table.group().empty());
}

void TestWatchTable::everyChangeAsksForNewGroups()
{
    Table table;
    const auto isGrouped = [&table] {
        const bool was = table.isGrouped();
        table.group();
        return was;
    };
    watch(table, "A", 10);
    QVERIFY(!isGrouped());
    QVERIFY(isGrouped());
    watch(table, "A", 20);
    QVERIFY(!isGrouped());
    table.setSamplingPeriod(5);
    QVERIFY(!isGrouped());
    table.unwatch("Nowhere");
    QVERIFY(isGrouped());
    table.unwatch("A");
    QVERIFY(!isGrouped());
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
