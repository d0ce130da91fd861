#include <itemmodels/catalogue_tree_model.h>

#include "key_mime_data.h"
#include "tool_tip.h"

#include <keynames/name_path.h>

#include <QMimeData>

#include <algorithm>

namespace Velk {

namespace {

constexpr int rootNode = 0;

QString countText(int keys)
{
    return keys == 1 ? CatalogueTreeModel::tr("1 key") : CatalogueTreeModel::tr("%1 keys").arg(keys);
}

} // namespace

CatalogueTreeModel::CatalogueTreeModel(CatalogueModel* source, QObject* parent)
    : QAbstractItemModel(parent)
    , m_table(source)
    , m_isFiltered(false)
{
    follow(source);
}

CatalogueTreeModel::CatalogueTreeModel(CatalogueFilterModel* source, QObject* parent)
    : QAbstractItemModel(parent)
    , m_filter(source)
    , m_isFiltered(true)
{
    follow(source);
}

CatalogueTreeModel::~CatalogueTreeModel() = default;

void CatalogueTreeModel::follow(QAbstractItemModel* source)
{
    startOver(shownCount());
    if (!source)
        return;
    connect(source, &QAbstractItemModel::modelAboutToBeReset, this, [this] {
        beginResetModel();
        startOver(0);
    });
    connect(source, &QAbstractItemModel::modelReset, this, [this] {
        startOver(shownCount());
        endResetModel();
    });
    connect(source, &QAbstractItemModel::rowsInserted, this, &CatalogueTreeModel::onSourceRowsInserted);
    connect(source, &QAbstractItemModel::dataChanged, this, &CatalogueTreeModel::onSourceDataChanged);
    connect(source, &QObject::destroyed, this, [this] {
        beginResetModel();
        startOver(0);
        endResetModel();
    });
}

// The rows of the source

CatalogueModel* CatalogueTreeModel::table() const
{
    if (!m_isFiltered)
        return m_table;
    return m_filter ? m_filter->catalogueModel() : nullptr;
}

int CatalogueTreeModel::shownCount() const
{
    if (m_isFiltered)
        return m_filter ? m_filter->count() : 0;
    return m_table ? m_table->count() : 0;
}

int CatalogueTreeModel::sourceRow(int shownRow) const
{
    return m_isFiltered ? m_filter->sourceRows()[size_t(shownRow)] : shownRow;
}

int CatalogueTreeModel::shownRow(int sourceRow) const
{
    if (!m_isFiltered || sourceRow < 0)
        return sourceRow;
    const std::vector<int>& rows = m_filter->sourceRows();
    const auto found = std::lower_bound(rows.begin(), rows.end(), sourceRow);
    return found != rows.end() && *found == sourceRow ? int(found - rows.begin()) : -1;
}

QString CatalogueTreeModel::name(int shownRow) const
{
    return table()->key(sourceRow(shownRow)).name();
}

// The items

void CatalogueTreeModel::startOver(int shownRows)
{
    m_nodes.clear();
    addNode(-1, 0, 0, shownRows, -1, -1);
}

int CatalogueTreeModel::addNode(int parent, int row, int begin, int end, int segmentBegin, int segmentEnd) const
{
    Node node;
    node.parent = parent;
    node.row = row;
    node.begin = begin;
    node.end = end;
    node.segmentBegin = segmentBegin;
    node.segmentEnd = segmentEnd;
    m_nodes.push_back(node);
    return int(m_nodes.size()) - 1;
}

const std::vector<int>& CatalogueTreeModel::children(int node) const
{
    if (!m_nodes[size_t(node)].hasChildList) {
        std::vector<int> children;
        const int segmentBegin = m_nodes[size_t(node)].segmentEnd + 1;
        const int end = m_nodes[size_t(node)].end;
        // The key that is the branch itself comes before those below it.
        int begin = m_nodes[size_t(node)].begin;
        if (isKey(m_nodes[size_t(node)]))
            ++begin;
        while (begin < end) {
            const QString first = name(begin);
            const QStringView segment = pathSegment(first, segmentBegin);
            const int childEnd = endOfSegment(begin, end, segmentBegin, segment);
            children.push_back(
                addNode(node, int(children.size()), begin, childEnd, segmentBegin, segmentBegin + int(segment.size())));
            begin = childEnd;
        }
        m_nodes[size_t(node)].children = std::move(children);
        m_nodes[size_t(node)].hasChildList = true;
    }
    return m_nodes[size_t(node)].children;
}

// Where the rows end that have `segment` at this place, as the one at `begin` has. Most often a few rows on or not at
// all: steps that double find it in little more than that.
int CatalogueTreeModel::endOfSegment(int begin, int end, int segmentBegin, QStringView segment) const
{
    const auto hasSegment = [&](int row) {
        const QString other = name(row);
        return pathSegment(other, segmentBegin) == segment;
    };
    int last = begin; // has the segment
    int step = 1;
    while (last + step < end && hasSegment(last + step)) {
        last += step;
        step *= 2;
    }
    int limit = std::min(last + step, end); // has it not, or is the end
    while (last + 1 < limit) {
        const int middle = last + (limit - last) / 2;
        if (hasSegment(middle))
            last = middle;
        else
            limit = middle;
    }
    return limit;
}

bool CatalogueTreeModel::isKey(const Node& node) const
{
    return node.segmentEnd >= 0 && node.begin < node.end && name(node.begin).size() == node.segmentEnd;
}

QString CatalogueTreeModel::segment(const Node& node) const
{
    return name(node.begin).mid(node.segmentBegin, node.segmentEnd - node.segmentBegin);
}

QString CatalogueTreeModel::branchName(const Node& node) const
{
    return name(node.begin).left(node.segmentEnd);
}

int CatalogueTreeModel::nodeOf(const QModelIndex& index) const
{
    return index.isValid() ? int(index.internalId()) : rootNode;
}

QModelIndex CatalogueTreeModel::indexOfNode(int node, int column) const
{
    return node == rootNode ? QModelIndex() : createIndex(m_nodes[size_t(node)].row, column, quintptr(node));
}

// The item that stands for the key in this row; -1 when it was not made yet and `onlyListed` forbids to make it.
int CatalogueTreeModel::nodeAt(int shownRow, bool onlyListed) const
{
    int node = rootNode;
    for (;;) {
        const Node& current = m_nodes[size_t(node)];
        if (isKey(current) && current.begin == shownRow)
            return node;
        if (onlyListed && !current.hasChildList)
            return -1;
        const std::vector<int>& list = children(node);
        const auto next = std::upper_bound(list.begin(), list.end(), shownRow,
                                           [this](int row, int child) { return row < m_nodes[size_t(child)].begin; });
        if (next == list.begin())
            return -1;
        node = *(next - 1);
    }
}

bool CatalogueTreeModel::isKey(const QModelIndex& index) const
{
    return index.isValid() && isKey(m_nodes[size_t(nodeOf(index))]);
}

QSet<MemoryKey> CatalogueTreeModel::keysBelow(const QModelIndex& index) const
{
    QSet<MemoryKey> keys;
    const Node& node = m_nodes[size_t(nodeOf(index))];
    for (int row = node.begin; row < node.end; ++row)
        keys.insert(table()->key(sourceRow(row)));
    return keys;
}

QModelIndex CatalogueTreeModel::indexOf(const QString& name) const
{
    int first = 0;
    int last = shownCount();
    while (first < last) {
        const int middle = first + (last - first) / 2;
        if (comparePaths(this->name(middle), name) < 0)
            first = middle + 1;
        else
            last = middle;
    }
    // A key of that name stands here, or else the first one below it.
    int node = rootNode;
    while (m_nodes[size_t(node)].segmentEnd < int(name.size())) {
        const std::vector<int>& list = children(node);
        const auto next = std::upper_bound(list.begin(), list.end(), first,
                                           [this](int row, int child) { return row < m_nodes[size_t(child)].begin; });
        if (next == list.begin())
            return {};
        node = *(next - 1);
        const Node& found = m_nodes[size_t(node)];
        if (first >= found.end || branchName(found) != name.left(found.segmentEnd) ||
            (found.segmentEnd < name.size() && name.at(found.segmentEnd) != pathSeparator))
            return {};
    }
    return indexOfNode(node);
}

// Following the source

void CatalogueTreeModel::onSourceRowsInserted(const QModelIndex&, int first, int last)
{
    for (int row = first; row <= last; ++row)
        insertShownRow(m_isFiltered ? shownRow(m_filter->mapToSource(m_filter->index(row, 0)).row()) : row);
}

void CatalogueTreeModel::insertShownRow(int position)
{
    // First all items keep the rows that they had, which may have moved on.
    for (Node& node : m_nodes) {
        if (node.begin >= position)
            ++node.begin;
        if (node.end > position)
            ++node.end;
    }

    // Then the new row is taken in by the items on its path, from the root to the one that is new, or has become a key.
    const QString name = this->name(position);
    int current = rootNode;
    for (;;) {
        const bool isBetween = m_nodes[size_t(current)].begin < position && position < m_nodes[size_t(current)].end;
        const bool isItself = m_nodes[size_t(current)].segmentEnd == int(name.size());
        if (!m_nodes[size_t(current)].hasChildList && isBetween)
            return; // no view has seen what is below, and there was something already
        if (!isItself)
            children(current); // as they were: an item that had none is about to get one
        Node& node = m_nodes[size_t(current)];
        if (node.begin == position + 1 || node.begin == node.end)
            node.begin = position;
        node.end = std::max(node.end, position + 1);
        if (current != rootNode)
            emit dataChanged(indexOfNode(current), indexOfNode(current, CatalogueModel::ColumnCount - 1));
        if (isItself)
            return;

        const int segmentBegin = m_nodes[size_t(current)].segmentEnd + 1;
        const QStringView newSegment = pathSegment(name, segmentBegin);
        const std::vector<int>& list = m_nodes[size_t(current)].children;
        const auto after = std::upper_bound(list.begin(), list.end(), position,
                                            [this](int row, int child) { return row < m_nodes[size_t(child)].begin; });
        const int row = int(after - list.begin());
        const auto isOnPath = [&](int child) { return QStringView(segment(m_nodes[size_t(child)])) == newSegment; };
        if (after != list.begin() && isOnPath(*(after - 1))) {
            current = *(after - 1);
        } else if (after != list.end() && isOnPath(*after)) {
            current = *after;
        } else {
            beginInsertRows(indexOfNode(current), row, row);
            const int added =
                addNode(current, row, position, position + 1, segmentBegin, segmentBegin + int(newSegment.size()));
            std::vector<int>& siblings = m_nodes[size_t(current)].children;
            siblings.insert(siblings.begin() + row, added);
            for (size_t i = size_t(row) + 1; i < siblings.size(); ++i)
                m_nodes[size_t(siblings[i])].row = int(i);
            endInsertRows();
            return;
        }
    }
}

void CatalogueTreeModel::onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                             const QVector<int>& roles)
{
    const int lastColumn = CatalogueModel::ColumnCount - 1;
    if (topLeft.row() == bottomRight.row()) {
        const int source = m_isFiltered ? m_filter->mapToSource(topLeft).row() : topLeft.row();
        const int node = nodeAt(shownRow(source), true);
        if (node >= 0)
            emit dataChanged(indexOfNode(node), indexOfNode(node, lastColumn), roles);
        return;
    }
    for (size_t parent = 0; parent < m_nodes.size(); ++parent) {
        const std::vector<int>& list = m_nodes[parent].children;
        if (!list.empty())
            emit dataChanged(indexOfNode(list.front()), indexOfNode(list.back(), lastColumn), roles);
    }
}

// Item model

QModelIndex CatalogueTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (row < 0 || column < 0 || column >= CatalogueModel::ColumnCount || (parent.isValid() && parent.column() != 0))
        return {};
    const std::vector<int>& list = children(nodeOf(parent));
    return size_t(row) < list.size() ? createIndex(row, column, quintptr(list[size_t(row)])) : QModelIndex();
}

QModelIndex CatalogueTreeModel::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOfNode(m_nodes[size_t(nodeOf(child))].parent) : QModelIndex();
}

int CatalogueTreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() && parent.column() != 0 ? 0 : int(children(nodeOf(parent)).size());
}

int CatalogueTreeModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() && parent.column() != 0 ? 0 : int(CatalogueModel::ColumnCount);
}

bool CatalogueTreeModel::hasChildren(const QModelIndex& parent) const
{
    if (parent.isValid() && parent.column() != 0)
        return false;
    const Node& node = m_nodes[size_t(nodeOf(parent))];
    return node.end - node.begin > (isKey(node) ? 1 : 0);
}

QModelIndex CatalogueTreeModel::sourceIndex(const Node& node, int column) const
{
    return table()->index(sourceRow(node.begin), column);
}

QVariant CatalogueTreeModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Node& node = m_nodes[size_t(nodeOf(index))];
    if (role == CatalogueModel::SegmentRole)
        return segment(node);
    if (index.column() == CatalogueModel::NameColumn &&
        (role == Qt::DisplayRole || role == Qt::AccessibleTextRole || role == Qt::EditRole)) {
        const QString text = segment(node);
        return text.isEmpty() ? tr("(no name)") : text;
    }
    return isKey(node) ? sourceIndex(node, index.column()).data(role) : branchData(node, index.column(), role);
}

QVariant CatalogueTreeModel::branchData(const Node& node, int column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return column == CatalogueModel::DescriptionColumn ? countText(node.end - node.begin) : QVariant();
    case Qt::ToolTipRole:
        return plainToolTip(branchName(node) + QLatin1Char('\n') + countText(node.end - node.begin));
    case Qt::AccessibleDescriptionRole:
        return tr("Branch, %1").arg(countText(node.end - node.begin));
    case CatalogueModel::NameRole:
        return branchName(node);
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
    return isKey(index) && table()->setData(sourceIndex(m_nodes[size_t(nodeOf(index))], index.column()), value, role);
}

Qt::ItemFlags CatalogueTreeModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsSelectable | Qt::ItemIsEnabled | Qt::ItemIsDragEnabled;
    if (isKey(index)) {
        flags |= table()->flags(sourceIndex(m_nodes[size_t(nodeOf(index))], index.column()));
        flags &= ~Qt::ItemFlags(Qt::ItemNeverHasChildren); // it may get some
    }
    return flags;
}

QVariant CatalogueTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (table() && orientation == Qt::Horizontal)
        return table()->headerData(section, orientation, role);
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
    return indexes.isEmpty() ? nullptr : mimeDataOfKeys(CatalogueModel::keys(indexes));
}

Qt::DropActions CatalogueTreeModel::supportedDragActions() const
{
    return Qt::CopyAction;
}

} // namespace Velk
