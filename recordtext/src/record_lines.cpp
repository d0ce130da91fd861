// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_lines.h>

#include <recordtext/number_text.h>
#include <recordtext/record_field.h>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

// The order of a QMap, completed for time stamps that are not a number: they come last and equal each other.
bool isEarlier(double a, double b)
{
    return a < b || (std::isnan(b) && !std::isnan(a));
}

} // namespace

std::string recordHeader(const QStringList& columns)
{
    std::string header = "Time";
    for (const QString& column : columns) {
        header += ';';
        appendQuoted(&header, column);
    }
    header += '\n';
    return header;
}

RecordCells recordCells(const SamplesByColumn& samples)
{
    RecordCells cells;
    cells.reserve(samples.size());
    int column = 0;
    for (const QMap<double, QVariant>* const samplesOfColumn : samples) {
        if (samplesOfColumn) {
            for (auto sample = samplesOfColumn->cbegin(); sample != samplesOfColumn->cend(); ++sample)
                cells.push_back({sample.key(), column, &*sample});
        }
        ++column;
    }
    // Most robots sample all keys at the same time: the cells are then sorted already.
    const auto comesFirst = [](const RecordCell& a, const RecordCell& b) {
        return isEarlier(a.time, b.time) || (!isEarlier(b.time, a.time) && a.column < b.column);
    };
    if (!std::is_sorted(cells.cbegin(), cells.cend(), comesFirst))
        std::sort(cells.begin(), cells.end(), comesFirst);
    return cells;
}

RecordCells::const_iterator endOfRow(RecordCells::const_iterator row, RecordCells::const_iterator end)
{
    return std::find_if(row, end, [row](const RecordCell& cell) { return isEarlier(row->time, cell.time); });
}

void makeRecordLine(std::string* line, double time, RecordCells::const_iterator row, RecordCells::const_iterator rowEnd,
                    int columnCount)
{
    line->clear();
    appendSixDigits(line, time);
    int column = -1;
    for (; row != rowEnd; ++row) {
        line->append(std::size_t(row->column - column), ';');
        column = row->column;
        appendCell(line, *row->value);
    }
    line->append(std::size_t(columnCount - 1 - column), ';');
    line->push_back('\n');
}

} // namespace Velk
