#ifndef ITEMMODELS_WATCH_SORT_MODEL_H
#define ITEMMODELS_WATCH_SORT_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <itemmodels/watch_model.h>

#include <QSortFilterProxyModel>

namespace Velk {

/// A watch model sorted by what is in its cells and not by its text: 9 before 10, "Joint2" before "Joint10", the
/// youngest age first. Rows without a value come first, ascending.
///
/// Keeps its order while values change unless setDynamicSortFilter(true) is called: rows that change their places five
/// times a second cannot be read. It sorts afresh when rows are added.
class ITEMMODELS_EXPORT WatchSortModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// `source` is not owned.
    explicit WatchSortModel(WatchModel* source, QObject* parent = nullptr);
    ~WatchSortModel() override;

    /// A WatchModel, or a model over one that gives its roles.
    void setSourceModel(QAbstractItemModel* source) override;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void onRowsInserted();
};

} // namespace Velk

#endif
