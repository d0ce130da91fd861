// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_WATCH_SORT_MODEL_H
#define ITEMMODELS_WATCH_SORT_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <itemmodels/watch_model.h>

#include <QSortFilterProxyModel>

namespace Velk {

/// A watch model sorted by the content of its cells and not by their text: 9 before 10, "Joint2" before "Joint10", the
/// youngest age first. In ascending order rows without a value come first.
///
/// Keeps its order while values change, because rows that move five times a second cannot be read;
/// setDynamicSortFilter(true) changes that. It sorts again when rows are added.
class ITEMMODELS_EXPORT WatchSortModel : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    /// `source` is not owned.
    explicit WatchSortModel(WatchModel* source, QObject* parent = nullptr);
    ~WatchSortModel() override;

    /// A WatchModel, or a proxy model over one that has its roles.
    void setSourceModel(QAbstractItemModel* source) override;

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;

private:
    void onRowsInserted();
};

} // namespace Velk

#endif
