#ifndef RECORDFILE_SRC_RECORD_SCAN_H
#define RECORDFILE_SRC_RECORD_SCAN_H

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QByteArray;
QT_END_NAMESPACE

namespace Velk {

/// Counts the lines of a record file while its bytes pass by. A text cell may hold line feeds, so a line of the file
/// ends at a line feed outside quotes.
class RecordScan
{
public:
    void add(const QByteArray& bytes);

    /// All lines that ended, the header with them.
    qint64 completeLines() const { return m_completeLines; }
    /// The bytes up to the end of the last of them.
    qint64 completeBytes() const { return m_completeBytes; }
    /// All bytes that were added.
    qint64 bytes() const { return m_bytes; }

private:
    bool m_insideQuotes = false;
    qint64 m_completeLines = 0;
    qint64 m_completeBytes = 0;
    qint64 m_bytes = 0;
};

} // namespace Velk

#endif
