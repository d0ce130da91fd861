// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_keys.h>

#include "catalogue_robot.h"
#include "model_text.h"

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/catalogue_tree_model.h>

#include <QIdentityProxyModel>
#include <QStringListModel>
#include <QtTest>

using namespace Velk;

class TestCatalogueKeys : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void givesTheKeysOfATable();
    void givesTheKeysOfAFilter();
    void givesTheKeysBelowAnItemOfATree();
    void givesTheKeysOfAProxyOverATree();
    void givesNoKeyOfAnotherModel();
};

void TestCatalogueKeys::givesTheKeysOfATable()
{
    CatalogueRobot robot;
    CatalogueModel table;
    table.setCatalogue(robot.readyCatalogue(list("Arm|Back"), list("Leg")));

    QCOMPARE(described(keysOf({table.index(0, 0), table.index(2, 1), table.index(2, 2)})),
             list("Arm DATA (Arm desc)|Leg EVENT (Leg desc)"));
}

void TestCatalogueKeys::givesTheKeysOfAFilter()
{
    CatalogueRobot robot;
    CatalogueModel table;
    table.setCatalogue(robot.readyCatalogue(list("Arm|Back|Leg")));
    CatalogueFilterModel filter(&table);
    filter.setText(text("Leg"));

    QCOMPARE(names(keysOf({filter.index(0, 1)})), list("Leg"));
}

void TestCatalogueKeys::givesTheKeysBelowAnItemOfATree()
{
    CatalogueRobot robot;
    CatalogueModel table;
    table.setCatalogue(robot.readyCatalogue(list("Arm|Arm/Elbow/x|Arm/Wrist|Back|Leg")));
    const CatalogueTreeModel tree(&table);

    QCOMPARE(names(keysOf({tree.indexOf(text("Arm/Elbow")), tree.indexOf(text("Leg"))})), list("Arm/Elbow/x|Leg"));
    QCOMPARE(names(keysOf({tree.indexOf(text("Arm"))})), list("Arm|Arm/Elbow/x|Arm/Wrist"));
}

void TestCatalogueKeys::givesTheKeysOfAProxyOverATree()
{
    CatalogueRobot robot;
    CatalogueModel table;
    table.setCatalogue(robot.readyCatalogue(list("Arm/Elbow|Arm/Wrist|Leg")));
    CatalogueTreeModel tree(&table);
    QIdentityProxyModel proxy;
    proxy.setSourceModel(&tree);

    QCOMPARE(names(keysOf({proxy.mapFromSource(tree.indexOf(text("Arm")))})), list("Arm/Elbow|Arm/Wrist"));
}

void TestCatalogueKeys::givesNoKeyOfAnotherModel()
{
    const QStringListModel other(list("Arm"));

    QCOMPARE(keysOf({other.index(0, 0), QModelIndex()}).size(), 0);
    QCOMPARE(keysOf({}).size(), 0);
}

QTEST_GUILESS_MAIN(TestCatalogueKeys)

#include "tst_catalogue_keys.moc"
