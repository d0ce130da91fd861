// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_keys.h>

#include <itemmodels/catalogue_model.h>
#include <itemmodels/catalogue_tree_model.h>

#include <QAbstractProxyModel>

namespace Velk {

QSet<MemoryKey> keysOf(const QModelIndexList& indexes)
{
    QSet<MemoryKey> keys;
    for (const QModelIndex& index : indexes) {
        if (const auto* const tree = qobject_cast<const CatalogueTreeModel*>(index.model()))
            keys.unite(tree->keysBelow(index));
        else if (const auto* const table = qobject_cast<const CatalogueModel*>(index.model()))
            keys.insert(table->key(index.row()));
        else if (const auto* const proxy = qobject_cast<const QAbstractProxyModel*>(index.model()))
            keys.unite(keysOf({proxy->mapToSource(index)}));
    }
    return keys;
}

} // namespace Velk
