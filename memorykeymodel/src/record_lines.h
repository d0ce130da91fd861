#ifndef MEMORYKEYMODEL_RECORD_LINES_H
#define MEMORYKEYMODEL_RECORD_LINES_H

#include "batch_matcher.h"

#include <memorykeymodel/displayed_memory_key.h>

#include <QSet>
#include <QVariant>

#include <string>
#include <vector>

namespace Velk {

// The lines of a record file, UTF-8 with their line feed. docs/record-file.md describes the format.

/// A sample on its way to the file.
struct RecordCell
{
    double time; ///< time stamp
    int column;
    const QVariant* value; ///< in the batch
};
using RecordCells = std::vector<RecordCell>;

/// "Time" and the names of the columns.
std::string recordHeader(const QSet<DisplayedMemoryKey>& columns);

/// All samples of the matched keys, ascending by time and then by column: the cells of one time stamp, which make up
/// a row, follow each other.
RecordCells recordCells(const std::vector<BatchMatcher::Match>& matches, int columnCount);
/// The end of the row that begins with the cell `row`.
RecordCells::const_iterator endOfRow(RecordCells::const_iterator row, RecordCells::const_iterator end);
/// Writes the row into `line`, in place of what it held. The time is that since the start of the recording.
void makeRecordLine(std::string* line, double time, RecordCells::const_iterator row, RecordCells::const_iterator rowEnd,
                    int columnCount);

} // namespace Velk

#endif
