// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_sort_model.h>

#include <itemmodels/value_order.h>

namespace Velk {

WatchSortModel::WatchSortModel(WatchModel* source, QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(WatchModel::SortRole);
    setDynamicSortFilter(false);
    WatchSortModel::setSourceModel(source);
}

WatchSortModel::~WatchSortModel() = default;

void WatchSortModel::setSourceModel(QAbstractItemModel* source)
{
    if (sourceModel())
        disconnect(sourceModel(), &QAbstractItemModel::rowsInserted, this, &WatchSortModel::onRowsInserted);
    QSortFilterProxyModel::setSourceModel(source);
    // Connected after the base class, which has added the rows when this slot is called.
    if (source)
        connect(source, &QAbstractItemModel::rowsInserted, this, &WatchSortModel::onRowsInserted);
}

void WatchSortModel::onRowsInserted()
{
    // Without dynamic sorting the base class only appends new rows.
    if (!dynamicSortFilter() && sortColumn() >= 0)
        sort(sortColumn(), sortOrder());
}

bool WatchSortModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return ValueOrder::isLess(left.data(sortRole()), right.data(sortRole()));
}

} // namespace Velk
