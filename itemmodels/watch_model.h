// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_WATCH_MODEL_H
#define ITEMMODELS_WATCH_MODEL_H

#include <itemmodels/itemmodels_export.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key.h>

#include <QAbstractTableModel>
#include <QColor>
#include <QPointer>
#include <QSet>
#include <QString>

#include <functional>
#include <memory>

namespace Velk {

class WatchAppearances;
class WatchCells;
class WatchRows;
class WatchTimers;

/// The displayed key set as a table: one row per key, in the order in which the keys were added, with its colour, its
/// display flag and the newest value that was received.
///
/// Values are taken in as they come and reported to the views together, once per updateInterval(): one dataChanged()
/// for each run of neighbouring rows that got a value.
///
/// The colour and the display flag of a key are kept here, by name: the displayed key set resets its own copies when
/// a connection comes up. Here they stay across connections, also of another displayed key set. A key without a chosen
/// colour gets the least used one of the DistinctColors. A lost connection leaves the newest value shown, with its age,
/// until the next value comes or the key is removed.
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

    /// Every column of a row has all of them with the same content, except SortRole. In QML: shown, keyColor, name,
    /// description, nature, natureText, value, valueText, time, timeText, age, ageText, period, sortValue.
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
        SortRole                      ///< the content by which WatchSortModel sorts the column
    };
    Q_ENUM(Role)

    /// `displayedKeys` is not owned, may be null, and may be deleted at any time, which leaves the model empty.
    explicit WatchModel(DisplayedMemoryKeyListModel* displayedKeys = nullptr, QObject* parent = nullptr);
    ~WatchModel() override;

    DisplayedMemoryKeyListModel* displayedKeys() const { return m_displayedKeys; }
    /// Shows another set, such as the one of another robot. Colours and flags stay, by name; values do not.
    void setDisplayedKeys(DisplayedMemoryKeyListModel* displayedKeys);

    int count() const;
    /// `row` is a row of this model.
    const MemoryKey& key(int row) const;
    /// The row of the key of this name; -1 when it is not displayed.
    Q_INVOKABLE int row(const QString& name) const;
    /// The keys of the rows that the indexes, of this model, are in.
    QSet<MemoryKey> keys(const QModelIndexList& indexes) const;

    /// The colour of the key of this name, displayed or not; invalid for a key that has none yet.
    QColor color(const QString& name) const;
    /// Chooses the colour of a key, displayed or not: an application that remembers colours sets them when it starts.
    /// An invalid colour ends the choice: a displayed key keeps its colour until it is removed, any other key loses it.
    void setColor(const QString& name, const QColor& color);
    /// The display flag of the key of this name, displayed or not. True unless set to false.
    bool isShown(const QString& name) const;
    void setShown(const QString& name, bool isShown);

    /// Milliseconds, at least, between two rounds of dataChanged() for new values; at first that of a refresh of the
    /// primary screen, 16 without a screen. Values less than 0 count as 0: the next turn of the event loop.
    int updateInterval() const;
    void setUpdateInterval(int intervalMs);
    /// A frozen table takes values in but shows those that it had when it was frozen. Keys are still added and removed.
    /// False at first.
    bool isFrozen() const;
    void setFrozen(bool isFrozen);
    /// Reports all changes to the views at once, ages included, without waiting for the end of the interval.
    void flush();

    /// Makes the text of the time column from a time stamp, for an application that knows the robot's clock. Without a
    /// formatter the text is the number with three decimals.
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
    /// color() or isShown() of this name changed, by a view or by a setter, also for a key that is not displayed. Not
    /// emitted for the colour that a key gets when it is displayed.
    void appearanceChanged(const QString& name);

private:
    void onKeysRemoved(const QSet<DisplayedMemoryKey>& keys);
    void onKeysUpdated(const QSet<DisplayedMemoryKey>& keys);
    void onDestroyed();
    void synchronise();
    void reset();
    void appendKeys(QSet<DisplayedMemoryKey> keys);
    void removeKeys(const QSet<QString>& names, bool isReleased);

    QPointer<DisplayedMemoryKeyListModel> m_displayedKeys;
    std::unique_ptr<WatchRows> m_rows;
    std::unique_ptr<WatchAppearances> m_appearances;
    std::unique_ptr<WatchCells> m_cells;
    std::unique_ptr<WatchTimers> m_timers;
};

} // namespace Velk

#endif
