// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_model.h>

#include "support/patient_try.h"
#include "tested_watch.h"

#include <itemmodels/catalogue_model.h>

#include <QMimeData>
#include <QtTest>

using namespace Velk;

class TestWatchModelEdits : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void editsTheFlagAndTheColor();
    void refusesOtherEdits();
    void removesKeysByRows();
    void takesKeysThatAreDropped();
    void refusesADropOfAnythingElse();
    void aPartlyCheckedBoxHidesTheKey();
    void refusesADropThatEndsInTheMiddleOfAKey();
};

void TestWatchModelEdits::editsTheFlagAndTheColor()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);
    QSignalSpy appearance(&tested.model, &WatchModel::appearanceChanged);

    QVERIFY(tested.model.setData(tested.model.index(1, WatchModel::ShownColumn), Qt::Unchecked, Qt::CheckStateRole));
    QVERIFY(tested.model.setData(tested.model.index(0, WatchModel::ColorColumn), QColor(Qt::red)));
    QVERIFY(tested.model.setData(tested.model.index(1, 4), true, WatchModel::ShownRole));
    QVERIFY(tested.model.setData(tested.model.index(1, 4), text("#00ff00"), WatchModel::ColorRole));

    QCOMPARE(rangesText(changed), list("1-1:0-8|0-0:0-8|1-1:0-8|1-1:0-8"));
    QCOMPARE(appearance.count(), 4);
    QVERIFY(tested.model.isShown(text("B")));
    QCOMPARE(tested.model.color(text("A")), QColor(Qt::red));
    QCOMPARE(tested.model.color(text("B")), QColor(Qt::green));
    QVERIFY(tested.model.flags(tested.model.index(0, WatchModel::ShownColumn)) & Qt::ItemIsUserCheckable);
    QVERIFY(tested.model.flags(tested.model.index(0, WatchModel::ColorColumn)) & Qt::ItemIsEditable);
}

void TestWatchModelEdits::refusesOtherEdits()
{
    TestedWatch tested;
    tested.robot.display(list("A"));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    QVERIFY(!tested.model.setData(tested.model.index(0, WatchModel::NameColumn), text("B")));
    QVERIFY(!tested.model.setData(tested.model.index(0, WatchModel::ColorColumn), text("no color")));
    QVERIFY(!tested.model.setData(tested.model.index(0, WatchModel::NameColumn), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!tested.model.setData(QModelIndex(), true, WatchModel::ShownRole));
    tested.model.setShown(text("A"), true); // it is
    tested.model.setColor(text("A"), tested.model.color(text("A")));

    QCOMPARE(changed.count(), 0);
    QVERIFY(!(tested.model.flags(tested.model.index(0, WatchModel::ValueColumn)) & Qt::ItemIsEditable));
}

void TestWatchModelEdits::removesKeysByRows()
{
    TestedWatch tested;
    tested.robot.display(list("A|B|C"));

    QVERIFY(tested.model.removeRows(1, 2));
    QVERIFY(!tested.model.removeRows(0, 2));
    QVERIFY(!tested.model.removeRows(-1, 1));

    QCOMPARE(names(tested.robot.keys->keys()), list("A"));
    QCOMPARE(columnText(tested.model, WatchModel::NameColumn), list("A"));
}

void TestWatchModelEdits::takesKeysThatAreDropped()
{
    TestedWatch tested;
    auto* const catalogue = new MemoryKeyListModel(&tested.robot.manager, {});
    tested.robot.manager.memory->finishLists(list("A|B"), list("C"));
    QTRY_VERIFY(catalogue->isReady());
    CatalogueModel catalogueModel;
    catalogueModel.setCatalogue(catalogue);
    const QScopedPointer<QMimeData> data(
        catalogueModel.mimeData({catalogueModel.index(0, 0), catalogueModel.index(2, 0)}));

    QVERIFY(tested.model.canDropMimeData(data.data(), Qt::CopyAction, -1, -1, QModelIndex()));
    QVERIFY(tested.model.dropMimeData(data.data(), Qt::CopyAction, -1, -1, QModelIndex()));

    QCOMPARE(described(tested.robot.keys->keys()), list("A DATA (A desc)|C EVENT (C desc)"));
}

void TestWatchModelEdits::refusesADropOfAnythingElse()
{
    TestedWatch tested;
    QMimeData plain;
    plain.setText(text("A"));
    QMimeData damaged;
    damaged.setData(tested.model.mimeTypes().at(0), QByteArray("\0\0\0\x7f", 4));

    QVERIFY(!tested.model.canDropMimeData(&plain, Qt::CopyAction, -1, -1, QModelIndex()));
    QVERIFY(!tested.model.dropMimeData(&plain, Qt::CopyAction, -1, -1, QModelIndex()));
    QVERIFY(!tested.model.dropMimeData(&damaged, Qt::CopyAction, -1, -1, QModelIndex()));

    QCOMPARE(tested.model.rowCount(), 0);
}

void TestWatchModelEdits::aPartlyCheckedBoxHidesTheKey()
{
    TestedWatch tested;
    tested.robot.display(list("A"));

    QVERIFY(
        tested.model.setData(tested.model.index(0, WatchModel::ShownColumn), Qt::PartiallyChecked, Qt::CheckStateRole));

    QVERIFY(!tested.model.isShown(text("A")));
}

void TestWatchModelEdits::refusesADropThatEndsInTheMiddleOfAKey()
{
    TestedWatch tested;
    tested.robot.display(list("A|B"));
    const QScopedPointer<QMimeData> whole(tested.model.mimeData({tested.model.index(0, 0), tested.model.index(1, 0)}));
    const QString format = tested.model.mimeTypes().at(0);
    QMimeData cut;
    cut.setData(format, whole->data(format).chopped(3));
    tested.robot.keys->removeKeys(keySet(list("A|B")));

    QVERIFY(!tested.model.dropMimeData(&cut, Qt::CopyAction, -1, -1, QModelIndex()));

    QCOMPARE(tested.model.rowCount(), 0);
}

QTEST_MAIN(TestWatchModelEdits)

#include "tst_watch_model_edits.moc"
