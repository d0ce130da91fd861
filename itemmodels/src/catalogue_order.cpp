// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "catalogue_order.h"

#include <itemmodels/catalogue_model.h>

#include <keynames/name_path.h>

#include <algorithm>
#include <iterator>
#include <numeric>

namespace Velk {

void CatalogueOrder::setColumn(int column, Qt::SortOrder order)
{
    m_column = column;
    m_order = order;
}

void CatalogueOrder::update(const CatalogueModel* source)
{
    m_rows.clear();
    const bool isAscending = m_order == Qt::AscendingOrder;
    const bool isByName = m_column == CatalogueModel::NameColumn;
    const bool isByNature = m_column == CatalogueModel::NatureColumn;
    const bool isByKey = isByNature || m_column == CatalogueModel::DescriptionColumn;
    if (!source || !(isByKey || (isByName && !isAscending)))
        return;
    m_rows.resize(size_t(source->count()));
    std::iota(m_rows.begin(), m_rows.end(), 0);
    if (isByKey) {
        std::stable_sort(m_rows.begin(), m_rows.end(), [source, isByNature](int a, int b) {
            return isByNature ? source->key(a).nature() < source->key(b).nature()
                              : comparePaths(source->key(a).description(), source->key(b).description()) < 0;
        });
    }
    if (!isAscending)
        std::reverse(m_rows.begin(), m_rows.end());
}

std::vector<int> CatalogueOrder::sorted(const std::vector<int>& accepted) const
{
    if (isBySourceRow())
        return accepted;
    std::vector<bool> isAccepted(m_rows.size());
    for (int row : accepted)
        isAccepted[size_t(row)] = true;
    std::vector<int> rows;
    rows.reserve(accepted.size());
    std::copy_if(m_rows.begin(), m_rows.end(), std::back_inserter(rows),
                 [&isAccepted](int row) { return isAccepted[size_t(row)]; });
    return rows;
}

} // namespace Velk
