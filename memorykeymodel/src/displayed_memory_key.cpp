// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/displayed_memory_key.h>

namespace Velk {

DisplayedMemoryKey::DisplayedMemoryKey(const MemoryKey& key, bool displayFlag, const QColor& color, int watchPeriod,
                                       const QMap<double, QVariant>& valueHistory)
    : m_key(key)
    , m_displayFlag(displayFlag)
    , m_color(color)
    , m_watchPeriod(watchPeriod)
    , m_valueHistory(valueHistory)
{}

void DisplayedMemoryKey::keepNewest(const QMap<double, QVariant>& samples) const
{
    if (samples.size() == 1) {
        m_valueHistory = samples; // shared with the batch: nothing is allocated
        return;
    }
    m_valueHistory.clear();
    m_valueHistory.insert(samples.lastKey(), samples.last());
}

void DisplayedMemoryKey::replaceAllButName(const DisplayedMemoryKey& other) const
{
    Q_ASSERT(m_key == other.m_key);
    m_key = other.m_key;
    m_displayFlag = other.m_displayFlag;
    m_color = other.m_color;
    m_watchPeriod = other.m_watchPeriod;
    m_valueHistory = other.m_valueHistory;
}

} // namespace Velk

uint qHash(const Velk::DisplayedMemoryKey& key)
{
    return qHash(key.key());
}
