// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "catalogue_rows.h"

#include <keynames/name_path.h>

#include <algorithm>

namespace Velk {

CatalogueModel* CatalogueRows::table() const
{
    if (!m_isFiltered)
        return m_table;
    return m_filter ? m_filter->catalogueModel() : nullptr;
}

int CatalogueRows::count() const
{
    if (m_isFiltered)
        return m_filter ? m_filter->count() : 0;
    return m_table ? m_table->count() : 0;
}

int CatalogueRows::tableRow(int shownRow) const
{
    return m_isFiltered ? m_filter->sourceRows()[size_t(shownRow)] : shownRow;
}

int CatalogueRows::fromSourceRow(int row) const
{
    if (!m_isFiltered)
        return row;
    const int tableRow = m_filter->mapToSource(m_filter->index(row, 0)).row();
    const std::vector<int>& rows = m_filter->sourceRows();
    const auto found = std::lower_bound(rows.begin(), rows.end(), tableRow);
    return found != rows.end() && *found == tableRow ? int(found - rows.begin()) : -1;
}

int CatalogueRows::lowerBound(const QString& name) const
{
    int first = 0;
    int last = count();
    while (first < last) {
        const int middle = first + (last - first) / 2;
        if (comparePaths(this->name(middle), name) < 0)
            first = middle + 1;
        else
            last = middle;
    }
    return first;
}

} // namespace Velk
