// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_tree_model.h>

#include "tested_tree.h"

#include <QMimeData>
#include <QTextDocument>
#include <QtTest>

using namespace Velk;

class TestCatalogueTreeModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void showsNamesByTheirPaths_data();
    void showsNamesByTheirPaths();
    void showsWhatTheFilterAccepts();
    void staysInPathOrderWhenTheFilterIsSorted();
    void knowsWhetherThereAreChildrenBeforeTheyAreMade();
    void distinguishesKeysFromBranches();
    void showsANameThatIsKeyAndBranchOnce();
    void countsTheKeysOfABranch();
    void givesSegmentsWithoutText();
    void checksKeysAndNotBranches();
    void findsAnItemByItsName();
    void gathersTheKeysBelowAnItem();
    void dragsWholeBranches();
    void dragsNothingForAnInvalidIndex();
    void toolTipsShowNamesCharacterByCharacter();
    void givesHeaderAndRolesOfTheTable();
};

void TestCatalogueTreeModel::showsNamesByTheirPaths_data()
{
    QTest::addColumn<QStringList>("names");
    QTest::addColumn<QStringList>("expected");

    QTest::newRow("nothing") << QStringList() << QStringList();
    QTest::newRow("no separator") << list("B|A") << list("A|B");
    QTest::newRow("branches") << list("Leg/Knee|Arm/Elbow/Position|Arm/Elbow/Speed|Arm/Wrist")
                              << list("Arm|.Elbow|..Position|..Speed|.Wrist|Leg|.Knee");
    QTest::newRow("a key is a branch as well") << list("Arm|Arm/Elbow|Arm-x|Arm.y") << list("Arm|.Elbow|Arm-x|Arm.y");
    QTest::newRow("case makes two") << list("arm/a|Arm/b|arm/c|ARM") << list("ARM|Arm|.b|arm|.a|.c");
    QTest::newRow("numbers by value") << list("J/10/a|J/9/a|J/09/a|J/1") << list("J|.1|.09|..a|.9|..a|.10|..a");
    QTest::newRow("empty segments") << list("/a|b//c|d/|e") << list("(no name)|.a|b|.(no name)|..c|d|.(no name)|e");
    QTest::newRow("only separators") << list("/|//") << list("(no name)|.(no name)|..(no name)");
    QTest::newRow("the empty name") << QStringList{QString(), text("a")} << list("(no name)|a");
}

void TestCatalogueTreeModel::showsNamesByTheirPaths()
{
    QFETCH(QStringList, names);
    TestedTree tested(names);

    QTEST(treeText(tested.tree), "expected");
    QTEST(treeText(tested.filteredTree), "expected");
}

void TestCatalogueTreeModel::showsWhatTheFilterAccepts()
{
    TestedTree tested(list("Arm|Arm/Elbow|Arm/Wrist|Leg/Knee"));

    tested.filter.setText(text("W*t"));
    QCOMPARE(treeText(tested.filteredTree), list("Arm|.Wrist"));
    tested.filter.setText(text("Knee"));
    QCOMPARE(treeText(tested.filteredTree), list("Leg|.Knee"));
    tested.filter.setText(QString());
    QCOMPARE(treeText(tested.filteredTree), treeText(tested.tree));
}

void TestCatalogueTreeModel::staysInPathOrderWhenTheFilterIsSorted()
{
    TestedTree tested(list("Arm/Elbow|Arm/Wrist|Leg"));
    tested.filter.sort(0, Qt::DescendingOrder);
    QCOMPARE(treeText(tested.filteredTree), list("Arm|.Elbow|.Wrist|Leg"));

    tested.filter.setText(text("r"));
    QCOMPARE(treeText(tested.filteredTree), list("Arm|.Elbow|.Wrist"));
    tested.catalogue->addUserKey(text("Arm/Palm"));
    QCOMPARE(treeText(tested.filteredTree), list("Arm|.Elbow|.Palm|.Wrist"));
}

void TestCatalogueTreeModel::knowsWhetherThereAreChildrenBeforeTheyAreMade()
{
    CatalogueRobot robot;
    CatalogueModel source;
    source.setCatalogue(robot.readyCatalogue(list("Arm|Arm/Elbow|Leg")));
    const CatalogueTreeModel tree(&source);

    QVERIFY(tree.hasChildren());
    QVERIFY(tree.hasChildren(tree.index(0, 0)));
    QVERIFY(!tree.hasChildren(tree.index(0, 1)));
    QVERIFY(!tree.hasChildren(tree.index(1, 0)));
}

void TestCatalogueTreeModel::distinguishesKeysFromBranches()
{
    TestedTree tested(list("Arm/Elbow"));
    const QModelIndex arm = tested.tree.index(0, 0);
    const QModelIndex elbow = tested.tree.index(0, 0, arm);

    QVERIFY(!tested.tree.isKey(arm));
    QCOMPARE(arm.data(CatalogueModel::IsKeyRole).toBool(), false);
    QCOMPARE(arm.data(CatalogueModel::NameRole).toString(), text("Arm"));
    QCOMPARE(tested.tree.index(0, 2).data().toString(), QString());
    QVERIFY(tested.tree.isKey(elbow));
    QCOMPARE(elbow.data(CatalogueModel::NameRole).toString(), text("Arm/Elbow"));
    QCOMPARE(elbow.data(CatalogueModel::SegmentRole).toString(), text("Elbow"));
    QCOMPARE(tested.tree.index(0, 2, arm).data().toString(), text("DATA"));
}

void TestCatalogueTreeModel::showsANameThatIsKeyAndBranchOnce()
{
    TestedTree tested(list("Arm/Elbow"), list("Arm"));

    QCOMPARE(tested.tree.rowCount(), 1);
    QVERIFY(tested.tree.isKey(tested.tree.index(0, 0)));
    QCOMPARE(tested.tree.index(0, 2).data().toString(), text("EVENT"));
    QCOMPARE(tested.tree.rowCount(tested.tree.index(0, 0)), 1);
}

void TestCatalogueTreeModel::countsTheKeysOfABranch()
{
    TestedTree tested(list("Arm/Elbow/a|Arm/Elbow/b|Arm/c"));

    QCOMPARE(tested.tree.index(0, 1).data().toString(), text("3 keys"));
    tested.filter.setText(text("Elbow"));
    QCOMPARE(tested.filteredTree.index(0, 1).data().toString(), text("2 keys"));
}

void TestCatalogueTreeModel::givesSegmentsWithoutText()
{
    TestedTree tested(list("/a"));

    const QModelIndex branch = tested.tree.index(0, 0);
    QCOMPARE(branch.data().toString(), text("(no name)"));
    QCOMPARE(branch.data(CatalogueModel::SegmentRole).toString(), QString());
    QCOMPARE(tested.tree.index(0, 0, branch).data(CatalogueModel::NameRole).toString(), text("/a"));
}

void TestCatalogueTreeModel::checksKeysAndNotBranches()
{
    TestedTree tested(list("Arm/Elbow|Arm/Wrist"));
    const QModelIndex arm = tested.tree.index(0, 0);
    QSignalSpy changed(&tested.tree, &QAbstractItemModel::dataChanged);
    QSignalSpy filteredChanged(&tested.filteredTree, &QAbstractItemModel::dataChanged);

    QVERIFY(!(tested.tree.flags(arm) & Qt::ItemIsUserCheckable));
    QVERIFY(!tested.tree.setData(arm, Qt::Checked, Qt::CheckStateRole));
    QVERIFY(tested.tree.setData(tested.tree.index(1, 0, arm), Qt::Checked, Qt::CheckStateRole));

    QCOMPARE(names(tested.catalogue->selectedKeys()), list("Arm/Wrist"));
    QCOMPARE(rangesText(changed), list("1-1:0-2"));
    QCOMPARE(changed.at(0).at(0).toModelIndex().parent(), arm);
    QCOMPARE(rangesText(filteredChanged), list("1-1:0-2"));
}

void TestCatalogueTreeModel::findsAnItemByItsName()
{
    TestedTree tested(list("Arm|Arm/Elbow/x|Leg//Knee|Toe"));

    for (const char* name : {"Arm", "Arm/Elbow", "Arm/Elbow/x", "Leg", "Leg/", "Leg//Knee", "Toe"})
        QCOMPARE(tested.tree.indexOf(text(name)).data(CatalogueModel::NameRole).toString(), text(name));
    for (const char* name : {"", "A", "Arm/", "Arm/Elbow/", "Arm/Elbow/y", "Leg/Knee", "Zoo", "/"})
        QVERIFY2(!tested.tree.indexOf(text(name)).isValid(), name);
}

void TestCatalogueTreeModel::gathersTheKeysBelowAnItem()
{
    TestedTree tested(list("Arm|Arm/Elbow/x|Arm/Wrist|Leg"));

    QCOMPARE(names(tested.tree.keysBelow(tested.tree.indexOf(text("Arm")))), list("Arm|Arm/Elbow/x|Arm/Wrist"));
    QCOMPARE(names(tested.tree.keysBelow(tested.tree.indexOf(text("Arm/Elbow")))), list("Arm/Elbow/x"));
    QCOMPARE(names(tested.tree.keysBelow(QModelIndex())), list("Arm|Arm/Elbow/x|Arm/Wrist|Leg"));
}

void TestCatalogueTreeModel::dragsWholeBranches()
{
    TestedTree tested(list("Arm/Elbow|Arm/Wrist|Leg"));

    const QScopedPointer<QMimeData> data(tested.tree.mimeData({tested.tree.index(0, 0), tested.tree.index(0, 1)}));

    QCOMPARE(data->text(), text("Arm/Elbow\nArm/Wrist"));
    QVERIFY(tested.tree.flags(tested.tree.index(0, 0)) & Qt::ItemIsDragEnabled);
}

void TestCatalogueTreeModel::dragsNothingForAnInvalidIndex()
{
    TestedTree tested(list("Arm/Elbow|Leg"));

    const QScopedPointer<QMimeData> data(tested.tree.mimeData({QModelIndex(), tested.tree.indexOf(text("Leg"))}));

    QCOMPARE(data->text(), text("Leg"));
}

void TestCatalogueTreeModel::toolTipsShowNamesCharacterByCharacter()
{
    TestedTree tested(list("<b>Arm</x"));
    const auto shownText = [&tested](const char* name) {
        QTextDocument document;
        document.setHtml(tested.tree.indexOf(text(name)).data(Qt::ToolTipRole).toString());
        return document.toPlainText();
    };

    QCOMPARE(shownText("<b>Arm<"), text("<b>Arm<\n1 key"));
    QCOMPARE(shownText("<b>Arm</x"), text("<b>Arm</x\n<b>Arm</x desc\nDATA"));
}

void TestCatalogueTreeModel::givesHeaderAndRolesOfTheTable()
{
    TestedTree tested({});

    QCOMPARE(tested.tree.headerData(2, Qt::Horizontal).toString(), text("Nature"));
    QCOMPARE(tested.filteredTree.headerData(0, Qt::Horizontal).toString(), text("Name"));
    QCOMPARE(tested.tree.roleNames(), tested.source.roleNames());
}

QTEST_GUILESS_MAIN(TestCatalogueTreeModel)

#include "tst_catalogue_tree_model.moc"
