// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef ITEMMODELS_WATCH_CELLS_H
#define ITEMMODELS_WATCH_CELLS_H

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QVariant>
#include <QVector>

#include <functional>

namespace Velk {

enum class WatchChange;
struct WatchRow;

/// What the cells and the headers of a watch model contain, role by role. The columns and the roles are those of
/// WatchModel.
class WatchCells
{
public:
    /// The clock of the ages, in milliseconds: a monotonic clock of the system at first.
    WatchCells();
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }
    qint64 nowMs() const { return m_clock(); }

    /// Without a formatter a time stamp is the number with three decimals.
    void setTimeFormatter(std::function<QString(double)> formatter) { m_timeFormatter = std::move(formatter); }

    QVariant data(const WatchRow& row, int column, int role) const;
    /// What an item of this column adds to the flags of any table.
    static Qt::ItemFlags flags(int column);
    /// The header of a column; invalid for a role that it does not have.
    static QVariant header(int column, int role);
    /// The cells of a row that a change concerns.
    struct Range
    {
        int firstColumn;
        int lastColumn;
        QVector<int> roles; // empty: all
    };
    static Range changedBy(WatchChange change);
    /// The names of the roles in QML, to add to those of QAbstractItemModel.
    static QHash<int, QByteArray> roleNames();

private:
    QVariant displayText(const WatchRow& row, int column) const;
    QString accessibleText(const WatchRow& row, int column) const;
    QString toolTip(const WatchRow& row, int column) const;
    QVariant roleData(const WatchRow& row, int role) const;
    QVariant sortData(const WatchRow& row, int column) const;
    QString timeText(double time) const;
    qint64 ageMs(const WatchRow& row) const;

    std::function<qint64()> m_clock;
    std::function<QString(double)> m_timeFormatter;
};

} // namespace Velk

#endif
