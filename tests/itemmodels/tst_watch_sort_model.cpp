// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_sort_model.h>

#include "model_text.h"
#include "watched_robot.h"

#include <QAbstractItemModelTester>
#include <QtTest>

using namespace Velk;

namespace {

struct TestedSort
{
    TestedSort()
    {
        source.setClock([this] { return nowMs; });
    }

    WatchedRobot robot;
    qint64 nowMs = 0;
    WatchModel source{robot.keys};
    WatchSortModel model{&source};
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

QStringList sortedNames(const WatchSortModel& model)
{
    return columnText(model, WatchModel::NameColumn);
}

} // namespace

class TestWatchSortModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsTheSourcesOrderUntilItIsSorted();
    void sortsByValueAndNotByText();
    void sortsByColumns_data();
    void sortsByColumns();
    void keepsItsOrderWhileValuesChange();
    void followsTheValuesWhenItIsToldTo();
    void sortsInANewRow();
};

void TestWatchSortModel::showsTheSourcesOrderUntilItIsSorted()
{
    TestedSort tested;

    tested.robot.display(list("B"));
    tested.robot.display(list("A"));

    QCOMPARE(sortedNames(tested.model), list("B|A"));
}

void TestWatchSortModel::sortsByValueAndNotByText()
{
    TestedSort tested;
    tested.robot.display(list("A|B|C|D|E"));
    tested.robot.deliver({{text("A"), {{1.0, 10}}},
                          {text("B"), {{1.0, 9.5}}},
                          {text("C"), {{1.0, text("1")}}},
                          {text("D"), {{1.0, -100}}}});

    tested.model.sort(WatchModel::ValueColumn);
    QCOMPARE(sortedNames(tested.model), list("E|D|B|A|C"));
    tested.model.sort(WatchModel::ValueColumn, Qt::DescendingOrder);
    QCOMPARE(sortedNames(tested.model), list("C|A|B|D|E"));
}

void TestWatchSortModel::sortsByColumns_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("flag") << int(WatchModel::ShownColumn) << list("J9|j10|J10");
    QTest::newRow("name") << int(WatchModel::NameColumn) << list("J9|J10|j10");
    QTest::newRow("nature") << int(WatchModel::NatureColumn) << list("j10|J9|J10");
    QTest::newRow("time") << int(WatchModel::TimeColumn) << list("j10|J10|J9");
    QTest::newRow("age, the youngest first") << int(WatchModel::AgeColumn) << list("j10|J9|J10");
}

void TestWatchSortModel::sortsByColumns()
{
    QFETCH(int, column);
    TestedSort tested;
    tested.robot.display(list("j10"), DataNature);
    tested.robot.display(list("J10"), UnknownNature);
    tested.robot.display(list("J9"), EventNature);
    tested.source.setShown(text("J9"), false);
    tested.robot.deliver({{text("J10"), {{9.0, 0}}}});
    tested.nowMs = 1000;
    tested.robot.deliver({{text("J9"), {{10.0, 0}}}});

    tested.model.sort(column);

    QTEST(sortedNames(tested.model), "expected");
}

void TestWatchSortModel::keepsItsOrderWhileValuesChange()
{
    TestedSort tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}, {text("B"), {{1.0, 2}}}});
    tested.model.sort(WatchModel::ValueColumn);

    tested.robot.deliver({{text("A"), {{2.0, 3}}}});
    tested.source.flush();
    QCOMPARE(sortedNames(tested.model), list("A|B"));

    tested.model.sort(WatchModel::ValueColumn);
    QCOMPARE(sortedNames(tested.model), list("B|A"));
}

void TestWatchSortModel::followsTheValuesWhenItIsToldTo()
{
    TestedSort tested;
    tested.robot.display(list("A|B"));
    tested.robot.deliver({{text("A"), {{1.0, 1}}}, {text("B"), {{1.0, 2}}}});
    tested.model.setDynamicSortFilter(true);
    tested.model.sort(WatchModel::ValueColumn);

    tested.robot.deliver({{text("A"), {{2.0, 3}}}});
    tested.source.flush();

    QCOMPARE(sortedNames(tested.model), list("B|A"));
}

void TestWatchSortModel::sortsInANewRow()
{
    TestedSort tested;
    tested.robot.display(list("A|C"));
    tested.model.sort(WatchModel::NameColumn);

    tested.robot.display(list("B"));

    QCOMPARE(sortedNames(tested.model), list("A|B|C"));
}

QTEST_MAIN(TestWatchSortModel)

#include "tst_watch_sort_model.moc"
