// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_TESTED_TREE_H
#define TESTS_ITEMMODELS_TESTED_TREE_H

#include "catalogue_robot.h"
#include "model_text.h"

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/catalogue_tree_model.h>

#include <QAbstractItemModelTester>

namespace Velk {

/// Trees of the catalogue of a robot under the test's hand, one of them behind a filter.
struct TestedTree
{
    explicit TestedTree(const QStringList& data, const QStringList& events = {})
        : catalogue(robot.readyCatalogue(data, events))
    {
        source.setCatalogue(catalogue);
    }

    CatalogueRobot robot;
    CatalogueModel source;
    MemoryKeyListModel* catalogue;
    CatalogueFilterModel filter{&source};
    CatalogueTreeModel tree{&source};
    QAbstractItemModelTester tester{&tree, QAbstractItemModelTester::FailureReportingMode::Fatal};
    CatalogueTreeModel filteredTree{&filter};
    QAbstractItemModelTester filteredTester{&filteredTree, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace Velk

#endif
