#ifndef ITEMMODELS_WATCH_MODEL_H
#define ITEMMODELS_WATCH_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key.h>

#include <QAbstractTableModel>
#include <QColor>
#include <QHash>
#include <QPointer>
#include <QSet>
#include <QString>
#include <QTimer>
#include <QVariant>

#include <functional>
#include <vector>

namespace Velk {

/// The displayed key set as a table: one row per key, in the order in which the keys were added, with what is shown
/// for it and the newest value that was received.
///
/// Values are taken in as they come and told to the views together, once per updateInterval(): one dataChanged() for
/// each run of neighbouring rows that got one, and no other row.
///
/// The colour and the display flag of a key are kept here, by name: the displayed key set resets its own copies when
/// a connection comes up. Here they stay across connections, also of another displayed key set. A key for which none
/// was set gets the first of the DistinctColors that fewest rows have. A key's newest value stays shown as well, and
/// its age tells how old it is, until the next value comes or the key is removed.
///
/// Sort with WatchSortModel. Lives on the displayed key set's thread.
class ITEMMODELS_EXPORT WatchModel : public QAbstractTableModel
{
    Q_OBJECT
    Q_PROPERTY(Velk::DisplayedMemoryKeyListModel* displayedKeys READ displayedKeys WRITE setDisplayedKeys NOTIFY
                   displayedKeysChanged)
    Q_PROPERTY(int count READ count NOTIFY countChanged)
    Q_PROPERTY(int updateInterval READ updateInterval WRITE setUpdateInterval NOTIFY updateIntervalChanged)
    Q_PROPERTY(bool frozen READ isFrozen WRITE setFrozen NOTIFY frozenChanged)

public:
    enum Column
    {
        ShownColumn, ///< check box, editable: the display flag
        ColorColumn, ///< editable
        NameColumn,
        DescriptionColumn,
        NatureColumn,
        ValueColumn,
        TimeColumn,   ///< the value's time stamp, in the unit of the robot's clock
        AgeColumn,    ///< how long ago the value was received
        PeriodColumn, ///< the key's own watch period
        ColumnCount
    };
    Q_ENUM(Column)

    /// Given for every column of a row, but for SortRole. In QML: shown, keyColor, name, description, nature,
    /// natureText, value, valueText, time, timeText, age, ageText, period, sortValue.
    enum Role
    {
        ShownRole = Qt::UserRole + 1, ///< bool, editable
        ColorRole,                    ///< QColor, editable
        NameRole,                     ///< QString
        DescriptionRole,              ///< QString
        NatureRole,                   ///< int, a MemoryKeyNature
        NatureTextRole,               ///< QString: "DATA", "EVENT" or "UNKNOWN"
        ValueRole,                    ///< as received; invalid while there is none
        ValueTextRole,                ///< QString: ValueText::brief() of it
        TimeRole,                     ///< double, in the unit of the robot's clock; invalid while there is no value
        TimeTextRole,                 ///< QString
        AgeRole,                      ///< qint64, milliseconds; invalid while there is no value
        AgeTextRole,                  ///< QString
        PeriodRole,                   ///< int, milliseconds
        SortRole                      ///< what the column is sorted by; WatchSortModel compares it
    };
    Q_ENUM(Role)

    /// `displayedKeys` is not owned, may be null, and may be deleted at any time, which leaves the model empty.
    explicit WatchModel(DisplayedMemoryKeyListModel* displayedKeys = nullptr, QObject* parent = nullptr);
    ~WatchModel() override;

    DisplayedMemoryKeyListModel* displayedKeys() const { return m_displayedKeys; }
    /// Shows another set, such as the one of another robot. Colours and flags stay, by name; values do not.
    void setDisplayedKeys(DisplayedMemoryKeyListModel* displayedKeys);

    int count() const { return int(m_rows.size()); }
    /// `row` is a row of this model.
    const MemoryKey& key(int row) const { return m_rows[size_t(row)].key; }
    /// The row of the key of this name; -1 when it is not displayed.
    Q_INVOKABLE int row(const QString& name) const;
    /// The keys of the rows that the indexes, of this model, are in.
    QSet<MemoryKey> keys(const QModelIndexList& indexes) const;

    /// How the key of this name is shown, or will be as soon as it is displayed. An application that remembers colours
    /// and flags sets them here when it starts. An invalid colour stands for one of the DistinctColors.
    QColor color(const QString& name) const;
    void setColor(const QString& name, const QColor& color);
    /// True unless set to false.
    bool isShown(const QString& name) const;
    void setShown(const QString& name, bool isShown);

    /// Milliseconds, at least, between two rounds of dataChanged() for new values; at first that of a refresh of the
    /// primary screen, 16 without a screen. Values less than 0 count as 0: the next turn of the event loop.
    int updateInterval() const { return m_updateTimer.interval(); }
    void setUpdateInterval(int intervalMs);
    /// A frozen table goes on taking in values and shows those that it had when it was frozen, until it is not any
    /// more. Keys are added and removed all the same. False at first.
    bool isFrozen() const { return m_isFrozen; }
    void setFrozen(bool isFrozen);
    /// Tells the views at once what they are to be told at the end of the interval, ages included.
    void flush();

    /// Turns a time stamp into the text of the time column, for an application that knows the robot's clock. Without
    /// one it is the number with three decimals.
    void setTimeFormatter(std::function<QString(double)> formatter);
    /// The clock of the ages: milliseconds that never go back. A monotonic clock of the system at first.
    void setClock(std::function<qint64()> clock);

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;
    /// Removes the keys from the displayed key set.
    bool removeRows(int row, int count, const QModelIndex& parent = QModelIndex()) override;
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    Qt::DropActions supportedDragActions() const override;
    Qt::DropActions supportedDropActions() const override;
    bool canDropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                         const QModelIndex& parent) const override;
    /// Adds keys that were dragged from a catalogue model to the displayed key set.
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

Q_SIGNALS:
    void displayedKeysChanged();
    /// count() changed.
    void countChanged();
    void updateIntervalChanged();
    void frozenChanged();
    /// The colour or the display flag of the key of this name changed, by a view or by a setter.
    void appearanceChanged(const QString& name);

private:
    // What is told to the views at the end of the interval. The higher bits take the lower ones in.
    enum Change
    {
        NoChange = 0,
        AgeChange = 1,
        ValueChange = 2,
        KeyChange = 4
    };
    struct Sample
    {
        QVariant value;
        double time = 0.0;
        qint64 receivedMs = 0;
        bool exists = false;
    };
    struct Row
    {
        MemoryKey key;
        int periodMs;
        QColor color;
        bool isShown;
        Sample newest;
        Sample shown;            // the newest, unless the table is frozen
        qint64 ageTextUnits = 0; // of the age text that the views have
        int changes = NoChange;
    };
    struct Appearance
    {
        QColor color;          // invalid until the key gets one
        bool isChosen = false; // by the application, and not one of the distinct colours by turn
        bool isShown = true;
    };

    void onKeysAdded(const QSet<DisplayedMemoryKey>& keys);
    void onKeysRemoved(const QSet<DisplayedMemoryKey>& keys);
    void onKeysUpdated(const QSet<DisplayedMemoryKey>& keys);
    void onDied();
    void synchronise();
    void reset();
    void appendKeys(QSet<DisplayedMemoryKey> keys);
    void removeKeys(const QSet<QString>& names, bool isForgotten);
    bool takeNewest(Row& row, const DisplayedMemoryKey& displayed);
    void updateRow(Row& row, const DisplayedMemoryKey& displayed);
    void markAges();
    void scheduleUpdate();
    void emitChanges(int first, int last, int changes);
    void forgetUnchosenColor(const QString& name);
    qint64 ageMs(const Row& row) const;
    QVariant displayText(const Row& row, int column) const;
    QVariant roleData(const Row& row, int role) const;
    QVariant sortData(const Row& row, int column) const;
    QString accessibleText(const Row& row, int column) const;
    QString timeText(double time) const;

    QPointer<DisplayedMemoryKeyListModel> m_displayedKeys;
    std::vector<Row> m_rows;
    mutable QHash<QString, int> m_rowByName;
    mutable bool m_isIndexed = true;          // whether m_rowByName tells the truth
    QHash<QString, Appearance> m_appearances; // of displayed keys, and of any other that one was set for
    QTimer m_updateTimer;
    QTimer m_ageTimer;
    bool m_isFrozen = false;
    std::function<QString(double)> m_timeFormatter;
    std::function<qint64()> m_clock;
};

} // namespace Velk

#endif
