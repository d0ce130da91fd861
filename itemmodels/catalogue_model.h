#ifndef ITEMMODELS_CATALOGUE_MODEL_H
#define ITEMMODELS_CATALOGUE_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memory_key_list_model.h>

#include <QAbstractTableModel>
#include <QModelIndexList>
#include <QPointer>
#include <QSet>

#include <vector>

namespace Velk {

/// The catalogue as a flat table: one row per key, with its name, its description and its nature, in the order of the
/// name paths (letters without regard to case, numbers by their value). CatalogueFilterModel narrows it,
/// CatalogueTreeModel shows it as a tree; both read these rows and keep none of their own.
///
/// A catalogue is made for one connection, and the one that a displayed key set makes for itself lives only until it is
/// ready. The application therefore creates a catalogue of its own whenever its robot connects and sets it here,
/// best when it is ready: the keys of the former one stay shown until then. A catalogue may be deleted or replaced at
/// any time, also in a slot of its own signals.
///
/// The first column can be checked: the check boxes are the catalogue's selection, read from it at every call and
/// written to it at once. A selection that is changed elsewhere, which the catalogue does not announce, is shown after
/// refreshSelection().
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

    /// Given for every column of a row. In QML: name, description, nature, natureText, selected, isKey, segment.
    enum Role
    {
        NameRole = Qt::UserRole + 1, ///< QString: the key's whole name
        DescriptionRole,             ///< QString
        NatureRole,                  ///< int, a MemoryKeyNature
        NatureTextRole,              ///< QString: "DATA", "EVENT" or "UNKNOWN"
        SelectedRole,                ///< bool, editable: whether the catalogue has the key selected
        IsKeyRole,                   ///< bool: true; false for the branches of a tree that are no keys
        SegmentRole                  ///< QString: the name; in a tree, what stands between the separators
    };
    Q_ENUM(Role)

    explicit CatalogueModel(QObject* parent = nullptr);
    ~CatalogueModel() override;

    /// Null when none was set, or the one that was set was deleted.
    MemoryKeyListModel* catalogue() const { return m_catalogue; }
    /// Shows the keys of the catalogue, which may be null; not owned. Shows what has been fetched so far and, unless
    /// it is ready, shows everything when it is. When the names are those that are shown already, the rows stay,
    /// and with them what a view has selected and expanded.
    void setCatalogue(MemoryKeyListModel* catalogue);

    int count() const { return int(m_keys.size()); }
    /// `row` is a row of this model.
    const MemoryKey& key(int row) const { return m_keys[size_t(row)]; }
    /// The row of the key of this name; -1 when there is none.
    Q_INVOKABLE int row(const QString& name) const;
    /// The keys of the rows that the indexes are in: of this model, or of a filter or a tree over it. An index of a
    /// tree stands for all keys that are shown below it as well.
    static QSet<MemoryKey> keys(const QModelIndexList& indexes);

    /// Selects the key in the catalogue, or takes it out of the selection. Nothing without a catalogue.
    Q_INVOKABLE void setSelected(int row, bool isSelected);
    /// Shows the catalogue's selection as it is now; call it after selectKeys(). A selected key that the robot does not
    /// list gets a row, and one that is neither selected nor typed in any more loses it. (A row whose check box is
    /// cleared in a view stays until then, for a slip of the mouse to be undone.)
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
