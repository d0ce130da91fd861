// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDTEXT_RECORD_LINES_H
#define RECORDTEXT_RECORD_LINES_H

#include <QMap>
#include <QStringList>
#include <QVariant>

#include <string>
#include <vector>

namespace Velk {

// The lines of a record file: UTF-8, each with its line feed. docs/record-file.md describes the format.

/// The samples of one batch by column, each by time stamp; null for a column without samples.
using SamplesByColumn = std::vector<const QMap<double, QVariant>*>;

/// One sample of a batch and its place in the file.
struct RecordCell
{
    double time; ///< time stamp
    int column;
    const QVariant* value; ///< in the batch
};
using RecordCells = std::vector<RecordCell>;

/// The header: "Time" and the names of the columns.
std::string recordHeader(const QStringList& columns);

/// All samples, ascending by time and then by column: the cells of one row, which share a time stamp, are consecutive.
/// The cells point into the batch.
RecordCells recordCells(const SamplesByColumn& samples);
/// The end of the row that begins with the cell `row`.
RecordCells::const_iterator endOfRow(RecordCells::const_iterator row, RecordCells::const_iterator end);
/// Replaces `line` with the line of the row. `time` counts from the start of the recording.
void makeRecordLine(std::string* line, double time, RecordCells::const_iterator row, RecordCells::const_iterator rowEnd,
                    int columnCount);

} // namespace Velk

#endif
