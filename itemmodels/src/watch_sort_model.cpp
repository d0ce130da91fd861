#include <itemmodels/watch_sort_model.h>

#include <itemmodels/value_text.h>

namespace Velk {

WatchSortModel::WatchSortModel(WatchModel* source, QObject* parent)
    : QSortFilterProxyModel(parent)
{
    setSortRole(WatchModel::SortRole);
    setDynamicSortFilter(false);
    setSourceModel(source);
}

WatchSortModel::~WatchSortModel() = default;

bool WatchSortModel::lessThan(const QModelIndex& left, const QModelIndex& right) const
{
    return ValueText::isLess(left.data(sortRole()), right.data(sortRole()));
}

} // namespace Velk
