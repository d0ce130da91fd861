// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_CATALOGUE_ORDER_H
#define ITEMMODELS_CATALOGUE_ORDER_H

#include <Qt>

#include <vector>

namespace Velk {

class CatalogueModel;

/// The order in which a filter shows the rows of a catalogue model.
class CatalogueOrder
{
public:
    /// A column of CatalogueModel; any other number, and the name column ascending, is the order of the source rows.
    void setColumn(int column, Qt::SortOrder order);
    /// Sorts all source rows, for the present keys of `source`, which may be null.
    void update(const CatalogueModel* source);
    void clear() { m_rows.clear(); }

    /// Whether the order is that of the source rows.
    bool isBySourceRow() const { return m_rows.empty(); }
    /// The accepted source rows, which ascend, in this order.
    std::vector<int> sorted(const std::vector<int>& accepted) const;

private:
    int m_column = -1;
    Qt::SortOrder m_order = Qt::AscendingOrder;
    std::vector<int> m_rows; // all source rows in this order; empty when that is ascending
};

} // namespace Velk

#endif
