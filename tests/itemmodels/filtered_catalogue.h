// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_FILTERED_CATALOGUE_H
#define TESTS_ITEMMODELS_FILTERED_CATALOGUE_H

#include "catalogue_robot.h"

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_model.h>

namespace Velk {

/// A robot under the test's hand, a ready catalogue of it, and a filter. Derived classes give the catalogue to the
/// models when the testers of these are connected.
struct FilteredCatalogue
{
    FilteredCatalogue(const QStringList& data, const QStringList& events)
        : catalogue(robot.readyCatalogue(data, events))
    {}

    CatalogueRobot robot;
    CatalogueModel source;
    MemoryKeyListModel* catalogue;
    CatalogueFilterModel filter{&source};
};

} // namespace Velk

#endif
