// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef BENCHMARKS_ITEMMODELS_REPORT_H
#define BENCHMARKS_ITEMMODELS_REPORT_H

#include <QAbstractItemModel>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>

namespace Velk {

/// Reads the rows that fit on a screen, as a view does first.
inline void readFirstRows(const QAbstractItemModel& model, int rows = 50)
{
    for (int row = 0; row < std::min(model.rowCount(), rows); ++row) {
        for (int column = 0; column < model.columnCount(); ++column) {
            const QModelIndex index = model.index(row, column);
            for (int role :
                 {int(Qt::DisplayRole), int(Qt::CheckStateRole), int(Qt::DecorationRole), int(Qt::TextAlignmentRole)})
                index.data(role);
            model.hasChildren(index);
        }
    }
}

template <typename Work>
double millisecondsOf(const Work& work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

inline void printRow(const char* what, double value, const char* unit)
{
    std::printf("  %-62s %9.2f %s\n", what, value, unit);
}

void benchCatalogueModels(int names);
void benchWatchModels(int keys, int batchesPerSecond);

} // namespace Velk

#endif
