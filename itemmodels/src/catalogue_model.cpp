// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/catalogue_model.h>

#include "key_mime_data.h"
#include "tool_tip.h"

#include <keynames/name_path.h>

#include <QMimeData>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

bool comesBefore(const MemoryKey& key, const QString& name)
{
    return comparePaths(key.name(), name) < 0;
}

std::vector<MemoryKey> sortedKeys(const QSet<MemoryKey>& keys)
{
    // Sorts pointers: to move a key is to copy it.
    std::vector<std::pair<QString, const MemoryKey*>> order;
    order.reserve(size_t(keys.size()));
    for (const MemoryKey& key : keys)
        order.emplace_back(key.name(), &key);
    std::sort(order.begin(), order.end(),
              [](const auto& a, const auto& b) { return comparePaths(a.first, b.first) < 0; });
    std::vector<MemoryKey> sorted;
    sorted.reserve(order.size());
    for (const auto& entry : order)
        sorted.push_back(*entry.second);
    return sorted;
}

} // namespace

CatalogueModel::CatalogueModel(QObject* parent)
    : QAbstractTableModel(parent)
{}

CatalogueModel::~CatalogueModel() = default;

void CatalogueModel::setCatalogue(MemoryKeyListModel* catalogue)
{
    if (m_catalogue == catalogue)
        return;
    if (m_catalogue)
        m_catalogue->disconnect(this);
    m_catalogue = catalogue;
    if (m_catalogue) {
        connect(m_catalogue, &MemoryKeyListModel::ready, this, &CatalogueModel::onReady);
        connect(m_catalogue, &MemoryKeyListModel::userKeyAdded, this, &CatalogueModel::onUserKeyAdded);
        connect(m_catalogue, &QObject::destroyed, this, [this] {
            showKeys({});
            emit catalogueChanged();
        });
    }
    load();
    emit catalogueChanged();
}

int CatalogueModel::position(const QString& name) const
{
    return int(std::lower_bound(m_keys.begin(), m_keys.end(), name, comesBefore) - m_keys.begin());
}

int CatalogueModel::row(const QString& name) const
{
    const int row = position(name);
    return row < count() && key(row).name() == name ? row : -1;
}

// Following the catalogue

void CatalogueModel::onReady()
{
    load();
}

void CatalogueModel::load()
{
    showKeys(m_catalogue ? sortedKeys(m_catalogue->keys()) : std::vector<MemoryKey>());
}

void CatalogueModel::showKeys(std::vector<MemoryKey> keys)
{
    // Most often a robot lists the same keys at the next connection. Without a reset the views keep their place.
    if (keys == m_keys) {
        m_keys = std::move(keys);
        if (!m_keys.empty())
            emit dataChanged(index(0, 0), index(count() - 1, ColumnCount - 1));
        return;
    }
    const bool isCountChanged = keys.size() != m_keys.size();
    beginResetModel();
    m_keys = std::move(keys);
    endResetModel();
    if (isCountChanged)
        emit countChanged();
}

void CatalogueModel::onUserKeyAdded(const MemoryKey& key)
{
    if (!m_catalogue || row(key.name()) >= 0)
        return;
    // All listed keys of a ready catalogue have rows, so a new one is not listed. Before it is ready, keys are added
    // without a signal.
    if (m_catalogue->isReady())
        insertKey(key);
    else
        load();
}

void CatalogueModel::insertKey(const MemoryKey& key)
{
    const int row = position(key.name());
    beginInsertRows(QModelIndex(), row, row);
    m_keys.insert(m_keys.begin() + row, key);
    endInsertRows();
    emit countChanged();
}

// Selection

bool CatalogueModel::isSelected(const MemoryKey& key) const
{
    return m_catalogue && m_catalogue->selectedKeys().contains(key);
}

void CatalogueModel::setSelected(int row, bool selected)
{
    if (!m_catalogue || row < 0 || row >= count() || isSelected(key(row)) == selected)
        return;
    QSet<MemoryKey> keys = m_catalogue->selectedKeys();
    if (selected)
        keys.insert(key(row));
    else
        keys.remove(key(row));
    m_catalogue->selectKeys(keys);
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1),
                     {Qt::CheckStateRole, Qt::AccessibleDescriptionRole, SelectedRole});
}

void CatalogueModel::refreshSelection()
{
    if (!m_catalogue)
        return;
    // Only unknown keys come and go with the selection. Rows are loaded again only when one of these goes.
    QSet<MemoryKey> missing = m_catalogue->keys(UnknownNature);
    bool hasSuperfluous = false;
    for (const MemoryKey& key : m_keys) {
        if (!missing.remove(key) && key.nature() == UnknownNature)
            hasSuperfluous = true;
    }
    if (hasSuperfluous) {
        load();
        return;
    }
    for (const MemoryKey& key : std::as_const(missing))
        insertKey(key);
    if (!m_keys.empty())
        emit dataChanged(index(0, 0), index(count() - 1, ColumnCount - 1),
                         {Qt::CheckStateRole, Qt::AccessibleDescriptionRole, SelectedRole});
}

// Item model

int CatalogueModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

int CatalogueModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant CatalogueModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const MemoryKey& key = this->key(index.row());
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        switch (index.column()) {
        case NameColumn:
            return key.name();
        case DescriptionColumn:
            return key.description();
        case NatureColumn:
            return key.natureToString();
        }
        break;
    case Qt::ToolTipRole:
        return keyToolTip(key);
    case Qt::AccessibleDescriptionRole:
        return isSelected(key) ? tr("Key of nature %1, selected").arg(key.natureToString())
                               : tr("Key of nature %1").arg(key.natureToString());
    case Qt::CheckStateRole:
        if (index.column() == NameColumn)
            return isSelected(key) ? Qt::Checked : Qt::Unchecked;
        break;
    case NameRole:
    case SegmentRole:
        return key.name();
    case DescriptionRole:
        return key.description();
    case NatureRole:
        return int(key.nature());
    case NatureTextRole:
        return key.natureToString();
    case SelectedRole:
        return isSelected(key);
    case IsKeyRole:
        return true;
    }
    return {};
}

bool CatalogueModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!m_catalogue || !checkIndex(index, CheckIndexOption::IndexIsValid))
        return false;
    if (role == Qt::CheckStateRole && index.column() == NameColumn)
        setSelected(index.row(), value.toInt() == Qt::Checked);
    else if (role == SelectedRole)
        setSelected(index.row(), value.toBool());
    else
        return false;
    return true;
}

Qt::ItemFlags CatalogueModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid())
        return flags;
    flags |= Qt::ItemIsDragEnabled | Qt::ItemNeverHasChildren;
    if (index.column() == NameColumn && m_catalogue)
        flags |= Qt::ItemIsUserCheckable;
    return flags;
}

QVariant CatalogueModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return QAbstractTableModel::headerData(section, orientation, role);
    const bool isText = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
    const bool isToolTip = role == Qt::ToolTipRole || role == Qt::AccessibleDescriptionRole;
    switch (section) {
    case NameColumn:
        return isText ? tr("Name") : isToolTip ? tr("The key's name in the robot's memory") : QVariant();
    case DescriptionColumn:
        return isText ? tr("Description") : isToolTip ? tr("What is known about the key") : QVariant();
    case NatureColumn:
        return isText      ? tr("Nature")
               : isToolTip ? tr("Whether the robot lists the key as data, as an event, or not at all")
                           : QVariant();
    }
    return {};
}

QHash<int, QByteArray> CatalogueModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractTableModel::roleNames();
    names.insert({{NameRole, "name"},
                  {DescriptionRole, "description"},
                  {NatureRole, "nature"},
                  {NatureTextRole, "natureText"},
                  {SelectedRole, "selected"},
                  {IsKeyRole, "isKey"},
                  {SegmentRole, "segment"},
                  {Qt::CheckStateRole, "checkState"}});
    return names;
}

QStringList CatalogueModel::mimeTypes() const
{
    return {keyMimeType(), QStringLiteral("text/plain")};
}

QMimeData* CatalogueModel::mimeData(const QModelIndexList& indexes) const
{
    if (indexes.isEmpty())
        return nullptr;
    QSet<MemoryKey> keys;
    for (const QModelIndex& index : indexes) {
        if (checkIndex(index, CheckIndexOption::IndexIsValid))
            keys.insert(key(index.row()));
    }
    return mimeDataOfKeys(keys);
}

Qt::DropActions CatalogueModel::supportedDragActions() const
{
    return Qt::CopyAction;
}

} // namespace Velk
