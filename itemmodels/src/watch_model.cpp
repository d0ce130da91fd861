#include <itemmodels/watch_model.h>

#include "key_mime_data.h"

#include <itemmodels/distinct_colors.h>
#include <itemmodels/value_text.h>

#include <keynames/name_path.h>

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QLocale>
#include <QMimeData>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

constexpr int defaultUpdateIntervalMs = 16;
constexpr int ageIntervalMs = 1000;

int screenRefreshIntervalMs()
{
    const auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const QScreen* const screen = application ? QGuiApplication::primaryScreen() : nullptr;
    const double rate = screen ? screen->refreshRate() : 0.0;
    return rate >= 1.0 ? std::max(1, int(std::lround(1000.0 / rate))) : defaultUpdateIntervalMs;
}

std::function<qint64()> monotonicClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

// An age is told in these units, and its text changes when their count does.
qint64 ageUnits(qint64 ageMs)
{
    const qint64 seconds = ageMs / 1000;
    return seconds < 60 ? seconds : seconds / 60 * 60;
}

QString ageText(qint64 ageMs)
{
    const qint64 seconds = ageMs / 1000;
    if (seconds < 1)
        return WatchModel::tr("< 1 s");
    if (seconds < 60)
        return WatchModel::tr("%1 s").arg(seconds);
    if (seconds < 3600)
        return WatchModel::tr("%1 min").arg(seconds / 60);
    return WatchModel::tr("%1 h %2 min").arg(seconds / 3600).arg(seconds / 60 % 60);
}

} // namespace

WatchModel::WatchModel(DisplayedMemoryKeyListModel* displayedKeys, QObject* parent)
    : QAbstractTableModel(parent)
    , m_clock(monotonicClock())
{
    m_updateTimer.setSingleShot(true);
    m_updateTimer.setTimerType(Qt::PreciseTimer);
    m_updateTimer.setInterval(screenRefreshIntervalMs());
    connect(&m_updateTimer, &QTimer::timeout, this, &WatchModel::flush);
    m_ageTimer.setInterval(ageIntervalMs);
    connect(&m_ageTimer, &QTimer::timeout, this, [this] {
        markAges();
        scheduleUpdate();
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
        connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysAdded, this, &WatchModel::onKeysAdded);
        connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysRemoved, this, &WatchModel::onKeysRemoved);
        connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysUpdated, this, &WatchModel::onKeysUpdated);
        connect(m_displayedKeys, &QObject::destroyed, this, &WatchModel::onDied);
        synchronise();
    }
    emit displayedKeysChanged();
}

int WatchModel::row(const QString& name) const
{
    if (!m_isIndexed) {
        m_rowByName.clear();
        m_rowByName.reserve(count());
        for (int row = 0; row < count(); ++row)
            m_rowByName.insert(key(row).name(), row);
        m_isIndexed = true;
    }
    return m_rowByName.value(name, -1);
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

void WatchModel::onKeysAdded(const QSet<DisplayedMemoryKey>& keys)
{
    appendKeys(keys);
}

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
    // After a connection the set is rebuilt and may have gained and lost keys, of which no other signal tells. It
    // names all keys then, so a change shows in the count or in a name.
    bool isChanged = m_displayedKeys->displayedKeys().size() != count();
    for (const DisplayedMemoryKey& displayed : keys) {
        const int row = this->row(displayed.key().name());
        if (row < 0)
            isChanged = true;
        else
            updateRow(m_rows[size_t(row)], displayed);
    }
    if (isChanged)
        synchronise();
    if (!keys.isEmpty())
        scheduleUpdate();
}

void WatchModel::onDied()
{
    reset();
    emit displayedKeysChanged();
}

void WatchModel::reset()
{
    m_updateTimer.stop();
    m_ageTimer.stop();
    if (m_rows.empty())
        return;
    beginResetModel();
    m_rows.clear();
    m_isIndexed = false;
    endResetModel();
    emit countChanged();
}

void WatchModel::synchronise()
{
    const QSet<DisplayedMemoryKey> displayedKeys = m_displayedKeys->displayedKeys();
    QSet<QString> lostNames;
    for (const Row& row : m_rows)
        lostNames.insert(row.key.name());
    for (const DisplayedMemoryKey& displayed : displayedKeys)
        lostNames.remove(displayed.key().name());
    // Not by the user's wish: what they look like is remembered, for the application may display them again.
    removeKeys(lostNames, false);
    appendKeys(displayedKeys);
}

void WatchModel::appendKeys(QSet<DisplayedMemoryKey> keys)
{
    std::vector<const DisplayedMemoryKey*> added;
    for (const DisplayedMemoryKey& displayed : qAsConst(keys)) {
        if (row(displayed.key().name()) < 0)
            added.push_back(&displayed);
    }
    if (added.empty())
        return;
    std::sort(added.begin(), added.end(), [](const DisplayedMemoryKey* a, const DisplayedMemoryKey* b) {
        return comparePaths(a->key().name(), b->key().name()) < 0;
    });

    // Colours are counted once for all added keys.
    std::vector<int> uses(size_t(DistinctColors::count()));
    for (const Row& row : m_rows) {
        const int color = DistinctColors::indexOf(row.color);
        if (color >= 0)
            ++uses[size_t(color)];
    }
    beginInsertRows(QModelIndex(), count(), count() + int(added.size()) - 1);
    m_rows.reserve(m_rows.size() + added.size());
    for (const DisplayedMemoryKey* const displayed : added) {
        Appearance& appearance = m_appearances[displayed->key().name()];
        QColor color = appearance.color;
        if (!color.isValid()) {
            color = DistinctColors::at(int(std::min_element(uses.begin(), uses.end()) - uses.begin()));
            appearance.color = color;
            appearance.isChosen = false;
        }
        const int colorIndex = DistinctColors::indexOf(color);
        if (colorIndex >= 0)
            ++uses[size_t(colorIndex)];
        m_rowByName.insert(displayed->key().name(), count());
        m_rows.push_back({displayed->key(), displayed->watchPeriod(), color, appearance.isShown, {}, {}, 0, NoChange});
        takeNewest(m_rows.back(), *displayed);
        m_rows.back().shown = m_rows.back().newest;
    }
    endInsertRows();
    emit countChanged();
}

void WatchModel::removeKeys(const QSet<QString>& names, bool isForgotten)
{
    std::vector<int> rows;
    for (const QString& name : names) {
        const int row = this->row(name);
        if (row >= 0)
            rows.push_back(row);
        if (isForgotten)
            forgetUnchosenColor(name);
    }
    if (rows.empty())
        return;
    std::sort(rows.begin(), rows.end());

    // From the end, run by run: the rows before keep their numbers.
    for (size_t end = rows.size(); end > 0;) {
        size_t begin = end - 1;
        while (begin > 0 && rows[begin - 1] == rows[begin] - 1)
            --begin;
        const int first = rows[begin];
        const int last = rows[end - 1];
        beginRemoveRows(QModelIndex(), first, last);
        m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
        m_isIndexed = false; // made again when it is asked for, and not for every run
        endRemoveRows();
        end = begin;
    }
    if (m_rows.empty())
        m_ageTimer.stop();
    emit countChanged();
}

void WatchModel::forgetUnchosenColor(const QString& name)
{
    const auto appearance = m_appearances.find(name);
    if (appearance == m_appearances.end() || appearance->isChosen)
        return;
    appearance->color = QColor();
    if (appearance->isShown)
        m_appearances.erase(appearance);
}

// Values

bool WatchModel::takeNewest(Row& row, const DisplayedMemoryKey& displayed)
{
    const QMap<double, QVariant> history = displayed.valueHistory();
    if (history.isEmpty())
        return false;
    row.newest = {history.last(), history.lastKey(), m_clock(), true};
    if (!m_isFrozen)
        row.shown = row.newest;
    if (!m_ageTimer.isActive())
        m_ageTimer.start();
    return true;
}

void WatchModel::updateRow(Row& row, const DisplayedMemoryKey& displayed)
{
    const MemoryKey& key = displayed.key();
    if (row.key.nature() != key.nature() || row.key.description() != key.description() ||
        row.periodMs != displayed.watchPeriod()) {
        row.key = key;
        row.periodMs = displayed.watchPeriod();
        row.changes |= KeyChange;
    }
    if (takeNewest(row, displayed) && !m_isFrozen)
        row.changes |= ValueChange;
}

qint64 WatchModel::ageMs(const Row& row) const
{
    return std::max<qint64>(0, m_clock() - row.shown.receivedMs);
}

void WatchModel::markAges()
{
    const qint64 now = m_clock();
    for (Row& row : m_rows) {
        if (!row.shown.exists)
            continue;
        const qint64 units = ageUnits(std::max<qint64>(0, now - row.shown.receivedMs));
        if (row.ageTextUnits != units) {
            row.ageTextUnits = units;
            row.changes |= AgeChange;
        }
    }
}

void WatchModel::scheduleUpdate()
{
    // Not restarted by the next batch: the views are told at the end of the interval that the first one began.
    if (!m_updateTimer.isActive())
        m_updateTimer.start();
}

void WatchModel::flush()
{
    m_updateTimer.stop();
    markAges();
    const auto columnsOf = [](int changes) {
        return changes >= KeyChange ? KeyChange : changes >= ValueChange ? ValueChange : changes;
    };
    // A slot may add and remove rows: what is found changed is taken back first, and the end is asked afresh.
    for (int first = 0; first < count(); ++first) {
        const int changes = columnsOf(m_rows[size_t(first)].changes);
        if (changes == NoChange)
            continue;
        int last = first;
        while (last + 1 < count() && columnsOf(m_rows[size_t(last) + 1].changes) == changes)
            ++last;
        for (int row = first; row <= last; ++row)
            m_rows[size_t(row)].changes = NoChange;
        emitChanges(first, last, changes);
        first = last;
    }
}

void WatchModel::emitChanges(int first, int last, int changes)
{
    static const QVector<int> ageRoles{Qt::DisplayRole, Qt::EditRole, Qt::AccessibleTextRole,
                                       AgeRole,         AgeTextRole,  SortRole};
    static const QVector<int> valueRoles{Qt::DisplayRole,       Qt::EditRole, Qt::ToolTipRole, Qt::AccessibleTextRole,
                                         Qt::TextAlignmentRole, ValueRole,    ValueTextRole,   TimeRole,
                                         TimeTextRole,          AgeRole,      AgeTextRole,     SortRole};
    switch (changes) {
    case AgeChange:
        emit dataChanged(index(first, AgeColumn), index(last, AgeColumn), ageRoles);
        break;
    case ValueChange:
        emit dataChanged(index(first, ValueColumn), index(last, AgeColumn), valueRoles);
        break;
    default:
        emit dataChanged(index(first, 0), index(last, ColumnCount - 1));
    }
}

void WatchModel::setUpdateInterval(int intervalMs)
{
    intervalMs = std::max(intervalMs, 0);
    if (updateInterval() == intervalMs)
        return;
    m_updateTimer.setInterval(intervalMs);
    emit updateIntervalChanged();
}

void WatchModel::setFrozen(bool isFrozen)
{
    if (m_isFrozen == isFrozen)
        return;
    m_isFrozen = isFrozen;
    if (!isFrozen) {
        for (Row& row : m_rows) {
            const bool isTheSame = row.newest.receivedMs == row.shown.receivedMs && row.newest.time == row.shown.time;
            if (!row.newest.exists || (row.shown.exists && isTheSame))
                continue;
            row.shown = row.newest;
            row.changes |= ValueChange;
        }
        scheduleUpdate();
    }
    emit frozenChanged();
}

void WatchModel::setTimeFormatter(std::function<QString(double)> formatter)
{
    m_timeFormatter = std::move(formatter);
    if (!m_rows.empty())
        emit dataChanged(index(0, TimeColumn), index(count() - 1, TimeColumn));
}

void WatchModel::setClock(std::function<qint64()> clock)
{
    m_clock = std::move(clock);
}

// Appearance

QColor WatchModel::color(const QString& name) const
{
    return m_appearances.value(name).color;
}

void WatchModel::setColor(const QString& name, const QColor& color)
{
    Appearance& appearance = m_appearances[name];
    appearance.isChosen = color.isValid();
    if (appearance.isChosen)
        appearance.color = color;
    const int row = this->row(name);
    if (row < 0) {
        forgetUnchosenColor(name);
        return;
    }
    if (!color.isValid() || m_rows[size_t(row)].color == color)
        return;
    m_rows[size_t(row)].color = color;
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    emit appearanceChanged(name);
}

bool WatchModel::isShown(const QString& name) const
{
    return m_appearances.value(name).isShown;
}

void WatchModel::setShown(const QString& name, bool isShown)
{
    if (this->isShown(name) == isShown)
        return;
    m_appearances[name].isShown = isShown;
    const int row = this->row(name);
    if (row < 0) {
        forgetUnchosenColor(name);
        return;
    }
    m_rows[size_t(row)].isShown = isShown;
    emit dataChanged(index(row, 0), index(row, ColumnCount - 1));
    emit appearanceChanged(name);
}

// Item model

int WatchModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : count();
}

int WatchModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString WatchModel::timeText(double time) const
{
    return m_timeFormatter ? m_timeFormatter(time) : QLocale().toString(time, 'f', 3);
}

QVariant WatchModel::displayText(const Row& row, int column) const
{
    switch (column) {
    case NameColumn:
        return row.key.name();
    case DescriptionColumn:
        return row.key.description();
    case NatureColumn:
        return row.key.natureToString();
    case ValueColumn:
        return ValueText::brief(row.shown.value);
    case TimeColumn:
        return row.shown.exists ? timeText(row.shown.time) : QString();
    case AgeColumn:
        return row.shown.exists ? ageText(ageMs(row)) : QString();
    case PeriodColumn:
        return tr("%1 ms").arg(row.periodMs);
    }
    return {};
}

QString WatchModel::accessibleText(const Row& row, int column) const
{
    switch (column) {
    case ShownColumn:
        return row.isShown ? tr("shown") : tr("hidden");
    case ColorColumn:
        return DistinctColors::nameOf(row.color);
    case ValueColumn:
        return row.shown.exists ? ValueText::brief(row.shown.value) : tr("no value yet");
    default:
        return displayText(row, column).toString();
    }
}

QVariant WatchModel::roleData(const Row& row, int role) const
{
    switch (role) {
    case ShownRole:
        return row.isShown;
    case ColorRole:
        return row.color;
    case NameRole:
        return row.key.name();
    case DescriptionRole:
        return row.key.description();
    case NatureRole:
        return int(row.key.nature());
    case NatureTextRole:
        return row.key.natureToString();
    case ValueRole:
        return row.shown.value;
    case ValueTextRole:
        return displayText(row, ValueColumn);
    case TimeRole:
        return row.shown.exists ? QVariant(row.shown.time) : QVariant();
    case TimeTextRole:
        return displayText(row, TimeColumn);
    case AgeRole:
        return row.shown.exists ? QVariant(ageMs(row)) : QVariant();
    case AgeTextRole:
        return displayText(row, AgeColumn);
    case PeriodRole:
        return row.periodMs;
    }
    return {};
}

QVariant WatchModel::sortData(const Row& row, int column) const
{
    switch (column) {
    case ShownColumn:
        return row.isShown;
    case ColorColumn:
        return row.color.hsvHue();
    case ValueColumn:
        return row.shown.value;
    case TimeColumn:
        return roleData(row, TimeRole);
    case AgeColumn:
        return roleData(row, AgeRole);
    case PeriodColumn:
        return row.periodMs;
    default:
        return displayText(row, column);
    }
}

QVariant WatchModel::data(const QModelIndex& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    const Row& row = m_rows[size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return displayText(row, index.column());
    case Qt::EditRole:
        return index.column() == ColorColumn ? QVariant(row.color) : displayText(row, index.column());
    case Qt::CheckStateRole:
        if (index.column() == ShownColumn)
            return row.isShown ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::DecorationRole:
        return index.column() == ColorColumn ? QVariant(row.color) : QVariant();
    case Qt::TextAlignmentRole: {
        const bool isNumber =
            index.column() >= TimeColumn || (index.column() == ValueColumn && ValueText::isNumber(row.shown.value));
        return int(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    case Qt::ToolTipRole:
        if (index.column() == ValueColumn)
            return ValueText::full(row.shown.value);
        if (index.column() == ColorColumn)
            return DistinctColors::nameOf(row.color);
        return QStringList{row.key.name(), row.key.description(), row.key.natureToString()}.join(QLatin1Char('\n'));
    case Qt::AccessibleTextRole:
        return accessibleText(row, index.column());
    case Qt::AccessibleDescriptionRole:
        return tr("%1 of %2")
            .arg(headerData(index.column(), Qt::Horizontal, Qt::AccessibleTextRole).toString(), row.key.name());
    case SortRole:
        return sortData(row, index.column());
    }
    return roleData(row, role);
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
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (!index.isValid())
        return flags | Qt::ItemIsDropEnabled;
    flags |= Qt::ItemNeverHasChildren | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    if (index.column() == ShownColumn)
        flags |= Qt::ItemIsUserCheckable;
    if (index.column() == ColorColumn)
        flags |= Qt::ItemIsEditable;
    return flags;
}

QVariant WatchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount)
        return QAbstractTableModel::headerData(section, orientation, role);
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (section >= ValueColumn ? Qt::AlignRight : Qt::AlignLeft));
    const bool isText = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
    if (!isText && role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole)
        return {};
    switch (section) {
    case ShownColumn:
        return isText ? tr("Shown") : tr("Whether the key is drawn");
    case ColorColumn:
        return isText ? tr("Color") : tr("The color in which the key is drawn");
    case NameColumn:
        return isText ? tr("Name") : tr("The key's name in the robot's memory");
    case DescriptionColumn:
        return isText ? tr("Description") : tr("What is known about the key");
    case NatureColumn:
        return isText ? tr("Nature") : tr("Whether the robot lists the key as data, as an event, or not at all");
    case ValueColumn:
        return isText ? tr("Value") : tr("The newest value that was received");
    case TimeColumn:
        return isText ? tr("Time") : tr("When the robot took the value, by its own clock");
    case AgeColumn:
        return isText ? tr("Age") : tr("How long ago the value was received");
    default:
        return isText ? tr("Period") : tr("The time between two samples when the key is sampled at its own period");
    }
}

QHash<int, QByteArray> WatchModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractTableModel::roleNames();
    names.insert({{ShownRole, "shown"},
                  {ColorRole, "keyColor"},
                  {NameRole, "name"},
                  {DescriptionRole, "description"},
                  {NatureRole, "nature"},
                  {NatureTextRole, "natureText"},
                  {ValueRole, "value"},
                  {ValueTextRole, "valueText"},
                  {TimeRole, "time"},
                  {TimeTextRole, "timeText"},
                  {AgeRole, "age"},
                  {AgeTextRole, "ageText"},
                  {PeriodRole, "period"},
                  {SortRole, "sortValue"},
                  {Qt::CheckStateRole, "checkState"},
                  {Qt::TextAlignmentRole, "textAlignment"}});
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
