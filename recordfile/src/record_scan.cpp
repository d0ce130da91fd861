#include "record_scan.h"

#include <QByteArray>

namespace Velk {

void RecordScan::add(const QByteArray& bytes)
{
    for (const char byte : bytes) {
        ++m_bytes;
        // A doubled quote inside a cell leaves the cell and enters it again: the same as staying inside.
        if (byte == '"') {
            m_insideQuotes = !m_insideQuotes;
        } else if (byte == '\n' && !m_insideQuotes) {
            ++m_completeLines;
            m_completeBytes = m_bytes;
        }
    }
}

} // namespace Velk
