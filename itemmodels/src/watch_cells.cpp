// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "watch_cells.h"

#include "age_text.h"
#include "tool_tip.h"
#include "watch_rows.h"

#include <itemmodels/distinct_colors.h>
#include <itemmodels/value_text.h>
#include <itemmodels/watch_model.h>

#include <QElapsedTimer>
#include <QLocale>

#include <algorithm>

namespace Velk {

namespace {

std::function<qint64()> monotonicClock()
{
    QElapsedTimer timer;
    timer.start();
    return [timer] { return timer.elapsed(); };
}

} // namespace

WatchCells::WatchCells()
    : m_clock(monotonicClock())
{}

qint64 WatchCells::ageMs(const WatchRow& row) const
{
    return std::max<qint64>(0, m_clock() - row.shown.receivedMs);
}

QString WatchCells::timeText(double time) const
{
    return m_timeFormatter ? m_timeFormatter(time) : QLocale().toString(time, 'f', 3);
}

QVariant WatchCells::displayText(const WatchRow& row, int column) const
{
    switch (column) {
    case WatchModel::NameColumn:
        return row.key.name();
    case WatchModel::DescriptionColumn:
        return row.key.description();
    case WatchModel::NatureColumn:
        return row.key.natureToString();
    case WatchModel::ValueColumn:
        return ValueText::brief(row.shown.value);
    case WatchModel::TimeColumn:
        return row.shown.exists ? timeText(row.shown.time) : QString();
    case WatchModel::AgeColumn:
        return row.shown.exists ? ageText(ageMs(row)) : QString();
    case WatchModel::PeriodColumn:
        return WatchModel::tr("%1 ms").arg(row.periodMs);
    }
    return {};
}

QString WatchCells::accessibleText(const WatchRow& row, int column) const
{
    switch (column) {
    case WatchModel::ShownColumn:
        return row.isShown ? WatchModel::tr("shown") : WatchModel::tr("hidden");
    case WatchModel::ColorColumn:
        return DistinctColors::nameOf(row.color);
    case WatchModel::ValueColumn:
        return row.shown.exists ? ValueText::brief(row.shown.value) : WatchModel::tr("no value yet");
    default:
        return displayText(row, column).toString();
    }
}

QString WatchCells::toolTip(const WatchRow& row, int column) const
{
    switch (column) {
    case WatchModel::ValueColumn:
        return plainToolTip(ValueText::full(row.shown.value));
    case WatchModel::ColorColumn:
        return DistinctColors::nameOf(row.color);
    default:
        return keyToolTip(row.key);
    }
}

QVariant WatchCells::roleData(const WatchRow& row, int role) const
{
    switch (role) {
    case WatchModel::ShownRole:
        return row.isShown;
    case WatchModel::ColorRole:
        return row.color;
    case WatchModel::NameRole:
        return row.key.name();
    case WatchModel::DescriptionRole:
        return row.key.description();
    case WatchModel::NatureRole:
        return int(row.key.nature());
    case WatchModel::NatureTextRole:
        return row.key.natureToString();
    case WatchModel::ValueRole:
        return row.shown.value;
    case WatchModel::ValueTextRole:
        return displayText(row, WatchModel::ValueColumn);
    case WatchModel::TimeRole:
        return row.shown.exists ? QVariant(row.shown.time) : QVariant();
    case WatchModel::TimeTextRole:
        return displayText(row, WatchModel::TimeColumn);
    case WatchModel::AgeRole:
        return row.shown.exists ? QVariant(ageMs(row)) : QVariant();
    case WatchModel::AgeTextRole:
        return displayText(row, WatchModel::AgeColumn);
    case WatchModel::PeriodRole:
        return row.periodMs;
    }
    return {};
}

QVariant WatchCells::sortData(const WatchRow& row, int column) const
{
    switch (column) {
    case WatchModel::ShownColumn:
        return row.isShown;
    case WatchModel::ColorColumn:
        return row.color.hsvHue();
    case WatchModel::ValueColumn:
        return row.shown.value;
    case WatchModel::TimeColumn:
        return roleData(row, WatchModel::TimeRole);
    case WatchModel::AgeColumn:
        return roleData(row, WatchModel::AgeRole);
    case WatchModel::PeriodColumn:
        return row.periodMs;
    default:
        return displayText(row, column);
    }
}

QVariant WatchCells::data(const WatchRow& row, int column, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
        return displayText(row, column);
    case Qt::EditRole:
        return column == WatchModel::ColorColumn ? QVariant(row.color) : displayText(row, column);
    case Qt::CheckStateRole:
        if (column == WatchModel::ShownColumn)
            return row.isShown ? Qt::Checked : Qt::Unchecked;
        return {};
    case Qt::DecorationRole:
        return column == WatchModel::ColorColumn ? QVariant(row.color) : QVariant();
    case Qt::TextAlignmentRole: {
        const bool isNumber = column >= WatchModel::TimeColumn ||
                              (column == WatchModel::ValueColumn && ValueText::isNumber(row.shown.value));
        return int(Qt::AlignVCenter | (isNumber ? Qt::AlignRight : Qt::AlignLeft));
    }
    case Qt::ToolTipRole:
        return toolTip(row, column);
    case Qt::AccessibleTextRole:
        return accessibleText(row, column);
    case Qt::AccessibleDescriptionRole:
        return WatchModel::tr("%1 of %2").arg(header(column, Qt::AccessibleTextRole).toString(), row.key.name());
    case WatchModel::SortRole:
        return sortData(row, column);
    }
    return roleData(row, role);
}

QVariant WatchCells::header(int column, int role)
{
    if (role == Qt::TextAlignmentRole)
        return int(Qt::AlignVCenter | (column >= WatchModel::ValueColumn ? Qt::AlignRight : Qt::AlignLeft));
    const bool isText = role == Qt::DisplayRole || role == Qt::AccessibleTextRole;
    if (!isText && role != Qt::ToolTipRole && role != Qt::AccessibleDescriptionRole)
        return {};
    switch (column) {
    case WatchModel::ShownColumn:
        return isText ? WatchModel::tr("Shown") : WatchModel::tr("Whether the key is drawn");
    case WatchModel::ColorColumn:
        return isText ? WatchModel::tr("Color") : WatchModel::tr("The color in which the key is drawn");
    case WatchModel::NameColumn:
        return isText ? WatchModel::tr("Name") : WatchModel::tr("The key's name in the robot's memory");
    case WatchModel::DescriptionColumn:
        return isText ? WatchModel::tr("Description") : WatchModel::tr("What is known about the key");
    case WatchModel::NatureColumn:
        return isText ? WatchModel::tr("Nature")
                      : WatchModel::tr("Whether the robot lists the key as data, as an event, or not at all");
    case WatchModel::ValueColumn:
        return isText ? WatchModel::tr("Value") : WatchModel::tr("The newest value that was received");
    case WatchModel::TimeColumn:
        return isText ? WatchModel::tr("Time") : WatchModel::tr("When the robot took the value, by its own clock");
    case WatchModel::AgeColumn:
        return isText ? WatchModel::tr("Age") : WatchModel::tr("How long ago the value was received");
    default:
        return isText ? WatchModel::tr("Period")
                      : WatchModel::tr("The time between two samples when the key is sampled at its own period");
    }
}

Qt::ItemFlags WatchCells::flags(int column)
{
    Qt::ItemFlags flags = Qt::ItemNeverHasChildren | Qt::ItemIsDragEnabled | Qt::ItemIsDropEnabled;
    if (column == WatchModel::ShownColumn)
        flags |= Qt::ItemIsUserCheckable;
    if (column == WatchModel::ColorColumn)
        flags |= Qt::ItemIsEditable;
    return flags;
}

WatchCells::Range WatchCells::changedBy(WatchChange change)
{
    static const QVector<int> ageRoles{Qt::DisplayRole,         Qt::EditRole,
                                       Qt::AccessibleTextRole,  WatchModel::AgeRole,
                                       WatchModel::AgeTextRole, WatchModel::SortRole};
    static const QVector<int> valueRoles{
        Qt::DisplayRole,          Qt::EditRole,          Qt::ToolTipRole,           Qt::AccessibleTextRole,
        Qt::TextAlignmentRole,    WatchModel::ValueRole, WatchModel::ValueTextRole, WatchModel::TimeRole,
        WatchModel::TimeTextRole, WatchModel::AgeRole,   WatchModel::AgeTextRole,   WatchModel::SortRole};
    switch (change) {
    case WatchChange::Age:
        return {WatchModel::AgeColumn, WatchModel::AgeColumn, ageRoles};
    case WatchChange::Value:
        return {WatchModel::ValueColumn, WatchModel::AgeColumn, valueRoles};
    default:
        return {0, WatchModel::ColumnCount - 1, {}};
    }
}

QHash<int, QByteArray> WatchCells::roleNames()
{
    return {{WatchModel::ShownRole, "shown"},   {WatchModel::ColorRole, "keyColor"},
            {WatchModel::NameRole, "name"},     {WatchModel::DescriptionRole, "description"},
            {WatchModel::NatureRole, "nature"}, {WatchModel::NatureTextRole, "natureText"},
            {WatchModel::ValueRole, "value"},   {WatchModel::ValueTextRole, "valueText"},
            {WatchModel::TimeRole, "time"},     {WatchModel::TimeTextRole, "timeText"},
            {WatchModel::AgeRole, "age"},       {WatchModel::AgeTextRole, "ageText"},
            {WatchModel::PeriodRole, "period"}, {WatchModel::SortRole, "sortValue"},
            {Qt::CheckStateRole, "checkState"}, {Qt::TextAlignmentRole, "textAlignment"}};
}

} // namespace Velk
