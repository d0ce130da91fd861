// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_TESTED_CATALOGUE_MODEL_H
#define TESTS_ITEMMODELS_TESTED_CATALOGUE_MODEL_H

#include <itemmodels/catalogue_model.h>

#include <QAbstractItemModelTester>

namespace Velk {

struct TestedCatalogueModel
{
    CatalogueModel model;
    QAbstractItemModelTester tester{&model, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace Velk

#endif
