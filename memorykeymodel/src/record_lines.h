#ifndef MEMORYKEYMODEL_RECORD_LINES_H
#define MEMORYKEYMODEL_RECORD_LINES_H

#include <memorykeymodel/displayed_memory_key.h>

#include <QByteArray>
#include <QMap>
#include <QSet>
#include <QString>
#include <QVariant>
#include <QVector>

namespace Velk {

// The lines of a record file, UTF-8 with their line feed. docs/record-file.md describes the format.

/// The rows of one batch: time stamp to the texts of the cells, one for each column.
using RecordRows = QMap<double, QVector<QString>>;

/// "Time" and the names of the columns.
QByteArray recordHeader(const QSet<DisplayedMemoryKey>& columns);
/// The samples that the batch holds for the columns, those of one time stamp in one row.
RecordRows recordRows(const QSet<DisplayedMemoryKey>& columns, const QMap<QString, QMap<double, QVariant>>& batch);
/// `time` is seconds, or whatever the robot counts in, since the start of the recording.
QByteArray recordLine(double time, const QVector<QString>& cells);

} // namespace Velk

#endif
