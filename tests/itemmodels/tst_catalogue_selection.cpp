// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_model.h>

#include "catalogue_robot.h"
#include "model_text.h"
#include "tested_catalogue_model.h"

#include <QtTest>

using namespace Velk;

namespace {

QStringList checkedNames(const CatalogueModel& model)
{
    QStringList names;
    for (int row = 0; row < model.rowCount(); ++row) {
        if (model.index(row, 0).data(Qt::CheckStateRole).toInt() == Qt::Checked)
            names << model.key(row).name();
    }
    return names;
}

} // namespace

class TestCatalogueSelection : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void checksWhatTheCatalogueHasSelected();
    void selectsInTheCatalogueWhatIsChecked();
    void keepsARowWhoseCheckIsCleared();
    void showsASelectionThatWasMadeElsewhere();
    void dropsRowsThatOnlyTheSelectionHeld();
    void changesNothingForAnUneditableCell();
};

void TestCatalogueSelection::checksWhatTheCatalogueHasSelected()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;

    tested.model.setCatalogue(robot.readyCatalogue(list("A|B|C"), {}, keySet(list("B"))));

    QCOMPARE(checkedNames(tested.model), list("B"));
    QVERIFY(!tested.model.index(1, 1).data(Qt::CheckStateRole).isValid());
    QVERIFY(tested.model.flags(tested.model.index(0, 0)) & Qt::ItemIsUserCheckable);
}

void TestCatalogueSelection::selectsInTheCatalogueWhatIsChecked()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A|B|C"), {}, keySet(list("B")));
    tested.model.setCatalogue(catalogue);
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    QVERIFY(tested.model.setData(tested.model.index(2, 0), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(tested.model.setData(tested.model.index(1, 2), false, CatalogueModel::SelectedRole));
    QVERIFY(tested.model.setData(tested.model.index(2, 0), Qt::Checked, Qt::CheckStateRole)); // it is already

    QCOMPARE(names(catalogue->selectedKeys()), list("C"));
    QCOMPARE(rangesText(changed), list("2-2:0-2|1-1:0-2"));
}

void TestCatalogueSelection::keepsARowWhoseCheckIsCleared()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A"), {}, keySet(list("Unlisted")));
    tested.model.setCatalogue(catalogue);

    tested.model.setSelected(1, false);
    QCOMPARE(names(catalogue->keys()), list("A"));
    QCOMPARE(columnText(tested.model, 0), list("A|Unlisted"));

    tested.model.setSelected(1, true);
    QCOMPARE(names(catalogue->selectedKeys()), list("Unlisted"));
}

void TestCatalogueSelection::showsASelectionThatWasMadeElsewhere()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A|B"));
    tested.model.setCatalogue(catalogue);
    catalogue->selectKeys(keySet(list("A|Unlisted")));

    tested.model.refreshSelection();

    QCOMPARE(columnText(tested.model, 0), list("A|B|Unlisted"));
    QCOMPARE(checkedNames(tested.model), list("A|Unlisted"));
}

void TestCatalogueSelection::dropsRowsThatOnlyTheSelectionHeld()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    MemoryKeyListModel* const catalogue = robot.readyCatalogue(list("A"), {}, keySet(list("Unlisted")));
    catalogue->addUserKey(text("Mine"));
    tested.model.setCatalogue(catalogue);
    QCOMPARE(columnText(tested.model, 0), list("A|Mine|Unlisted"));
    catalogue->selectKeys({});

    tested.model.refreshSelection();

    QCOMPARE(columnText(tested.model, 0), list("A|Mine"));
}

void TestCatalogueSelection::changesNothingForAnUneditableCell()
{
    CatalogueRobot robot;
    TestedCatalogueModel tested;
    tested.model.setCatalogue(robot.readyCatalogue(list("A")));
    QSignalSpy changed(&tested.model, &QAbstractItemModel::dataChanged);

    QVERIFY(!tested.model.setData(tested.model.index(0, 0), text("B"), Qt::EditRole));
    QVERIFY(!tested.model.setData(tested.model.index(0, 1), Qt::Checked, Qt::CheckStateRole));
    QVERIFY(!tested.model.setData(QModelIndex(), Qt::Checked, Qt::CheckStateRole));

    QCOMPARE(columnText(tested.model, 0), list("A"));
    QCOMPARE(changed.count(), 0);
}

QTEST_GUILESS_MAIN(TestCatalogueSelection)

#include "tst_catalogue_selection.moc"
