// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/watch_model.h>

#include "key_mime_data.h"
#include "watch_appearances.h"
#include "watch_cells.h"
#include "watch_rows.h"
#include "watch_timers.h"

#include <session/rebuilt_keys.h>

#include <QMimeData>

#include <vector>

namespace Velk {

WatchModel::WatchModel(DisplayedMemoryKeyListModel* displayedKeys, QObject* parent)
    : QAbstractTableModel(parent)
    , m_rows(std::make_unique<WatchRows>())
    , m_appearances(std::make_unique<WatchAppearances>())
    , m_cells(std::make_unique<WatchCells>())
    , m_timers(std::make_unique<WatchTimers>())
{
    connect(m_timers.get(), &WatchTimers::updateDue, this, &WatchModel::flush);
    connect(m_timers.get(), &WatchTimers::agesDue, this, [this] {
        m_rows->noteAges(m_cells->nowMs());
        m_timers->scheduleUpdate();
    });
    setDisplayedKeys(displayedKeys);
}

WatchModel::~WatchModel() = default;

void WatchModel::setDisplayedKeys(DisplayedMemoryKeyListModel* displayedKeys)
{
    if (m_displayedKeys == displayedKeys)
        return;
    if (m_displayedKeys)
        m_displayedKeys->disconnect(this);
    reset();
    m_displayedKeys = displayedKeys;
    if (m_displayedKeys) {
        connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysAdded, this, &WatchModel::appendKeys);
        connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysRemoved, this, &WatchModel::onKeysRemoved);
        connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysUpdated, this, &WatchModel::onKeysUpdated);
        connect(m_displayedKeys, &QObject::destroyed, this, &WatchModel::onDestroyed);
        synchronise();
    }
    emit displayedKeysChanged();
}

int WatchModel::count() const
{
    return m_rows->count();
}

const MemoryKey& WatchModel::key(int row) const
{
    return m_rows->at(row).key;
}

int WatchModel::row(const QString& name) const
{
    return m_rows->indexOf(name);
}

QSet<MemoryKey> WatchModel::keys(const QModelIndexList& indexes) const
{
    QSet<MemoryKey> keys;
    for (const QModelIndex& index : indexes) {
        if (checkIndex(index, CheckIndexOption::IndexIsValid))
            keys.insert(key(index.row()));
    }
    return keys;
}

// Following the displayed keys

void WatchModel::onKeysRemoved(const QSet<DisplayedMemoryKey>& keys)
{
    QSet<QString> names;
    for (const DisplayedMemoryKey& displayed : keys)
        names.insert(displayed.key().name());
    removeKeys(names, true);
}

void WatchModel::onKeysUpdated(const QSet<DisplayedMemoryKey>& keys)
{
    if (!m_displayedKeys)
        return;
    const qint64 nowMs = m_cells->nowMs();
    bool hasValues = false;
    for (const DisplayedMemoryKey& displayed : keys) {
        const int row = m_rows->indexOf(displayed.key().name());
        if (row >= 0 && m_rows->update(row, displayed, nowMs))
            hasValues = true;
    }
    if (hasValues)
        m_timers->startAging();
    if (isRebuilt(keys, *m_displayedKeys, count()))
        synchronise();
    if (!keys.isEmpty())
        m_timers->scheduleUpdate();
}

void WatchModel::onDestroyed()
{
    reset();
    emit displayedKeysChanged();
}

void WatchModel::reset()
{
    m_timers->stopUpdate();
    m_timers->stopAging();
    if (m_rows->isEmpty())
        return;
    beginResetModel();
    m_rows->clear();
    endResetModel();
    emit countChanged();
}

void WatchModel::synchronise()
{
    const QSet<DisplayedMemoryKey> displayedKeys = m_displayedKeys->displayedKeys();
    QSet<QString> lostNames;
    for (int row = 0; row < count(); ++row)
        lostNames.insert(key(row).name());
    for (const DisplayedMemoryKey& displayed : displayedKeys)
        lostNames.remove(displayed.key().name());
    // The user did not remove these keys: they keep their colours, for the application may display them again.
    removeKeys(lostNames, false);
    appendKeys(displayedKeys);
}

void WatchModel::appendKeys(QSet<DisplayedMemoryKey> keys)
{
    const std::vector<const DisplayedMemoryKey*> added = m_rows->missing(keys);
    if (added.empty())
        return;
    const qint64 nowMs = m_cells->nowMs();
    WatchAppearances::ColorUses uses;
    for (int row = 0; row < count(); ++row)
        uses.add(m_rows->at(row).color);
    bool hasValues = false;
    beginInsertRows(QModelIndex(), count(), count() + int(added.size()) - 1);
    m_rows->reserve(count() + int(added.size()));
    for (const DisplayedMemoryKey* const displayed : added) {
        const QString name = displayed->key().name();
        const QColor color = m_appearances->assignColor(name, uses);
        if (m_rows->append(*displayed, color, m_appearances->isShown(name), nowMs))
            hasValues = true;
    }
    endInsertRows();
    if (hasValues)
        m_timers->startAging();
    emit countChanged();
}

void WatchModel::removeKeys(const QSet<QString>& names, bool isReleased)
{
    const std::vector<WatchRows::Range> ranges = m_rows->rangesOf(names);
    if (isReleased) {
        for (const QString& name : names)
            m_appearances->release(name);
    }
    if (ranges.empty())
        return;
    // From the end: the rows before a range keep their numbers.
    for (auto range = ranges.crbegin(); range != ranges.crend(); ++range) {
        beginRemoveRows(QModelIndex(), range->first, range->last);
        m_rows->remove(*range);
        endRemoveRows();
    }
    if (m_rows->isEmpty())
        m_timers->stopAging();
    emit countChanged();
}

// Reporting to the views

void WatchModel::flush()
{
    m_timers->stopUpdate();
    m_rows->noteAges(m_cells->nowMs());
    // A slot may add and remove rows: each run is looked for after the one before was reported.
    for (auto run = m_rows->takeRun(0); run; run = m_rows->takeRun(run->rows.last + 1)) {
        const WatchCells::Range cells = WatchCells::changedBy(run->change);
        emit dataChanged(index(run->rows.first, cells.firstColumn), index(run->rows.last, cells.lastColumn),
                         cells.roles);
    }
}

int WatchModel::updateInterval() const
{
    return m_timers->updateInterval();
}

void WatchModel::setUpdateInterval(int intervalMs)
{
    if (m_timers->setUpdateInterval(intervalMs))
        emit updateIntervalChanged();
}

bool WatchModel::isFrozen() const
{
    return m_rows->isFrozen();
}

void WatchModel::setFrozen(bool isFrozen)
{
    if (this->isFrozen() == isFrozen)
        return;
    m_rows->setFrozen(isFrozen);
    if (!isFrozen)
        m_timers->scheduleUpdate();
    emit frozenChanged();
}

void WatchModel::setTimeFormatter(std::function<QString(double)> formatter)
{
    m_cells->setTimeFormatter(std::move(formatter));
    if (count() > 0)
        emit dataChanged(index(0, TimeColumn), index(count() - 1, TimeColumn));
}

void WatchModel::setClock(std::function<qint64()> clock)
{
    m_cells->setClock(std::move(clock));
}

// Appearance

QColor WatchModel::color(const QString& name) const
{
    return m_appearances->color(name);
}

void WatchModel::setColor(const QString& name, const QColor& color)
{
    const int row = this->row(name);
    if (!m_appearances->setColor(name, color, row >= 0))
        return;
    if (row >= 0) {
        m_rows->setColor(row, color);
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    }
    emit appearanceChanged(name);
}

bool WatchModel::isShown(const QString& name) const
{
    return m_appearances->isShown(name);
}

void WatchModel::setShown(const QString& name, bool isShown)
{
    const int row = this->row(name);
    if (!m_appearances->setShown(name, isShown, row >= 0))
        return;
    if (row >= 0) {
        m_rows->setShown(row, isShown);
        emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    }
    emit appearanceChanged(name);
}

// Item model

int WatchModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : m_rows->count();
}

int WatchModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant WatchModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    return m_cells->data(m_rows->at(index.row()), index.column(), role);
}

bool WatchModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return false;
    const QString name = key(index.row()).name();
    if (role == ShownRole) {
        setShown(name, value.toBool());
        return true;
    }
    if (role == Qt::CheckStateRole && index.column() == ShownColumn) {
        setShown(name, value.toInt() == Qt::Checked);
        return true;
    }
    if (role == ColorRole || (role == Qt::EditRole && index.column() == ColorColumn)) {
        const QColor color = value.value<QColor>();
        if (!color.isValid())
            return false;
        setColor(name, color);
        return true;
    }
    return false;
}

Qt::ItemFlags WatchModel::flags(const QModelIndex& index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid())
        return flags | Qt::ItemIsDropEnabled;
    return flags | WatchCells::flags(index.column());
}

QVariant WatchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    return WatchCells::header(section, role);
}

QHash<int, QByteArray> WatchModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractTableModel::roleNames();
    names.insert(WatchCells::roleNames());
    return names;
}

bool WatchModel::removeRows(int row, int count, const QModelIndex& parent)
{
    if (!m_displayedKeys || parent.isValid() || row < 0 || count < 1 || row + count > this->count())
        return false;
    QSet<MemoryKey> keys;
    for (int i = row; i < row + count; ++i)
        keys.insert(key(i));
    m_displayedKeys->removeKeys(keys);
    return true;
}

QStringList WatchModel::mimeTypes() const
{
    return {keyMimeType(), QStringLiteral("text/plain")};
}

QMimeData* WatchModel::mimeData(const QModelIndexList& indexes) const
{
    return indexes.isEmpty() ? nullptr : mimeDataOfKeys(keys(indexes));
}

Qt::DropActions WatchModel::supportedDragActions() const
{
    return Qt::CopyAction;
}

Qt::DropActions WatchModel::supportedDropActions() const
{
    return Qt::CopyAction;
}

bool WatchModel::canDropMimeData(const QMimeData* data, Qt::DropAction action, int, int, const QModelIndex&) const
{
    return m_displayedKeys && data && action == Qt::CopyAction && data->hasFormat(keyMimeType());
}

bool WatchModel::dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                              const QModelIndex& parent)
{
    if (action == Qt::IgnoreAction)
        return true;
    if (!canDropMimeData(data, action, row, column, parent))
        return false;
    const QSet<MemoryKey> keys = keysOfMimeData(data);
    if (keys.isEmpty())
        return false;
    m_displayedKeys->addKeys(keys);
    return true;
}

} // namespace Velk
