// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_model.h>

#include "tested_watch.h"

#include <QTimer>
#include <QtTest>

using namespace Velk;

class TestWatchModelValues : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheNewestValue();
    void reportsNewValuesAtTheEndOfTheInterval();
    void reportsManyBatchesOnce();
    void reportsOnlyRowsThatGotAValue();
    void reportsByItselfAfterTheInterval();
    void keepsRowsAndTheirChangesTogether();
    void survivesASlotThatRemovesKeys();
    void showsTheAgeOfAValue();
    void reportsOnlyAgesThatChanged();
    void keepsTheValueOverAReconnection();
    void freezesAndThaws();
    void batchesFasterThanTheIntervalDoNotPutTheUpdateOff();
    void thawingReportsByItself();
    void aKeyThatComesIntoAFrozenTableShowsItsValue();
    void anAgeInMinutesIsReportedEveryMinute();
};

void TestWatchModelValues::showsTheNewestValue()
{
    TestedWatch tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, 5}, {2.25, 7.5}}}});

    QCOMPARE(tested.values(), list("7.5"));
    QCOMPARE(tested.cell("A", WatchModel::TimeColumn), text("2.250"));
}

void TestWatchModelValues::reportsNewValuesAtTheEndOfTheInterval()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    QCOMPARE(changed.count(), 0);

    tested.model.flush();
    QCOMPARE(rangesText(changed), list("0-0:5-7"));
    tested.model.flush();
    QCOMPARE(changed.count(), 1);
}

void TestWatchModelValues::reportsManyBatchesOnce()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    tested.robot.deliver({{text("B"), {{1.0, 5}}}});
    tested.robot.deliver({{text("A"), {{2.0, 6}}}});
    tested.model.flush();

    QCOMPARE(rangesText(changed), list("0-1:5-7"));
    QCOMPARE(tested.values(), list("6|5"));
}

void TestWatchModelValues::reportsOnlyRowsThatGotAValue()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C|D|E|F"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}},
                          {text("B"), {{1.0, 5}}},
                          {text("C"), {}},
                          {text("E"), {{1.0, 5}}},
                          {text("F"), {{1.0, 5}}},
                          {text("X"), {{1.0, 5}}}});
    tested.model.flush();

    QCOMPARE(rangesText(changed), list("0-1:5-7|4-5:5-7"));
    QVERIFY(changed.at(0).at(2).value<QVector<int>>().contains(WatchModel::ValueTextRole));
}

void TestWatchModelValues::reportsByItselfAfterTheInterval()
{
    TestedWatch tested;
    tested.model.setUpdateInterval(1);
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("A"), {{1.0, 5}}}});

    QCOMPARE(changed.count(), 0);
    QTRY_COMPARE_WITH_TIMEOUT(changed.count(), 1, 30000);
}

void TestWatchModelValues::keepsRowsAndTheirChangesTogether()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.robot.deliver({{text("C"), {{1.0, 5}}}});
    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.model.flush();

    QCOMPARE(rangesText(changed), list("1-1:5-7"));
}

void TestWatchModelValues::survivesASlotThatRemovesKeys()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    connect(&tested.model, &QAbstractItemModel::dataChanged, &tested.model,
            [&tested] { tested.robot.keys->removeKeys(keySet(list("B|C"))); });

    tested.robot.deliver({{text("A"), {{1.0, 5}}}, {text("C"), {{1.0, 5}}}});
    tested.model.flush();

    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A"));
}

void TestWatchModelValues::showsTheAgeOfAValue()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.nowMs = 5000;
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    const auto ageAt = [&tested](qint64 ms) {
        tested.nowMs = 5000 + ms;
        return tested.cell("A", WatchModel::AgeColumn);
    };

    QCOMPARE(ageAt(0), text("< 1 s"));
    QCOMPARE(ageAt(59999), text("59 s"));
    QCOMPARE(ageAt(60000), text("1 min"));
    QCOMPARE(ageAt(3599999), text("59 min"));
    QCOMPARE(ageAt(2 * 3600000 + 5 * 60000), text("2 h 5 min"));
    QCOMPARE(ageAt(1234), text("1 s"));
    QCOMPARE(tested.model.index(0, 0).data(WatchModel::AgeRole).toLongLong(), 1234);
}

void TestWatchModelValues::reportsOnlyAgesThatChanged()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}, {text("B"), {{1.0, 5}}}});
    tested.model.flush();
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.nowMs = 999;
    tested.model.flush();
    QCOMPARE(changed.count(), 0);

    tested.nowMs = 1000;
    tested.robot.deliver({{text("B"), {{2.0, 6}}}});
    tested.model.flush();
    QCOMPARE(rangesText(changed), list("0-0:7-7|1-1:5-7"));
}

void TestWatchModelValues::keepsTheValueOverAReconnection()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});

    tested.nowMs = 7000;
    tested.robot.manager.lose();
    tested.robot.reconnect(list("A"));

    QCOMPARE(tested.values(), list("5"));
    QCOMPARE(tested.cell("A", WatchModel::AgeColumn), text("7 s"));
}

void TestWatchModelValues::freezesAndThaws()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}, {text("B"), {{1.0, 50}}}});
    tested.model.flush();
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.model.setFrozen(true);
    tested.robot.deliver({{text("A"), {{2.0, 6}}}});
    tested.robot.display(list("C"));
    tested.model.flush();
    QCOMPARE(tested.values(), list("5|50|"));
    QCOMPARE(changed.count(), 0);

    tested.model.setFrozen(false);
    tested.model.flush();
    QCOMPARE(tested.values(), list("6|50|"));
    QCOMPARE(rangesText(changed), list("0-0:5-7"));
}

void TestWatchModelValues::batchesFasterThanTheIntervalDoNotPutTheUpdateOff()
{
    TestedWatch tested;
    tested.model.setUpdateInterval(50);
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);
    QTimer batches;
    double time = 0.0;
    connect(&batches, &QTimer::timeout, &batches, [&] {
        time += 1.0;
        tested.robot.deliver({{text("A"), {{time, time}}}});
    });

    batches.start(0);

    QTRY_VERIFY_WITH_TIMEOUT(changed.count() > 0, 30000);
}

void TestWatchModelValues::thawingReportsByItself()
{
    TestedWatch tested;
    tested.model.setUpdateInterval(1);
    tested.robot.display(list("A"));
    tested.model.setFrozen(true);
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    tested.model.flush();
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.model.setFrozen(false);
    // Timers fire in the order in which they are due: the interval before this one, and this one before the age timer.
    bool isLate = false;
    QTimer::singleShot(500, Qt::PreciseTimer, &tested.model, [&isLate] { isLate = true; });
    while (changed.isEmpty() && !isLate)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);

    QCOMPARE(rangesText(changed), list("0-0:5-7"));
}

void TestWatchModelValues::aKeyThatComesIntoAFrozenTableShowsItsValue()
{
    TestedWatch tested;
    WatchedRobot other;
    other.display(list("A"));
    other.deliver({{text("A"), {{1.0, 5}}}});
    tested.model.setFrozen(true);

    tested.model.setDisplayedKeys(other.keys);

    QCOMPARE(tested.values(), list("5"));
}

void TestWatchModelValues::anAgeInMinutesIsReportedEveryMinute()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{1.0, 5}}}});
    tested.nowMs = 60000;
    tested.model.flush();
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.nowMs = 119999;
    tested.model.flush();
    QCOMPARE(changed.count(), 0);

    tested.nowMs = 120000;
    tested.model.flush();
    QCOMPARE(rangesText(changed), list("0-0:7-7"));
}

QTEST_MAIN(TestWatchModelValues)

#include "tst_watch_model_values.moc"
