// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_TESTED_TREE_H
#define TESTS_ITEMMODELS_TESTED_TREE_H

#include "filtered_catalogue.h"
#include "model_text.h"

#include <itemmodels/catalogue_tree_model.h>

#include <QAbstractItemModelTester>

namespace Velk {

/// Trees of the catalogue of a robot under the test's hand, one of them behind a filter.
struct TestedTree : FilteredCatalogue
{
    explicit TestedTree(const QStringList& data, const QStringList& events = {})
        : FilteredCatalogue(data, events)
    {
        source.setCatalogue(catalogue);
    }

    CatalogueTreeModel tree{&source};
    QAbstractItemModelTester tester{&tree, QAbstractItemModelTester::FailureReportingMode::Fatal};
    CatalogueTreeModel filteredTree{&filter};
    QAbstractItemModelTester filteredTester{&filteredTree, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace Velk

#endif
