// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <recordtext/record_scan.h>

#include <QByteArray>

namespace Velk {

void RecordScan::add(const QByteArray& bytes)
{
    const char* const end = bytes.constData() + bytes.size();
    for (const char* next = bytes.constData(); next;)
        next = addLine(next, end);
}

const char* RecordScan::addLine(const char* begin, const char* end)
{
    for (const char* byte = begin; byte != end; ++byte) {
        // A doubled quote ends the quoted text and begins it again at once: it has no effect here.
        if (*byte == '"') {
            m_isInsideQuotes = !m_isInsideQuotes;
        } else if (*byte == '\n' && !m_isInsideQuotes) {
            m_bytes += byte + 1 - begin;
            m_completeBytes = m_bytes;
            ++m_completeLines;
            return byte + 1;
        }
    }
    m_bytes += end - begin;
    return nullptr;
}

} // namespace Velk
