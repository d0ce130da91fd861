// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_filter_model.h>

#include "tested_filter.h"

#include <QMimeData>
#include <QtTest>

using namespace Velk;

class TestCatalogueFilterChanges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void followsKeysThatAreTypedIn();
    void showsAnInsertedKeyOnlyWhenItMatches();
    void insertsWhereItIsSorted();
    void followsACatalogueThatIsReplaced();
    void followsNaturesThatChange();
    void forwardsTheCheckBoxes();
    void forwardsASelectionThatWasMadeElsewhere();
    void searchesTheNamesOfAnInsertedKey();
    void searchesTheNamesOfTheNextCatalogue();
    void finishesAFilteringDuringWhichAKeyIsInserted();
    void showsHiddenKeysWhoseNatureChanged();
    void isEmptyWhenItsSourceIsDestroyed();
    void takesAnotherSource();
    void refusesAModelThatIsNoCatalogue();
    void givesHeaderRolesAndDragsOfItsSource();
};

void TestCatalogueFilterChanges::followsKeysThatAreTypedIn()
{
    TestedFilter tested(list("Arm|Leg"));
    QSignalSpy inserted(&tested.filter, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(&tested.filter, &QAbstractItemModel::modelReset);

    tested.catalogue->addUserKey(text("Back"));

    QCOMPARE(shown(tested.filter), list("Arm|Back|Leg"));
    QCOMPARE(inserted.count(), 1);
    QCOMPARE(reset.count(), 0);
}

void TestCatalogueFilterChanges::showsAnInsertedKeyOnlyWhenItMatches()
{
    TestedFilter tested(list("Arm|Leg/Arm"));
    tested.filter.setText(text("Arm"));

    tested.catalogue->addUserKey(text("Back"));
    QCOMPARE(shown(tested.filter), list("Arm|Leg/Arm"));

    tested.catalogue->addUserKey(text("Back/Arm"));
    QCOMPARE(shown(tested.filter), list("Arm|Back/Arm|Leg/Arm"));

    tested.filter.setText(QString());
    QCOMPARE(shown(tested.filter), list("Arm|Back|Back/Arm|Leg/Arm"));
}

void TestCatalogueFilterChanges::insertsWhereItIsSorted()
{
    TestedFilter tested(list("Arm|Leg"));
    tested.filter.sort(CatalogueModel::NameColumn, Qt::DescendingOrder);
    QSignalSpy inserted(&tested.filter, &QAbstractItemModel::rowsInserted);

    tested.catalogue->addUserKey(text("Zoom"));

    QCOMPARE(shown(tested.filter), list("Zoom|Leg|Arm"));
    QCOMPARE(inserted.at(0).at(1).toInt(), 0);
}

void TestCatalogueFilterChanges::followsACatalogueThatIsReplaced()
{
    TestedFilter tested(list("Arm|Leg"));
    tested.filter.setText(text("A"));

    tested.source.setCatalogue(tested.robot.readyCatalogue(list("Antenna|Belly|Ankle")));

    QCOMPARE(shown(tested.filter), list("Ankle|Antenna"));
}

void TestCatalogueFilterChanges::followsNaturesThatChange()
{
    TestedFilter tested(list("Arm|Leg"));
    tested.filter.setNatures(DataNature);

    tested.source.setCatalogue(tested.robot.readyCatalogue(list("Arm"), list("Leg")));

    QCOMPARE(shown(tested.filter), list("Arm"));
}

void TestCatalogueFilterChanges::forwardsTheCheckBoxes()
{
    TestedFilter tested(list("Arm|Belly|Leg"));
    tested.filter.setText(text("e"));
    QSignalSpy changed(&tested.filter, &QAbstractItemModel::dataChanged);

    QVERIFY(tested.filter.setData(tested.filter.index(1, 0), Qt::Checked, Qt::CheckStateRole));

    QCOMPARE(names(tested.catalogue->selectedKeys()), list("Leg"));
    QCOMPARE(rangesText(changed), list("1-1:0-2"));
}

void TestCatalogueFilterChanges::forwardsASelectionThatWasMadeElsewhere()
{
    TestedFilter tested(list("Arm|Leg"));
    QSignalSpy changed(&tested.filter, &QAbstractItemModel::dataChanged);
    tested.catalogue->selectKeys(keySet(list("Leg")));

    tested.source.refreshSelection();

    QCOMPARE(rangesText(changed), list("0-1:0-2"));
    QCOMPARE(tested.filter.index(1, 0).data(CatalogueModel::SelectedRole).toBool(), true);
}

void TestCatalogueFilterChanges::searchesTheNamesOfAnInsertedKey()
{
    TestedFilter tested(list("Arm|Leg|Toe"));
    tested.filter.setFilterCaseSensitivity(Qt::CaseInsensitive);
    tested.filter.setText(text("e"));
    QCOMPARE(shown(tested.filter), list("Leg|Toe"));

    tested.catalogue->addUserKey(text("Abdomen"));
    tested.filter.setText(text("O"));

    QCOMPARE(shown(tested.filter), list("Abdomen|Toe"));
}

void TestCatalogueFilterChanges::searchesTheNamesOfTheNextCatalogue()
{
    TestedFilter tested(list("Arm|Leg"));
    tested.filter.setFilterCaseSensitivity(Qt::CaseInsensitive);
    tested.filter.setText(text("leg"));

    tested.source.setCatalogue(tested.robot.readyCatalogue(list("Antenna|Belly")));
    tested.filter.setText(text("BELLY"));

    QCOMPARE(shown(tested.filter), list("Belly"));
}

void TestCatalogueFilterChanges::finishesAFilteringDuringWhichAKeyIsInserted()
{
    TestedFilter tested(manyNames());
    tested.filter.setSyntax(CatalogueFilterModel::RegularExpression);
    tested.filter.setText(slowExpression());
    QVERIFY(tested.filter.isFiltering());

    tested.catalogue->addUserKey(text("a")); // before all others

    QCOMPARE(shown(tested.filter), list("aaaaaaaaaaaaaaaa77"));
}

void TestCatalogueFilterChanges::showsHiddenKeysWhoseNatureChanged()
{
    TestedFilter tested(list("Arm"), list("Leg"));
    tested.filter.setNatures(DataNature);

    tested.source.setCatalogue(tested.robot.readyCatalogue(list("Arm|Leg")));

    QCOMPARE(shown(tested.filter), list("Arm|Leg"));
}

void TestCatalogueFilterChanges::isEmptyWhenItsSourceIsDestroyed()
{
    CatalogueRobot robot;
    auto* const source = new CatalogueModel;
    source->setCatalogue(robot.readyCatalogue(list("A|B")));
    CatalogueFilterModel filter(source);
    const QAbstractItemModelTester tester(&filter, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QCOMPARE(filter.count(), 2);

    delete source;

    QCOMPARE(filter.rowCount(), 0);
    filter.setText(text("A"));
    filter.sort(0, Qt::DescendingOrder);
    QCOMPARE(filter.rowCount(), 0);
}

void TestCatalogueFilterChanges::takesAnotherSource()
{
    TestedFilter tested(list("A|B"));
    TestedFilter other(list("AX|C"));
    tested.filter.setText(text("A"));

    tested.filter.setSourceModel(&other.source);
    QCOMPARE(shown(tested.filter), list("AX"));

    tested.catalogue->addUserKey(text("AA"));
    QCOMPARE(shown(tested.filter), list("AX"));
    tested.filter.setSourceModel(nullptr);
    QCOMPARE(shown(tested.filter), QStringList());
}

void TestCatalogueFilterChanges::refusesAModelThatIsNoCatalogue()
{
    TestedFilter tested(list("A|B"));
    TestedFilter other(list("C"));

    QTest::ignoreMessage(QtWarningMsg, "CatalogueFilterModel: the source model has to be a CatalogueModel");
    tested.filter.setSourceModel(&other.filter);

    QCOMPARE(shown(tested.filter), QStringList());
}

void TestCatalogueFilterChanges::givesHeaderRolesAndDragsOfItsSource()
{
    TestedFilter tested(list("Arm|Leg"));
    tested.filter.setText(text("Leg"));

    const QScopedPointer<QMimeData> data(tested.filter.mimeData({tested.filter.index(0, 0)}));

    QCOMPARE(data->text(), text("Leg"));
    QCOMPARE(tested.filter.roleNames(), tested.source.roleNames());
    tested.filter.setText(text("nothing"));
    QCOMPARE(tested.filter.headerData(1, Qt::Horizontal).toString(), text("Description"));
}

QTEST_GUILESS_MAIN(TestCatalogueFilterChanges)

#include "tst_catalogue_filter_changes.moc"
