// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include <apps/velk-watch/src/catalogue_panel.h>

#include "support/patient_try.h"

#include <itemmodels/catalogue_robot.h>
#include <itemmodels/catalogue_tree_model.h>

#include <QSignalSpy>
#include <QTest>
#include <QTreeView>

using namespace Velk;

class TestCataloguePanel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void aDoubleClickChoosesTheKeyAndNotThoseBelowIt()
    {
        CatalogueRobot robot;
        QStringList names{"Arm"};
        for (int joint = 0; joint < 100; ++joint)
            names << QString("Arm/Joint%1").arg(joint);
        CataloguePanel panel;
        panel.setCatalogue(robot.readyCatalogue(names));
        panel.setTree(true);
        panel.resize(600, 600);
        panel.show();
        QTreeView* const view = panel.findChild<QTreeView*>();
        const auto* const tree = qobject_cast<CatalogueTreeModel*>(view->model());
        QTRY_VERIFY(tree->indexOf("Arm").isValid());
        QSignalSpy chosen(&panel, &CataloguePanel::keysChosen);

        emit view->doubleClicked(tree->indexOf("Arm"));

        QCOMPARE(chosen.count(), 1);
        const auto keys = chosen.at(0).at(0).value<QSet<MemoryKey>>();
        QCOMPARE(keys.size(), 1);
        QCOMPARE(keys.cbegin()->name(), QString("Arm"));
    }
};

QTEST_MAIN(TestCataloguePanel)
#include "tst_catalogue_panel.moc"
