// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_model.h>

#include "tested_watch.h"

#include <QtTest>

using namespace Velk;

class TestWatchModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheDisplayedKeys();
    void showsKeysThatWereDisplayedBefore();
    void addsKeysAtTheEndInPathOrder();
    void removesTheRowsOfRemovedKeys();
    void removesManyRunsOfRows();
    void countsItsRows();
    void takesNaturesFromAReconnection();
    void dropsKeysThatTheSynchronisationDropped();
    void bringsBackKeysThatTheSynchronisationBroughtBack();
    void showsAnotherSet();
    void isEmptyWhenTheSetIsDestroyed();
    void showsAChangedDescription();
    void isEmptyAfterTheSynchronisationDroppedAllKeys();
};

void TestWatchModel::showsTheDisplayedKeys()
{
    TestedWatch tested;

    tested.robot.display(list("Arm"));
    tested.robot.display(list("Touched"), EventNature);

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("Arm|Touched"));
    QCOMPARE(tested.cell("Touched", WatchModel::DescriptionColumn), text("Touched desc"));
    QCOMPARE(tested.cell("Touched", WatchModel::NatureColumn), text("EVENT"));
    QCOMPARE(tested.cell("Touched", WatchModel::ValueColumn), QString());
    QCOMPARE(tested.cell("Touched", WatchModel::TimeColumn), QString());
    QCOMPARE(tested.cell("Touched", WatchModel::AgeColumn), QString());
    QCOMPARE(tested.cell("Touched", WatchModel::PeriodColumn), text("100 ms"));
}

void TestWatchModel::showsKeysThatWereDisplayedBefore()
{
    WatchedRobot robot;
    robot.display(list("A"));
    robot.deliver({{text("A"), {{1.5, 7}}}});

    const WatchModel model(robot.keys);

    QCOMPARE(columnText(model, WatchModel::ValueColumn), list("7"));
}

void TestWatchModel::addsKeysAtTheEndInPathOrder()
{
    TestedWatch tested;
    QSignalSpy inserted(&tested.model, &QAbstractItemModel::rowsInserted);
    tested.robot.display(list("M"));

    tested.robot.display(list("Z|A10|A9|M"));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("M|A9|A10|Z"));
    QCOMPARE(inserted.count(), 2);
}

void TestWatchModel::removesTheRowsOfRemovedKeys()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C|D|E"));
    QSignalSpy removed(&tested.model, &QAbstractItemModel::rowsRemoved);

    tested.robot.keys->removeKeys(keySet(list("A|C|D|X")));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("B|E"));
    QCOMPARE(removed.count(), 2);
    QCOMPARE(tested.model.row(text("E")), 1);
    QCOMPARE(tested.model.row(text("C")), -1);
}

void TestWatchModel::removesManyRunsOfRows()
{
    TestedWatch tested;
    QStringList names;
    QStringList removedNames;
    QStringList keptNames;
    for (int i = 0; i < 300; ++i) {
        names << QStringLiteral("K%1").arg(i);
        (i % 2 ? removedNames : keptNames) << names.last();
    }
    tested.robot.display(names);

    tested.robot.keys->removeKeys(keySet(removedNames));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), keptNames);
    for (int row = 0; row < keptNames.size(); ++row)
        QCOMPARE(tested.model.row(keptNames.at(row)), row);
    QCOMPARE(tested.model.row(removedNames.first()), -1);
}

void TestWatchModel::countsItsRows()
{
    TestedWatch tested;
    QSignalSpy counted(&tested.model, &WatchModel::countChanged);

    tested.robot.display(list("A|B"));
    tested.robot.display(list("A|B"));
    QCOMPARE(tested.model.count(), 2);
    QCOMPARE(counted.count(), 1);
    tested.robot.keys->removeKeys(keySet(list("B")));
    QCOMPARE(tested.model.count(), 1);
    QCOMPARE(counted.count(), 2);
}

void TestWatchModel::takesNaturesFromAReconnection()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"), UnknownNature);
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);
    QSignalSpy reset(&tested.model, &QAbstractItemModel::modelReset);

    tested.robot.reconnect(list("A"), list("B"));
    tested.model.flush();

    QCOMPARE(columnText(tested.model, WatchModel::NatureColumn), list("DATA|EVENT|UNKNOWN"));
    QCOMPARE(rangesText(changed), list("0-1:0-8"));
    QCOMPARE(reset.count(), 0);
}

void TestWatchModel::dropsKeysThatTheSynchronisationDropped()
{
    TestedWatch tested;
    tested.robot.display(list("A|C"));
    tested.robot.manager.establish();
    tested.robot.display(list("B")); // while the catalogue is fetched: the displayed key set drops it
    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A|C|B"));

    tested.robot.finishLists(list("A|B|C"));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A|C"));
}

void TestWatchModel::bringsBackKeysThatTheSynchronisationBroughtBack()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.model.setColor(text("A"), Qt::magenta);
    tested.robot.manager.establish();
    tested.robot.keys->removeKeys(
        keySet(list("A"))); // while the catalogue is fetched: the displayed key set adds it again
    tested.robot.display(list("C"));

    tested.robot.finishLists(list("A|B|C"));

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("B|A"));
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
}

void TestWatchModel::showsAnotherSet()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    tested.model.setColor(text("A"), Qt::magenta);
    WatchedRobot other;
    other.display(list("A|C"));

    tested.model.setDisplayedKeys(other.keys);
    tested.robot.display(list("D"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A|C"));
    QCOMPARE(tested.values(), list("|"));
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    tested.model.setDisplayedKeys(nullptr);
    QCOMPARE(tested.model.rowCount(), 0);
}

void TestWatchModel::isEmptyWhenTheSetIsDestroyed()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    QSignalSpy changed(&tested.model, &WatchModel::displayedKeysChanged);

    delete tested.robot.keys;

    QCOMPARE(tested.model.rowCount(), 0);
    QVERIFY(!tested.model.displayedKeys());
    QCOMPARE(changed.count(), 1);
    tested.model.flush();
    QVERIFY(!tested.model.removeRows(0, 1));
}

void TestWatchModel::showsAChangedDescription()
{
    TestedWatch tested;
    tested.robot.keys->addKeys({MemoryKey(text("A"), text("from a file"), DataNature)});
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.reconnect(list("A"));
    tested.model.flush();

    QCOMPARE(tested.cell("A", WatchModel::DescriptionColumn), text("A desc"));
    QCOMPARE(rangesText(changed), list("0-0:0-8"));
}

void TestWatchModel::isEmptyAfterTheSynchronisationDroppedAllKeys()
{
    TestedWatch tested;
    tested.robot.manager.establish();
    tested.robot.display(list("A")); // while the catalogue is fetched: the displayed key set drops it

    tested.robot.finishLists(list("A"));

    QCOMPARE(tested.model.rowCount(), 0);
}

QTEST_MAIN(TestWatchModel)

#include "tst_watch_model.moc"
