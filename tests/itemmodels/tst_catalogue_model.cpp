// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_model.h>

#include "catalogue_robot.h"
#include "model_text.h"
#include "support/patient_try.h"
#include "tested_catalogue_model.h"

#include <QMimeData>
#include <QtTest>

using namespace Velk;

class TestCatalogueModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void isEmptyWithoutACatalogue();
    void showsAReadyCatalogueInPathOrder();
    void givesTheNatureThatTheCatalogueResolves();
    void showsTheKeysOnceTheCatalogueIsReady();
    void showsWhatIsFetchedOfACatalogueThatIsNot();
    void insertsAKeyThatTheUserTypesIn();
    void keepsTheRobotsNatureOfAKeyThatTheUserTypesIn();
    void showsAUserKeyBeforeTheListsAreIn();
    void showsAListedKeyThatIsTypedInBeforeTheListsAreIn();
    void keepsItsRowsWhenTheNextCatalogueHasTheSameNames();
    void startsOverWhenTheNextCatalogueHasOtherNames();
    void isEmptyWhenTheCatalogueIsDeleted();
    void survivesACatalogueThatIsDeletedWhenItIsReady();
    void ignoresACatalogueThatWasReplaced();
    void findsARowByItsName();
    void givesEachRoleForEveryColumn();
    void namesItsRolesForQml();
    void describesItsColumns();
    void dragsKeysAndTheirNames();
    void countsItsRows();
};

void TestCatalogueModel::isEmptyWithoutACatalogue()
{
    TestedCatalogueModel tested;

    QCOMPARE(tested.model.rowCount(), 0);
    QCOMPARE(tested.model.columnCount(), 3);
    tested.model.refreshSelection();
    tested.model.setSelected(0, true);
    tested.model.setCatalogue(nullptr);
    QCOMPARE(tested.model.rowCount(), 0);
}

void TestCatalogueModel::showsAReadyCatalogueInPathOrder()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;

    tested.model.setCatalogue(robot.readyCatalogue(list("Leg/Joint10|Leg/Joint2|arm/b|Arm"), list("Arm/Touched")));

    QCOMPARE(rowsText(tested.model), list("Arm, Arm desc, DATA|"
                                          "Arm/Touched, Arm/Touched desc, EVENT|"
                                          "arm/b, arm/b desc, DATA|"
                                          "Leg/Joint2, Leg/Joint2 desc, DATA|"
                                          "Leg/Joint10, Leg/Joint10 desc, DATA"));
}

void TestCatalogueModel::givesTheNatureThatTheCatalogueResolves()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;

    tested.model.setCatalogue(robot.readyCatalogue(list("Both|Data"), list("Both"), keySet(list("Lost"))));

    QCOMPARE(rowsText(tested.model), list("Both, Both desc, EVENT|Data, Data desc, DATA|Lost, Lost desc, UNKNOWN"));
}

void TestCatalogueModel::showsTheKeysOnceTheCatalogueIsReady()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.fetchingCatalogue();
    tested.model.setCatalogue(catalogue);
    QCOMPARE(tested.model.rowCount(), 0);

    robot.finish(catalogue, list("A|B"));

    QCOMPARE(columnText(tested.model, 0), list("A|B"));
}

void TestCatalogueModel::showsWhatIsFetchedOfACatalogueThatIsNot()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.fetchingCatalogue();
    robot.manager.memory->finishDataList(list("A|B"));
    QTRY_COMPARE(names(catalogue->keys()), list("A|B"));

    tested.model.setCatalogue(catalogue);

    QVERIFY(!catalogue->isReady());
    QCOMPARE(columnText(tested.model, 0), list("A|B"));
}

void TestCatalogueModel::insertsAKeyThatTheUserTypesIn()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A|C"));
    tested.model.setCatalogue(catalogue);
    QSignalSpy inserted(&tested.model, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(&tested.model, &QAbstractItemModel::modelReset);

    catalogue->addUserKey(text("B"));

    QCOMPARE(rowsText(tested.model), list("A, A desc, DATA|B, B desc, UNKNOWN|C, C desc, DATA"));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(inserted.at(0).at(1).toInt(), 1);
    QCOMPARE(reset.count(), 0);
}

void TestCatalogueModel::keepsTheRobotsNatureOfAKeyThatTheUserTypesIn()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A"));
    tested.model.setCatalogue(catalogue);

    catalogue->addUserKey(text("A"));
    catalogue->addUserKey(text("A"));

    QCOMPARE(rowsText(tested.model), list("A, A desc, DATA"));
}

void TestCatalogueModel::showsAUserKeyBeforeTheListsAreIn()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.fetchingCatalogue();
    tested.model.setCatalogue(catalogue);

    catalogue->addUserKey(text("Mine"));
    QCOMPARE(rowsText(tested.model), list("Mine, Mine desc, UNKNOWN"));

    robot.finish(catalogue, list("Mine"));
    QCOMPARE(rowsText(tested.model), list("Mine, Mine desc, DATA"));
}

void TestCatalogueModel::showsAListedKeyThatIsTypedInBeforeTheListsAreIn()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.fetchingCatalogue();
    tested.model.setCatalogue(catalogue);
    robot.manager.memory->finishDataList(list("A|B"));
    QTRY_COMPARE(names(catalogue->keys()), list("A|B"));

    catalogue->addUserKey(text("A"));

    QCOMPARE(rowsText(tested.model), list("A, A desc, DATA|B, B desc, DATA"));
}

void TestCatalogueModel::keepsItsRowsWhenTheNextCatalogueHasTheSameNames()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    tested.model.setCatalogue(robot.readyCatalogue(list("A|B")));
    QSignalSpy reset(&tested.model, &QAbstractItemModel::modelReset);
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    tested.model.setCatalogue(robot.readyCatalogue(list("B"), list("A")));

    QCOMPARE(reset.count(), 0);
    QCOMPARE(rangesText(changed), list("0-1:0-2"));
    QCOMPARE(rowsText(tested.model), list("A, A desc, EVENT|B, B desc, DATA"));
}

void TestCatalogueModel::startsOverWhenTheNextCatalogueHasOtherNames()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    tested.model.setCatalogue(robot.readyCatalogue(list("A|B")));
    QSignalSpy reset(&tested.model, &QAbstractItemModel::modelReset);

    tested.model.setCatalogue(robot.readyCatalogue(list("A|C")));

    QCOMPARE(reset.count(), 1);
    QCOMPARE(columnText(tested.model, 0), list("A|C"));
}

void TestCatalogueModel::isEmptyWhenTheCatalogueIsDeleted()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A|B"));
    tested.model.setCatalogue(catalogue);
    QSignalSpy changed(&tested.model, &CatalogueModel::catalogueChanged);

    delete catalogue;

    QCOMPARE(tested.model.rowCount(), 0);
    QVERIFY(!tested.model.catalogue());
    QCOMPARE(changed.count(), 1);
}

void TestCatalogueModel::survivesACatalogueThatIsDeletedWhenItIsReady()
{
    CatalogueRobot robot;
    QPointer<MemoryKeyListModel> catalogue = robot.fetchingCatalogue();
    connect(catalogue, &MemoryKeyListModel::ready, catalogue, [&catalogue] { delete catalogue.data(); });
    TestedCatalogueModel tested;
    tested.model.setCatalogue(catalogue);

    robot.manager.memory->finishLists(list("A"));

    QTRY_VERIFY(!catalogue);
    QCOMPARE(tested.model.rowCount(), 0);
}

void TestCatalogueModel::ignoresACatalogueThatWasReplaced()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const former = robot.readyCatalogue(list("A"));
    tested.model.setCatalogue(former);
    tested.model.setCatalogue(robot.readyCatalogue(list("B")));

    former->addUserKey(text("C"));
    delete former;

    QCOMPARE(columnText(tested.model, 0), list("B"));
}

void TestCatalogueModel::findsARowByItsName()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    tested.model.setCatalogue(robot.readyCatalogue(list("Arm|Arm/Elbow|arm")));

    for (int row = 0; row < tested.model.rowCount(); ++row)
        QCOMPARE(tested.model.row(tested.model.key(row).name()), row);
    QCOMPARE(tested.model.row(text("Arm/Elbow/")), -1);
    QCOMPARE(tested.model.row(QString()), -1);
}

void TestCatalogueModel::givesEachRoleForEveryColumn()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    tested.model.setCatalogue(robot.readyCatalogue({}, list("Arm/Touched"), keySet(list("Arm/Touched"))));

    for (int column = 0; column < 3; ++column) {
        const QModelIndex index = tested.model.index(0, column);
        QCOMPARE(index.data(CatalogueModel::NameRole).toString(), text("Arm/Touched"));
        QCOMPARE(index.data(CatalogueModel::DescriptionRole).toString(), text("Arm/Touched desc"));
        QCOMPARE(index.data(CatalogueModel::NatureRole).toInt(), int(EventNature));
        QCOMPARE(index.data(CatalogueModel::NatureTextRole).toString(), text("EVENT"));
        QCOMPARE(index.data(CatalogueModel::SelectedRole).toBool(), true);
        QCOMPARE(index.data(CatalogueModel::IsKeyRole).toBool(), true);
        QCOMPARE(index.data(CatalogueModel::SegmentRole).toString(), text("Arm/Touched"));
        QCOMPARE(index.data(Qt::AccessibleDescriptionRole).toString(), text("Key of nature EVENT, selected"));
        QCOMPARE(index.data(Qt::ToolTipRole).toString(), text("Arm/Touched\nArm/Touched desc\nEVENT"));
    }
}

void TestCatalogueModel::namesItsRolesForQml()
{
    const QList<QByteArray> names = CatalogueModel().roleNames().values();

    for (const char* name : {"display", "name", "description", "nature", "natureText", "selected", "isKey", "segment"})
        QVERIFY2(names.contains(name), name);
}

void TestCatalogueModel::describesItsColumns()
{
    TestedCatalogueModel tested;

    const auto header = [&tested](int column, int role) {
        return tested.model.headerData(column, Qt::Horizontal, role).toString();
    };
    QCOMPARE(header(0, Qt::DisplayRole), text("Name"));
    QCOMPARE(header(1, Qt::DisplayRole), text("Description"));
    QCOMPARE(header(2, Qt::DisplayRole), text("Nature"));
    QVERIFY(!header(2, Qt::ToolTipRole).isEmpty());
    QCOMPARE(header(3, Qt::DisplayRole), QString());
}

void TestCatalogueModel::dragsKeysAndTheirNames()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    tested.model.setCatalogue(robot.readyCatalogue(list("B|A|C")));

    const QScopedPointer<QMimeData> data(
        tested.model.mimeData({tested.model.index(0, 0), tested.model.index(0, 1), tested.model.index(2, 0)}));

    QCOMPARE(data->text(), text("A\nC"));
    QVERIFY(data->hasFormat(tested.model.mimeTypes().at(0)));
    QVERIFY(tested.model.flags(tested.model.index(0, 0)) & Qt::ItemIsDragEnabled);
}

void TestCatalogueModel::countsItsRows()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    QSignalSpy counted(&tested.model, &CatalogueModel::countChanged);
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A|B"));

    tested.model.setCatalogue(catalogue);
    QCOMPARE(tested.model.count(), 2);
    QCOMPARE(counted.count(), 1);

    catalogue->addUserKey(text("C"));
    QCOMPARE(tested.model.count(), 3);
    QCOMPARE(counted.count(), 2);

    tested.model.setCatalogue(nullptr);
    QCOMPARE(tested.model.count(), 0);
    QCOMPARE(counted.count(), 3);
}

QTEST_GUILESS_MAIN(TestCatalogueModel)

#include "tst_catalogue_model.moc"
