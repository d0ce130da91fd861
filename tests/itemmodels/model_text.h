// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_ITEMMODELS_MODEL_TEXT_H
#define TESTS_ITEMMODELS_MODEL_TEXT_H

#include <keynames/text.h>

#include <QAbstractItemModel>
#include <QSignalSpy>
#include <QString>
#include <QStringList>

namespace Velk {

/// The given column of the top rows.
inline QStringList columnText(const QAbstractItemModel& model, int column, int role = Qt::DisplayRole)
{
    QStringList cells;
    for (int row = 0; row < model.rowCount(); ++row)
        cells << model.index(row, column).data(role).toString();
    return cells;
}

/// Each top row as "cell, cell, …".
inline QStringList rowsText(const QAbstractItemModel& model)
{
    QStringList rows;
    for (int row = 0; row < model.rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model.columnCount(); ++column)
            cells << model.index(row, column).data().toString();
        rows << cells.join(QStringLiteral(", "));
    }
    return rows;
}

/// A column of a tree, a dot before each item for each level that it lies below the top.
inline QStringList treeText(const QAbstractItemModel& model, int column = 0, const QModelIndex& parent = QModelIndex(),
                            int level = 0)
{
    QStringList items;
    for (int row = 0; row < model.rowCount(parent); ++row) {
        items << QString(level, QLatin1Char('.')) + model.index(row, column, parent).data().toString();
        items << treeText(model, column, model.index(row, 0, parent), level + 1);
    }
    return items;
}

/// The ranges that a spy on dataChanged() saw, each as "first row-last row:first column-last column".
inline QStringList rangesText(const QSignalSpy& spy)
{
    QStringList ranges;
    for (const QList<QVariant>& arguments : spy) {
        const QModelIndex topLeft = arguments.at(0).toModelIndex();
        const QModelIndex bottomRight = arguments.at(1).toModelIndex();
        ranges << QStringLiteral("%1-%2:%3-%4")
                      .arg(topLeft.row())
                      .arg(bottomRight.row())
                      .arg(topLeft.column())
                      .arg(bottomRight.column());
    }
    return ranges;
}

} // namespace Velk

#endif
