// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef RECORDTEXT_RECORD_SCAN_H
#define RECORDTEXT_RECORD_SCAN_H

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QByteArray;
QT_END_NAMESPACE

namespace Velk {

/// Counts the lines of a record file while its bytes are read piece by piece. A text cell may contain line feeds, so a
/// line of the file ends at a line feed outside quotes.
class RecordScan
{
public:
    /// Counts the next piece.
    void add(const QByteArray& bytes);
    /// Counts the bytes from `begin` up to the next end of a line. Returns the byte after that line; null when the line
    /// does not end before `end`, with all bytes counted.
    const char* addLine(const char* begin, const char* end);

    /// The lines that ended, the header included.
    qint64 completeLines() const { return m_completeLines; }
    /// The bytes up to the end of the last of these lines.
    qint64 completeBytes() const { return m_completeBytes; }
    /// All bytes that were counted.
    qint64 bytes() const { return m_bytes; }

private:
    bool m_isInsideQuotes = false;
    qint64 m_completeLines = 0;
    qint64 m_completeBytes = 0;
    qint64 m_bytes = 0;
};

} // namespace Velk

#endif
