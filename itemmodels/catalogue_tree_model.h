#ifndef ITEMMODELS_CATALOGUE_TREE_MODEL_H
#define ITEMMODELS_CATALOGUE_TREE_MODEL_H

#include <itemmodels/catalogue_filter_model.h>
#include <itemmodels/catalogue_model.h>
#include <itemmodels/itemmodels_export.h>

#include <QAbstractItemModel>
#include <QPointer>
#include <QSet>

#include <vector>

namespace Velk {

/// The catalogue as a tree by name path: the key "Arm/Elbow/Position" is shown as "Position" below "Elbow" below "Arm".
///
/// Shows the rows of a catalogue model, or those that a filter over one lets through, and keeps none of its own. An
/// item is made when a view asks for it, so a change of the filter costs what is expanded and not what is there.
///
/// An item stands for a key, for a branch, or for both ("Arm" with "Arm/Elbow" below it). A branch that is no key has
/// a name but no nature and no check box; its description tells how many keys it holds. A segment without text, as in
/// "Arm//Position", is shown as a bracketed word; its SegmentRole is empty.
///
/// Columns, roles, check boxes and drags are those of CatalogueModel. Lives on the thread of its source.
class ITEMMODELS_EXPORT CatalogueTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// The source is not owned and may die at any time, which leaves the tree empty.
    explicit CatalogueTreeModel(CatalogueModel* source, QObject* parent = nullptr);
    explicit CatalogueTreeModel(CatalogueFilterModel* source, QObject* parent = nullptr);
    ~CatalogueTreeModel() override;

    /// Whether the item stands for a key; its siblings of the other columns do as well.
    bool isKey(const QModelIndex& index) const;
    /// The key of the item, if it stands for one, and those of all shown items below it.
    QSet<MemoryKey> keysBelow(const QModelIndex& index) const;
    /// The item of the key of this name; invalid when it is not shown. Branches have names as well.
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
    /// The keys that the items stand for, those below them included.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;

private:
    // An item. Its keys are the shown rows [begin, end), all of which begin with the first segmentEnd code units of the
    // name of the first one; the last segment of those is the item's text.
    struct Node
    {
        int parent;
        int row;
        int begin;
        int end;
        int segmentBegin;
        int segmentEnd;
        bool hasChildList = false;
        std::vector<int> children; // in rows; filled when hasChildList
    };

    void follow(QAbstractItemModel* source);
    void startOver(int shownRows);
    void onSourceRowsInserted(const QModelIndex& parent, int first, int last);
    void onSourceDataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);
    void insertShownRow(int position);

    CatalogueModel* table() const;
    int shownCount() const;
    int sourceRow(int shownRow) const;
    int shownRow(int sourceRow) const;
    int nodeAt(int shownRow, bool onlyListed) const;
    QString name(int shownRow) const;
    int nodeOf(const QModelIndex& index) const;
    QModelIndex indexOfNode(int node, int column = 0) const;
    bool isKey(const Node& node) const;
    QString segment(const Node& node) const;
    const std::vector<int>& children(int node) const;
    int addNode(int parent, int row, int begin, int end, int segmentBegin, int segmentEnd) const;
    int endOfSegment(int begin, int end, int segmentBegin, QStringView segment) const;
    QString branchName(const Node& node) const;
    QVariant branchData(const Node& node, int column, int role) const;
    QModelIndex sourceIndex(const Node& node, int column) const;

    QPointer<CatalogueModel> m_table;
    QPointer<CatalogueFilterModel> m_filter;
    bool m_isFiltered;
    // The first one is the root, whose "segment" ends one before the names begin. Filled as views ask.
    mutable std::vector<Node> m_nodes;
};

} // namespace Velk

#endif
