// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_model.h>

#include "tested_watch.h"

#include <QTextDocument>
#include <QtTest>

using namespace Velk;

class TestWatchModelCells : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesEachRole();
    void describesItsColumns();
    void alignsNumbersToTheRight();
    void showsAListInBriefAndInFull();
    void showsTimesAsTheFormatterMakesThem();
    void namesColorsAndFlagsInWords();
    void toolTipsShowTextOfTheRobotCharacterByCharacter();
};

void TestWatchModelCells::givesEachRole()
{
    TestedWatch tested;
    tested.robot.display(list("Arm"), EventNature);
    tested.robot.deliver({{text("Arm"), {{1.5, 2.5}}}});
    tested.nowMs = 3000;
    const QModelIndex index = tested.model.index(0, 0);

    QCOMPARE(index.data(WatchModel::NameRole).toString(), text("Arm"));
    QCOMPARE(index.data(WatchModel::DescriptionRole).toString(), text("Arm desc"));
    QCOMPARE(index.data(WatchModel::NatureRole).toInt(), int(EventNature));
    QCOMPARE(index.data(WatchModel::NatureTextRole).toString(), text("EVENT"));
    QCOMPARE(index.data(WatchModel::ValueRole), QVariant(2.5));
    QCOMPARE(index.data(WatchModel::ValueTextRole).toString(), text("2.5"));
    QCOMPARE(index.data(WatchModel::TimeRole), QVariant(1.5));
    QCOMPARE(index.data(WatchModel::TimeTextRole).toString(), text("1.500"));
    QCOMPARE(index.data(WatchModel::AgeRole).toLongLong(), 3000);
    QCOMPARE(index.data(WatchModel::AgeTextRole).toString(), text("3 s"));
    QCOMPARE(index.data(WatchModel::PeriodRole).toInt(), 100);
    const QList<QByteArray> names = tested.model.roleNames().values();
    for (const char* name : {"display", "shown", "keyColor", "name", "description", "nature", "natureText", "value",
                             "valueText", "time", "timeText", "age", "ageText", "period", "sortValue"})
        QVERIFY2(names.contains(name), name);
}

void TestWatchModelCells::describesItsColumns()
{
    TestedWatch tested;
    QStringList titles;
    for (int column = 0; column < WatchModel::ColumnCount; ++column) {
        titles << tested.model.headerData(column, Qt::Horizontal).toString();
        QVERIFY(!tested.model.headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString().isEmpty());
    }

    QCOMPARE(titles, list("Shown|Color|Name|Description|Nature|Value|Time|Age|Period"));
}

void TestWatchModelCells::alignsNumbersToTheRight()
{
    TestedWatch tested;
    tested.robot.display(list("Flag|Number|Text"));
    tested.robot.deliver(
        {{text("Flag"), {{1.0, true}}}, {text("Number"), {{1.0, 5}}}, {text("Text"), {{1.0, text("x")}}}});
    const auto isRight = [&tested](const char* name, int column) {
        return (tested.model.index(tested.model.row(text(name)), column).data(Qt::TextAlignmentRole).toInt() &
                Qt::AlignRight) != 0;
    };

    QVERIFY(isRight("Number", WatchModel::ValueColumn));
    QVERIFY(isRight("Text", WatchModel::TimeColumn));
    QVERIFY(isRight("Text", WatchModel::PeriodColumn));
    QVERIFY(!isRight("Text", WatchModel::ValueColumn));
    QVERIFY(!isRight("Flag", WatchModel::ValueColumn));
    QVERIFY(!isRight("Number", WatchModel::NameColumn));
}

void TestWatchModelCells::showsAListInBriefAndInFull()
{
    TestedWatch tested;
    tested.robot.display(list("A"));

    tested.robot.deliver({{text("A"), {{1.0, QVariantList{1, 2, 3, 4, 5, 6}}}}});

    QCOMPARE(tested.values(), QStringList{text("[1, 2, 3, 4, \u2026] (6 in all)")});
    QCOMPARE(tested.cell("A", WatchModel::ValueColumn, Qt::ToolTipRole), text("1\n2\n3\n4\n5\n6"));
}

void TestWatchModelCells::showsTimesAsTheFormatterMakesThem()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.deliver({{text("A"), {{90.0, 5}}}});
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.model.setTimeFormatter([](double time) { return QStringLiteral("%1 min").arg(time / 60.0); });

    QCOMPARE(tested.cell("A", WatchModel::TimeColumn), text("1.5 min"));
    QCOMPARE(rangesText(changed), list("0-0:6-6"));
}

void TestWatchModelCells::namesColorsAndFlagsInWords()
{
    TestedWatch tested;
    tested.robot.display(list("Arm"));

    QCOMPARE(tested.cell("Arm", WatchModel::ShownColumn, Qt::AccessibleTextRole), text("shown"));
    QCOMPARE(tested.cell("Arm", WatchModel::ColorColumn, Qt::AccessibleTextRole), text("blue"));
    QCOMPARE(tested.cell("Arm", WatchModel::ColorColumn, Qt::AccessibleDescriptionRole), text("Color of Arm"));
    QCOMPARE(tested.cell("Arm", WatchModel::ValueColumn, Qt::AccessibleTextRole), text("no value yet"));
    tested.robot.deliver({{text("Arm"), {{1.5, true}}}});
    QCOMPARE(tested.cell("Arm", WatchModel::ValueColumn, Qt::AccessibleTextRole), text("true"));
}

void TestWatchModelCells::toolTipsShowTextOfTheRobotCharacterByCharacter()
{
    TestedWatch tested;
    tested.robot.display(list("<b>Arm</b>|Plain"));
    tested.robot.deliver({{text("<b>Arm</b>"), {{1.0, text("<i>1</i>\n  <img src='x.png'>")}}}});
    const auto shownText = [&tested](int column) {
        QTextDocument document;
        document.setHtml(tested.cell("<b>Arm</b>", column, Qt::ToolTipRole));
        return document.toPlainText();
    };

    QCOMPARE(shownText(WatchModel::NameColumn), text("<b>Arm</b>\n<b>Arm</b> desc\nDATA"));
    QCOMPARE(shownText(WatchModel::ValueColumn), text("<i>1</i>\n  <img src='x.png'>"));
    QCOMPARE(tested.cell("Plain", WatchModel::NameColumn, Qt::ToolTipRole), text("Plain\nPlain desc\nDATA"));
}

QTEST_MAIN(TestWatchModelCells)

#include "tst_watch_model_cells.moc"
