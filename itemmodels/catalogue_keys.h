// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_CATALOGUE_KEYS_H
#define ITEMMODELS_CATALOGUE_KEYS_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/memory_key.h>

#include <QModelIndexList>
#include <QSet>

namespace Velk {

/// The keys of the rows of the indexes, such as those that a view has selected. The indexes are of a CatalogueModel, of
/// a CatalogueTreeModel, or of a proxy model over one of them; indexes of any other model give no key. An index of a
/// tree gives all keys that are shown below it as well.
ITEMMODELS_EXPORT QSet<MemoryKey> keysOf(const QModelIndexList& indexes);

} // namespace Velk

#endif
