// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDTEXT_RECORD_READER_H
#define RECORDTEXT_RECORD_READER_H

#include <recordtext/record_scan.h>

#include <QByteArray>
#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <vector>

QT_BEGIN_NAMESPACE
class QIODevice;
QT_END_NAMESPACE

namespace Velk {

/// A cell as a record file holds it. The file does not say which type the value had.
struct RecordField
{
    enum Type
    {
        Empty,  ///< no sample, or a value without text
        Number, ///< integer or floating point; `text` has all its digits
        Truth,  ///< `text` is "true" or "false"
        Text    ///< was quoted; `text` is without the quotes
    };

    Type type = Empty;
    QString text;
};

/// One row of a record file.
struct RecordRow
{
    double time = 0.0; ///< since the start of the recording, in the unit of the robot's clock
    /// One for each key that was displayed when the row was written: not always as many as the header has columns.
    std::vector<RecordField> cells;
};

/// Reads a record file row by row. docs/record-file.md describes the format.
///
///     RecordReader reader(&file);
///     RecordRow row;
///     while (reader.readRow(&row))
///         use(reader.columns(), row);
///     if (reader.hasError())
///         report(reader.errorLine(), reader.errorString());
///
/// It holds one piece of the file and one line at a time. Not a QObject; one thread at a time. Nothing throws.
class RecordReader
{
    Q_DECLARE_TR_FUNCTIONS(RecordReader)

public:
    /// Reads the header. The device is open for reading, stays the caller's, and outlives the reader.
    explicit RecordReader(QIODevice* device);

    /// The names of the columns after the time. Empty also after an error in the header, and when the file ends before
    /// the header does.
    const QStringList& columns() const { return m_columns; }

    /// Reads the next row into `row`. Returns false at the end of the file and after an error; `row` is then undefined.
    bool readRow(RecordRow* row);

    /// Whether reading stopped at a line that breaks the format, or because the device could not be read.
    bool hasError() const { return !m_errorString.isEmpty(); }
    /// The line of the error as a text editor counts, from 1: a line feed inside a text cell begins a line too. 0
    /// without an error.
    qint64 errorLine() const { return m_errorLine; }
    /// The error as a sentence without full stop, translated; empty without an error.
    QString errorString() const { return m_errorString; }

    /// At the end of the file: the bytes of a last line that was not written to its end. Empty without one, and after
    /// an error.
    QByteArray unfinishedLine() const;

private:
    bool readLine(QByteArray* line);
    void readHeader();
    void fail(const QString& what, qint64 line);

    QIODevice* m_device;
    RecordScan m_scan;
    QByteArray m_buffer;    ///< read from the device and not returned as a line yet
    int m_nextLine = 0;     ///< where the next line begins in m_buffer
    int m_scanned = 0;      ///< how many bytes of m_buffer were scanned
    qint64 m_lineCount = 0; ///< of the lines that were returned, as a text editor counts
    QStringList m_columns;
    qint64 m_errorLine = 0;
    QString m_errorString;
};

} // namespace Velk

#endif
