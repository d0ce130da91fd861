// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_CATALOGUE_ROWS_H
#define ITEMMODELS_CATALOGUE_ROWS_H

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_model.h>

#include <QPointer>

namespace Velk {

/// The rows that a tree shows: those of a catalogue model, or those that a filter accepts, in the order of the name
/// paths. A shown row is a place in that order, whatever the filter is sorted by. The source may be destroyed at any
/// time: there are no rows then.
class CatalogueRows
{
public:
    explicit CatalogueRows(CatalogueModel* table)
        : m_table(table)
        , m_isFiltered(false)
    {}
    explicit CatalogueRows(CatalogueFilterModel* filter)
        : m_filter(filter)
        , m_isFiltered(true)
    {}

    /// The catalogue model, also of a filter; null when there is none.
    CatalogueModel* table() const;
    int count() const;

    /// The row of table().
    int tableRow(int shownRow) const;
    /// The shown row of a row of the source, which may be a sorted filter; -1 when there is none.
    int fromSourceRow(int row) const;

    const MemoryKey& key(int shownRow) const { return table()->key(tableRow(shownRow)); }
    QString name(int shownRow) const { return key(shownRow).name(); }
    /// The first shown row whose name is not less than this one; count() when there is none.
    int lowerBound(const QString& name) const;

private:
    QPointer<CatalogueModel> m_table;
    QPointer<CatalogueFilterModel> m_filter;
    bool m_isFiltered;
};

} // namespace Velk

#endif
