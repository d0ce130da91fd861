#include "sample_queue.h"

#include <utility>

namespace Velk {

SampleQueue::SampleQueue(int capacity, DropCount dropped)
    : m_capacity(static_cast<std::size_t>(capacity))
    , m_dropped(std::move(dropped))
{}

void SampleQueue::push(double timeStamp, const QVariant& value)
{
    if (m_count == m_capacity) {
        m_ring[m_first] = {timeStamp, value};
        m_first = (m_first + 1) % m_capacity;
        m_dropped->fetch_add(1, std::memory_order_relaxed);
        return;
    }
    // Below the capacity the samples start at 0: only a full queue moves its start, and it is emptied as a whole.
    if (m_count == m_ring.size())
        m_ring.push_back({timeStamp, value});
    else
        m_ring[m_count] = {timeStamp, value};
    ++m_count;
}

QMap<double, QVariant> SampleQueue::take()
{
    QMap<double, QVariant> samples;
    for (std::size_t i = 0; i < m_count; ++i) {
        MemorySample& sample = m_ring[(m_first + i) % m_ring.size()];
        samples.insert(samples.cend(), sample.timeStamp, std::exchange(sample.value, QVariant()));
    }
    m_first = 0;
    m_count = 0;
    return samples;
}

void SampleQueue::clear()
{
    m_ring.clear();
    m_first = 0;
    m_count = 0;
}

} // namespace Velk
