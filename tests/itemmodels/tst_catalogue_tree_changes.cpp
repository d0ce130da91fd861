// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_tree_model.h>

#include "tested_tree.h"

#include <QtTest>

using namespace Velk;

class TestCatalogueTreeChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void insertsAKey_data();
    void insertsAKey();
    void insertsAKeyWhileTheFilterIsSorted();
    void insertsAKeyThatNoViewHasAskedFor();
    void insertsOnlyWhatTheFilterAccepts();
    void keepsIndexesOnTheirItemsWhenAKeyIsInserted();
    void followsACatalogueThatIsReplaced();
    void followsNaturesThatChange();
    void isEmptyWhenItsSourceIsDestroyed();
};

void TestCatalogueTreeChanges::insertsAKey_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("first") << text("Aa") << list("Aa|Arm|.Elbow|..x|.Wrist|Leg");
    QTest::newRow("after a branch") << text("Back") << list("Arm|.Elbow|..x|.Wrist|Back|Leg");
    QTest::newRow("last") << text("Toe") << list("Arm|.Elbow|..x|.Wrist|Leg|Toe");
    QTest::newRow("first of a branch") << text("Arm/Ab") << list("Arm|.Ab|.Elbow|..x|.Wrist|Leg");
    QTest::newRow("in a branch") << text("Arm/Palm") << list("Arm|.Elbow|..x|.Palm|.Wrist|Leg");
    QTest::newRow("last of a branch") << text("Arm/Xyz") << list("Arm|.Elbow|..x|.Wrist|.Xyz|Leg");
    QTest::newRow("deep") << text("Arm/Elbow/y/z") << list("Arm|.Elbow|..x|..y|...z|.Wrist|Leg");
    QTest::newRow("below a key") << text("Leg/Knee/Left") << list("Arm|.Elbow|..x|.Wrist|Leg|.Knee|..Left");
    QTest::newRow("a branch becomes a key") << text("Arm/Elbow") << list("Arm|.Elbow|..x|.Wrist|Leg");
    QTest::newRow("the first branch becomes a key") << text("Arm") << list("Arm|.Elbow|..x|.Wrist|Leg");
    QTest::newRow("an empty name") << QString() << list("(no name)|Arm|.Elbow|..x|.Wrist|Leg");
}

void TestCatalogueTreeChanges::insertsAKey()
{
    QFETCH(QString, name);
    TestedTree tested(list("Arm/Elbow/x|Arm/Wrist|Leg"));
    QSignalSpy reset(&tested.tree, &QAbstractItemModel::modelReset);
    treeText(tested.tree);
    treeText(tested.filteredTree);

    tested.catalogue->addUserKey(name);

    QTEST(treeText(tested.tree), "expected");
    QTEST(treeText(tested.filteredTree), "expected");
    const QModelIndex item = tested.tree.indexOf(name);
    QVERIFY(tested.tree.isKey(item));
    QCOMPARE(item.data(CatalogueModel::NameRole).toString(), name);
    QCOMPARE(item.sibling(item.row(), 2).data().toString(), text("UNKNOWN"));
    // Each branch counts its keys as the branches of a new tree do.
    const CatalogueTreeModel fresh(&tested.source);
    QCOMPARE(treeText(tested.tree, CatalogueModel::DescriptionColumn),
             treeText(fresh, CatalogueModel::DescriptionColumn));
    QCOMPARE(reset.count(), 0);
}

void TestCatalogueTreeChanges::insertsAKeyWhileTheFilterIsSorted()
{
    TestedTree tested(list("Arm|Back|Leg"));
    tested.filter.sort(CatalogueModel::NameColumn, Qt::DescendingOrder);
    treeText(tested.filteredTree);

    tested.catalogue->addUserKey(text("Toe"));
    QCOMPARE(treeText(tested.filteredTree), list("Arm|Back|Leg|Toe"));

    QSignalSpy changed(&tested.filteredTree, &QAbstractItemModel::dataChanged);
    tested.source.setSelected(0, true);
    QCOMPARE(rangesText(changed), list("0-0:0-2"));
}

void TestCatalogueTreeChanges::insertsAKeyThatNoViewHasAskedFor()
{
    CatalogueRobot robot;
    CatalogueModel source;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("Arm/a|Arm/c|Leg"));
    source.setCatalogue(catalogue);
    CatalogueTreeModel tree(&source);
    QCOMPARE(tree.rowCount(), 2);

    catalogue->addUserKey(text("Arm/b"));
    catalogue->addUserKey(text("Leg/a"));

    QCOMPARE(treeText(tree), list("Arm|.a|.b|.c|Leg|.a"));
}

void TestCatalogueTreeChanges::insertsOnlyWhatTheFilterAccepts()
{
    TestedTree tested(list("Arm/Elbow|Leg/Knee"));
    tested.filter.setText(text("Arm"));

    tested.catalogue->addUserKey(text("Aaa"));
    tested.catalogue->addUserKey(text("Arm/Wrist"));

    QCOMPARE(treeText(tested.filteredTree), list("Arm|.Elbow|.Wrist"));
}

void TestCatalogueTreeChanges::keepsIndexesOnTheirItemsWhenAKeyIsInserted()
{
    TestedTree tested(list("Arm/Wrist|Leg/Knee"));
    const QPersistentModelIndex wrist = tested.tree.indexOf(text("Arm/Wrist"));
    const QPersistentModelIndex knee = tested.tree.indexOf(text("Leg/Knee"));

    tested.catalogue->addUserKey(text("Arm/Elbow"));
    tested.catalogue->addUserKey(text("Back"));

    QCOMPARE(wrist.row(), 1);
    QCOMPARE(wrist.data(CatalogueModel::NameRole).toString(), text("Arm/Wrist"));
    QCOMPARE(knee.parent().row(), 2);
    QCOMPARE(knee.data(CatalogueModel::NameRole).toString(), text("Leg/Knee"));
}

void TestCatalogueTreeChanges::followsACatalogueThatIsReplaced()
{
    TestedTree tested(list("Arm/Elbow"));
    QCOMPARE(treeText(tested.tree), list("Arm|.Elbow"));

    tested.source.setCatalogue(tested.robot.readyCatalogue(list("Leg/Knee|Toe")));
    QCOMPARE(treeText(tested.tree), list("Leg|.Knee|Toe"));
    QCOMPARE(treeText(tested.filteredTree), list("Leg|.Knee|Toe"));

    tested.source.setCatalogue(nullptr);
    QCOMPARE(treeText(tested.tree), QStringList());
}

void TestCatalogueTreeChanges::followsNaturesThatChange()
{
    TestedTree tested(list("Arm/Elbow|Leg"));
    treeText(tested.tree);
    QSignalSpy reset(&tested.tree, &QAbstractItemModel::modelReset);
    QSignalSpy changed(&tested.tree, &QAbstractItemModel::dataChanged);

    tested.source.setCatalogue(tested.robot.readyCatalogue(list("Leg"), list("Arm/Elbow")));

    QCOMPARE(reset.count(), 0);
    QCOMPARE(rangesText(changed), list("0-1:0-2|0-0:0-2"));
    QCOMPARE(tested.tree.index(0, 2, tested.tree.index(0, 0)).data().toString(), text("EVENT"));
}

void TestCatalogueTreeChanges::isEmptyWhenItsSourceIsDestroyed()
{
    CatalogueRobot robot;
    auto* const source = new CatalogueModel;
    source->setCatalogue(robot.readyCatalogue(list("Arm/Elbow|Leg")));
    auto* const filter = new CatalogueFilterModel(source);
    CatalogueTreeModel tree(source);
    CatalogueTreeModel filteredTree(filter);
    const QAbstractItemModelTester tester(&tree, QAbstractItemModelTester::FailureReportingMode::Fatal);
    const QAbstractItemModelTester filteredTester(&filteredTree, QAbstractItemModelTester::FailureReportingMode::Fatal);

    delete source;
    QCOMPARE(tree.rowCount(), 0);
    QCOMPARE(filteredTree.rowCount(), 0);
    QVERIFY(!tree.indexOf(text("Leg")).isValid());

    delete filter;
    QCOMPARE(filteredTree.rowCount(), 0);
}

QTEST_GUILESS_MAIN(TestCatalogueTreeChanges)

#include "tst_catalogue_tree_changes.moc"
