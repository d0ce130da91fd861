// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_model.h>

#include "tested_watch.h"

#include <itemmodels/distinct_colors.h>

#include <QtTest>

using namespace Velk;

class TestWatchModelAppearance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void keepsColorsAndFlagsOverAReconnection();
    void remembersTheColorOfADroppedKey();
    void givesEachNewKeyAnotherColor();
    void givesTheColorOfARemovedKeyToTheNext();
    void remembersAChosenColorOfARemovedKey();
    void takesColorsAndFlagsBeforeTheirKeys();
    void reportsAnAppearanceThatChangedBeforeItsKeyIsDisplayed();
    void givesTheColorThatFewestRowsHave();
    void remembersThatARemovedKeyWasHidden();
    void anInvalidColorEndsTheChoice();
};

void TestWatchModelAppearance::keepsColorsAndFlagsOverAReconnection()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("B"), false);
    const QColor colorOfB = tested.model.color(text("B"));

    tested.robot.manager.lose();
    tested.robot.reconnect(list("A|B"));

    QCOMPARE(displayedKey(*tested.robot.keys, text("A")).color(), QColor("chartreuse")); // the core's own copy
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    QCOMPARE(tested.cell("A", WatchModel::ColorColumn, Qt::EditRole), QColor(Qt::magenta).name());
    QCOMPARE(tested.model.color(text("B")), colorOfB);
    QCOMPARE(tested.model.index(1, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QCOMPARE(tested.model.index(0, 0).data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
}

void TestWatchModelAppearance::remembersTheColorOfADroppedKey()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.robot.manager.establish();
    tested.robot.display(list("B"));
    const QColor color = tested.model.color(text("B"));
    tested.robot.finishLists(list("A|B"));

    tested.robot.display(list("C"));
    tested.robot.display(list("B"));

    QCOMPARE(tested.model.color(text("B")), color);
}

void TestWatchModelAppearance::givesEachNewKeyAnotherColor()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    tested.robot.display(list("C"));

    QCOMPARE(tested.model.color(text("A")), DistinctColors::at(0));
    QCOMPARE(tested.model.color(text("B")), DistinctColors::at(1));
    QCOMPARE(tested.model.color(text("C")), DistinctColors::at(2));
}

void TestWatchModelAppearance::givesTheColorOfARemovedKeyToTheNext()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));
    tested.robot.keys->removeKeys(keySet(list("B")));

    tested.robot.display(list("D"));
    tested.robot.display(list("B"));

    QCOMPARE(tested.model.color(text("D")), DistinctColors::at(1));
    QCOMPARE(tested.model.color(text("B")), DistinctColors::at(3));
}

void TestWatchModelAppearance::remembersAChosenColorOfARemovedKey()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("A"), false);

    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.robot.display(list("A"));

    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    QVERIFY(!tested.model.isShown(text("A")));
}

void TestWatchModelAppearance::takesColorsAndFlagsBeforeTheirKeys()
{
    TestedWatch tested;
    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("A"), false);
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta));
    QVERIFY(!tested.model.color(text("B")).isValid());
    QVERIFY(tested.model.isShown(text("B")));

    tested.robot.display(list("A|B"));

    QCOMPARE(tested.model.index(0, 0).data(WatchModel::ColorRole).value<QColor>(), QColor(Qt::magenta));
    QCOMPARE(tested.model.index(0, 0).data(WatchModel::ShownRole).toBool(), false);
    QCOMPARE(tested.model.color(text("B")), DistinctColors::at(0));
}

void TestWatchModelAppearance::reportsAnAppearanceThatChangedBeforeItsKeyIsDisplayed()
{
    TestedWatch tested;
    QSignalSpy appearance(&tested.model, &WatchModel::appearanceChanged);

    tested.model.setColor(text("A"), Qt::magenta);
    tested.model.setShown(text("B"), false);
    QCOMPARE(appearance.count(), 2);
    QCOMPARE(appearance.at(0).at(0).toString(), text("A"));
    QCOMPARE(appearance.at(1).at(0).toString(), text("B"));

    tested.model.setColor(text("A"), Qt::magenta); // it has this colour
    tested.model.setShown(text("B"), false);
    tested.model.setColor(text("C"), QColor()); // it has none
    QCOMPARE(appearance.count(), 2);

    tested.model.setColor(text("A"), QColor());
    QCOMPARE(appearance.count(), 3);
    QVERIFY(!tested.model.color(text("A")).isValid());
}

void TestWatchModelAppearance::givesTheColorThatFewestRowsHave()
{
    TestedWatch tested;
    QStringList names;
    for (int i = 0; i < 2 * DistinctColors::count(); ++i)
        names << QStringLiteral("K%1").arg(i);
    tested.robot.display(names);
    QCOMPARE(tested.model.color(names.last()), DistinctColors::at(DistinctColors::count() - 1));
    tested.robot.keys->removeKeys(keySet({names.at(3)}));

    tested.robot.display(list("New"));

    QCOMPARE(tested.model.color(text("New")), DistinctColors::at(3));
}

void TestWatchModelAppearance::remembersThatARemovedKeyWasHidden()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.model.setShown(text("A"), false);

    tested.robot.keys->removeKeys(keySet(list("A")));
    tested.robot.display(list("A"));

    QVERIFY(!tested.model.isShown(text("A")));
}

void TestWatchModelAppearance::anInvalidColorEndsTheChoice()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    tested.model.setColor(text("A"), Qt::magenta);

    tested.model.setColor(text("A"), QColor());
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::magenta)); // until the key is removed

    tested.robot.keys->removeKeys(keySet(list("A")));
    QVERIFY(!tested.model.color(text("A")).isValid());
}

QTEST_MAIN(TestWatchModelAppearance)

#include "tst_watch_model_appearance.moc"
