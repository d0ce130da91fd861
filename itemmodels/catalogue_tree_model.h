// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_CATALOGUE_TREE_MODEL_H
#define ITEMMODELS_CATALOGUE_TREE_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/memory_key.h>

#include <QAbstractItemModel>
#include <QSet>
#include <QVector>

#include <memory>

namespace Velk {

class CatalogueFilterModel;
class CatalogueModel;
class CatalogueRows;
class NameTree;

/// The catalogue as a tree by name path: the key "Arm/Elbow/Position" is shown as "Position" below "Elbow" below "Arm".
///
/// Shows the rows of a catalogue model, or those that a filter over one accepts, and keeps none of its own. An item is
/// made when a view asks for it, so a change of the filter costs as much as there are expanded items.
///
/// An item is a key, a branch, or both ("Arm" with "Arm/Elbow" below it). A branch that is no key has a name but no
/// nature and no check box; its description is the number of keys below it. A segment without text, as in
/// "Arm//Position", is shown as a word in parentheses; its SegmentRole is empty.
///
/// Columns, roles, check boxes and drags are those of CatalogueModel. Lives on the thread of its source.
class ITEMMODELS_EXPORT CatalogueTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// The source is not owned, may be null, and may be destroyed at any time, which leaves the tree empty.
    explicit CatalogueTreeModel(CatalogueModel* source, QObject* parent = nullptr);
    explicit CatalogueTreeModel(CatalogueFilterModel* source, QObject* parent = nullptr);
    ~CatalogueTreeModel() override;

    /// Whether the item is a key. The same for each column of its row.
    bool isKey(const QModelIndex& index) const;
    /// The key of the item, if it is one, and those of all shown items below it.
    QSet<MemoryKey> keysBelow(const QModelIndex& index) const;
    /// The item of the key or branch of this name; invalid when it is not shown.
    QModelIndex indexOf(const QString& name) const;

    QModelIndex index(int row, int column, const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    bool hasChildren(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    QStringList mimeTypes() const override;
    /// The keys of the items and of all shown items below them.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;

private:
    CatalogueTreeModel(QAbstractItemModel* source, std::unique_ptr<CatalogueRows> rows, QObject* parent);
    void onSourceRowsInserted(const QModelIndex& parent, int first, int last);
    void onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);
    void insertShownRow(int shownRow);
    int itemOf(const QModelIndex& index) const;
    QModelIndex indexOfItem(int item, int column = 0) const;
    QModelIndex tableIndex(const QModelIndex& index) const;
    QVariant branchData(const QModelIndex& index, int role) const;

    std::unique_ptr<CatalogueRows> m_rows;
    std::unique_ptr<NameTree> m_tree;
};

} // namespace Velk

#endif
