// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_tree_model.h>

#include "catalogue_rows.h"
#include "key_mime_data.h"
#include "name_tree.h"
#include "tool_tip.h"

#include <QMimeData>

namespace Velk {

namespace {

QString countText(int keys)
{
    return keys == 1 ? CatalogueTreeModel::tr("1 key") : CatalogueTreeModel::tr("%1 keys").arg(keys);
}

} // namespace

CatalogueTreeModel::CatalogueTreeModel(CatalogueModel* source, QObject* parent)
    : CatalogueTreeModel(source, std::make_unique<CatalogueRows>(source), parent)
{}

CatalogueTreeModel::CatalogueTreeModel(CatalogueFilterModel* source, QObject* parent)
    : CatalogueTreeModel(source, std::make_unique<CatalogueRows>(source), parent)
{}

CatalogueTreeModel::CatalogueTreeModel(QAbstractItemModel* source, std::unique_ptr<CatalogueRows> rows, QObject* parent)
    : QAbstractItemModel(parent)
    , m_rows(std::move(rows))
    , m_tree(std::make_unique<NameTree>(*m_rows))
{
    if (!source)
        return;
    connect(source, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        beginResetModel();
        m_tree->startOver(0);
    });
    connect(source, &QAbstractItemModel::modelReset, this, [this] {
        m_tree->startOver(m_rows->count());
        endResetModel();
    });
    connect(source, &QAbstractItemModel::rowsInserted, this, &CatalogueTreeModel::onSourceRowsInserted);
    connect(source, &QAbstractItemModel::dataChanged, this, &CatalogueTreeModel::onSourceDataChanged);
    connect(source, &QObject::destroyed, this, [this] {
        beginResetModel();
        m_tree->startOver(0);
        endResetModel();
    });
}

CatalogueTreeModel::~CatalogueTreeModel() = default;

// Items

int CatalogueTreeModel::itemOf(const QModelIndex& index) const
{
    return index.isValid() ? int(index.internalId()) : NameTree::root;
}

QModelIndex CatalogueTreeModel::indexOfItem(int item, int column) const
{
    return item == NameTree::root ? QModelIndex() : createIndex(m_tree->item(item).row, column, quintptr(item));
}

bool CatalogueTreeModel::isKey(const QModelIndex& index) const
{
    return index.isValid() && m_tree->isKey(itemOf(index));
}

QSet<MemoryKey> CatalogueTreeModel::keysBelow(const QModelIndex& index) const
{
    QSet<MemoryKey> keys;
    const NameTree::Item& item = m_tree->item(itemOf(index));
    for (int row = item.begin; row < item.end; ++row)
        keys.insert(m_rows->key(row));
    return keys;
}

QModelIndex CatalogueTreeModel::indexOf(const QString& name) const
{
    const int item = m_tree->find(name);
    return item < 0 ? QModelIndex() : indexOfItem(item);
}

// Following the source

void CatalogueTreeModel::onSourceRowsInserted(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row)
        insertShownRow(m_rows->fromSourceRow(row));
}

void CatalogueTreeModel::insertShownRow(int shownRow)
{
    const NameTree::Insertion insertion = m_tree->insertRow(shownRow);
    for (int item : insertion.changed)
        emit dataChanged(indexOfItem(item), indexOfItem(item, CatalogueModel::ColumnCount - 1));
    if (insertion.parent < 0)
        return;
    beginInsertRows(indexOfItem(insertion.parent), insertion.row, insertion.row);
    m_tree->addItem(insertion, shownRow);
    endInsertRows();
}

void CatalogueTreeModel::onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                             const QVector<int>& roles)
{
    const int lastColumn = CatalogueModel::ColumnCount - 1;
    if (topLeft.row() == bottomRight.row()) {
        const int item = m_tree->madeItem(m_rows->fromSourceRow(topLeft.row()));
        if (item >= 0)
            emit dataChanged(indexOfItem(item), indexOfItem(item, lastColumn), roles);
        return;
    }
    for (int parent = 0; parent < m_tree->count(); ++parent) {
        const std::vector<int>& list = m_tree->item(parent).children;
        if (!list.empty())
            emit dataChanged(indexOfItem(list.front()), indexOfItem(list.back(), lastColumn), roles);
    }
}

// Item model

QModelIndex CatalogueTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= CatalogueModel::ColumnCount || (parent.isValid() && parent.column() != 0))
        return {};
    const std::vector<int>& list = m_tree->children(itemOf(parent));
    return size_t(row) < list.size() ? createIndex(row, column, quintptr(list[size_t(row)])) : QModelIndex();
}

QModelIndex CatalogueTreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOfItem(m_tree->item(itemOf(child)).parent) : QModelIndex();
}

int CatalogueTreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() && parent.column() != 0 ? 0 : int(m_tree->children(itemOf(parent)).size());
}

int CatalogueTreeModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() && parent.column() != 0 ? 0 : int(CatalogueModel::ColumnCount);
}

bool CatalogueTreeModel::hasChildren(const QModelIndex& parent) const
{
    return (!parent.isValid() || parent.column() == 0) && m_tree->hasChildren(itemOf(parent));
}

QModelIndex CatalogueTreeModel::tableIndex(const QModelIndex& index) const
{
    return m_rows->table()->index(m_rows->tableRow(m_tree->item(itemOf(index)).begin), index.column());
}

QVariant CatalogueTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    if (role == CatalogueModel::SegmentRole)
        return m_tree->segment(itemOf(index));
    if (index.column() == CatalogueModel::NameColumn &&
        (role == Qt::DisplayRole || role == Qt::AccessibleTextRole || role == Qt::EditRole)) {
        const QString text = m_tree->segment(itemOf(index));
        return text.isEmpty() ? tr("(no name)") : text;
    }
    return isKey(index) ? tableIndex(index).data(role) : branchData(index, role);
}

QVariant CatalogueTreeModel::branchData(const QModelIndex& index, int role) const
{
    const NameTree::Item& item = m_tree->item(itemOf(index));
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return index.column() == CatalogueModel::DescriptionColumn ? countText(item.end - item.begin) : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(m_tree->path(itemOf(index)) + QLatin1Char('\n') + countText(item.end - item.begin));
    case Qt::AccessibleDescriptionRole:
        return tr("Branch, %1").arg(countText(item.end - item.begin));
    case CatalogueModel::NameRole:
        return m_tree->path(itemOf(index));
    case CatalogueModel::DescriptionRole:
    case CatalogueModel::NatureTextRole:
        return QString();
    case CatalogueModel::NatureRole:
        return 0;
    case CatalogueModel::SelectedRole:
    case CatalogueModel::IsKeyRole:
        return false;
    }
    return {};
}

bool CatalogueTreeModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    return isKey(index) && m_rows->table()->setData(tableIndex(index), value, role);
}

Qt::ItemFlags CatalogueTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
    if (isKey(index)) {
        flags |= m_rows->table()->flags(tableIndex(index));
        flags &= ~Qt::ItemFlags(Qt::ItemNeverHasChildren); // a key can get keys below it
    }
    return flags;
}

QVariant CatalogueTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const CatalogueModel* const table = m_rows->table();
    if (table && orientation == Qt::Horizontal)
        return table->headerData(section, orientation, role);
    return QAbstractItemModel::headerData(section, orientation, role);
}

QHash<int, QByteArray> CatalogueTreeModel::roleNames() const
{
    return CatalogueModel().roleNames();
}

QStringList CatalogueTreeModel::mimeTypes() const
{
    return {keyMimeType(), QStringLiteral("text/plain")};
}

QMimeData* CatalogueTreeModel::mimeData(const QModelIndexList& indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    QSet<MemoryKey> keys;
    for (const QModelIndex& index : indexes) {
        if (index.isValid()) // an invalid index is the root, with the whole catalogue below it
            keys.unite(keysBelow(index));
    }
    return mimeDataOfKeys(keys);
}

Qt::DropActions CatalogueTreeModel::supportedDragActions() const
{
    return Qt::CopyAction;
}

} // namespace Velk
