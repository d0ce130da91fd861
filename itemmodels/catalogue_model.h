// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_CATALOGUE_MODEL_H
#define ITEMMODELS_CATALOGUE_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QAbstractTableModel>
#include <QPointer>

#include <vector>

namespace Velk {

/// The catalogue as a flat table: one row per key, with its name, its description and its nature, in the order of the
/// name paths (letters without regard to case, numbers by their value). CatalogueFilterModel narrows it,
/// CatalogueTreeModel shows it as a tree; both read these rows and keep none of their own.
///
/// A catalogue belongs to one connection, and the catalogue of a displayed key set is deleted as soon as it is ready.
/// RobotSession creates one for each connection; set it here when the session emits catalogueReady(). Until then the
/// keys of the former one stay shown. A catalogue may be deleted or replaced at any time, also in a slot of its own
/// signals.
///
/// The first column has check boxes: the catalogue's selection, which data() reads and setData() writes. The catalogue
/// emits no signal when its selection changes; after a change by others call refreshSelection(). keysOf() gives the
/// keys of the rows that a view has selected.
///
/// Lives on the catalogue's thread.
class ITEMMODELS_EXPORT CatalogueModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_PROPERTY(Velk::MemoryKeyListModel* catalogue READ catalogue WRITE setCatalogue NOTIFY catalogueChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)

public:
    enum Column
    {
        NameColumn,
        DescriptionColumn,
        NatureColumn,
        ColumnCount
    };
    Q_ENUM(Column)

    /// Every column of a row has all of them. In QML: name, description, nature, natureText, selected, isKey, segment.
    enum Role
    {
        NameRole = Qt::UserRole + 1, ///< QString: the key's whole name
        DescriptionRole,             ///< QString
        NatureRole,                  ///< int, a MemoryKeyNature
        NatureTextRole,              ///< QString: "DATA", "EVENT" or "UNKNOWN"
        SelectedRole,                ///< bool, editable: whether the catalogue has the key selected
        IsKeyRole,                   ///< bool: true; in a tree, false for a branch that is no key
        SegmentRole                  ///< QString: the name; in a tree, its last segment
    };
    Q_ENUM(Role)

    explicit CatalogueModel(QObject* parent = nullptr);
    ~CatalogueModel() override;

    /// Null when none was set, or when it was deleted.
    MemoryKeyListModel* catalogue() const { return m_catalogue; }
    /// Shows the keys of the catalogue, which is not owned and may be null: those that were fetched so far, and all
    /// when it is ready. If the names are the same as before, the rows stay, and with them what a view has selected and
    /// expanded.
    void setCatalogue(MemoryKeyListModel* catalogue);

    int count() const { return int(m_keys.size()); }
    /// `row` is a row of this model.
    const MemoryKey& key(int row) const { return m_keys[size_t(row)]; }
    /// The row of the key of this name; -1 when there is none.
    Q_INVOKABLE int row(const QString& name) const;

    /// Adds the key to the catalogue's selection, or removes it. Does nothing without a catalogue.
    Q_INVOKABLE void setSelected(int row, bool isSelected);
    /// Shows the catalogue's selection as it is now; call it after selectKeys(). A selected key that the robot does not
    /// list gets a row; a key that is not listed, not selected any more and not a user key loses its row. (A key that
    /// setSelected() deselects keeps its row until then, so that a slip of the mouse can be undone.)
    void refreshSelection();

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    QStringList mimeTypes() const override;
    /// The keys of the rows, as WatchModel takes them when they are dropped there, and their names as text, one a line.
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;

Q_SIGNALS:
    void catalogueChanged();
    /// count() changed.
    void countChanged();

private:
    void onReady();
    void onUserKeyAdded(const MemoryKey& key);
    void load();
    void showKeys(std::vector<MemoryKey> keys);
    void insertKey(const MemoryKey& key);
    int position(const QString& name) const;
    bool isSelected(const MemoryKey& key) const;

    QPointer<MemoryKeyListModel> m_catalogue;
    std::vector<MemoryKey> m_keys; // in the order of comparePaths()
};

} // namespace Velk

#endif
