// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_TESTED_FILTER_H
#define TESTS_ITEMMODELS_TESTED_FILTER_H

#include "filtered_catalogue.h"
#include "model_text.h"

#include <QAbstractItemModelTester>

namespace Velk {

/// A filter of the catalogue of a robot under the test's hand.
struct TestedFilter : FilteredCatalogue
{
    explicit TestedFilter(const QStringList& data, const QStringList& events = {})
        : FilteredCatalogue(data, events)
    {
        source.setCatalogue(catalogue);
    }

    QAbstractItemModelTester tester{&filter, QAbstractItemModelTester::FailureReportingMode::Fatal};
};

/// The names that it shows when it has gone through all.
inline QStringList shown(CatalogueFilterModel& filter)
{
    filter.finishFiltering();
    return columnText(filter, CatalogueModel::NameColumn);
}

/// Names, and an expression that is slow on each of them: no machine filters all within the time of one setter.
inline QStringList manyNames()
{
    QStringList names;
    for (int i = 0; i < 2000; ++i)
        names << QStringLiteral("aaaaaaaaaaaaaaaa%1").arg(i);
    return names;
}

inline QString slowExpression()
{
    return text("(a|aa|aaa)+b|a77$");
}

} // namespace Velk

#endif
