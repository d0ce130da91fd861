// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/sample_buffer.h>

#include <algorithm>
#include <utility>

namespace Velk {

SampleBuffer::SampleBuffer(SampleBudget* budget)
    : m_budget(budget)
{}

SampleBuffer::~SampleBuffer()
{
    release();
}

SampleBuffer::SampleBuffer(SampleBuffer&& other) noexcept
    : m_budget(other.m_budget)
    , m_ring(std::exchange(other.m_ring, {}))
    , m_first(std::exchange(other.m_first, 0))
    , m_count(std::exchange(other.m_count, 0))
    , m_dropped(std::exchange(other.m_dropped, {}))
{}

void SampleBuffer::add(double timeStamp, const QVariant& value, qint64 bytes)
{
    const bool isFull = m_count >= static_cast<std::size_t>(m_budget->limits().samplesPerKey);
    if (isFull || m_budget->room() == 0) {
        const double droppedStamp = m_count > 0 ? m_ring[m_first].timeStamp : timeStamp;
        m_dropped.add(1, droppedStamp, droppedStamp);
        if (m_count == 0)
            return;
        // The oldest goes and its place is taken by the new one at the other end.
        m_budget->m_bytes += bytes - m_ring[m_first].bytes;
        if (m_count == m_ring.size()) {
            m_ring[m_first] = {timeStamp, value, bytes};
            m_first = (m_first + 1) % m_ring.size();
        } else {
            m_ring[m_first].value = QVariant();
            m_first = (m_first + 1) % m_ring.size();
            m_ring[(m_first + m_count - 1) % m_ring.size()] = {timeStamp, value, bytes};
        }
        return;
    }
    if (m_count == m_ring.size()) {
        // The start is moved to the front before the ring grows: the order is that of the places again.
        std::rotate(m_ring.begin(), m_ring.begin() + static_cast<std::ptrdiff_t>(m_first), m_ring.end());
        m_first = 0;
        m_ring.push_back({timeStamp, value, bytes});
    } else {
        m_ring[(m_first + m_count) % m_ring.size()] = {timeStamp, value, bytes};
    }
    ++m_count;
    ++m_budget->m_samples;
    m_budget->m_bytes += bytes;
}

Samples SampleBuffer::take()
{
    release();
    Samples samples;
    for (std::size_t i = 0; i < m_count; ++i) {
        Sample& sample = m_ring[(m_first + i) % m_ring.size()];
        samples.insert(samples.cend(), sample.timeStamp, std::exchange(sample.value, QVariant()));
    }
    m_first = 0;
    m_count = 0;
    return samples;
}

void SampleBuffer::clear()
{
    release();
    m_ring = {};
    m_first = 0;
    m_count = 0;
}

LossSpan SampleBuffer::takeDropped()
{
    return std::exchange(m_dropped, {});
}

// Takes the samples out of what the budget counts.
void SampleBuffer::release()
{
    // Callers that share the budget between threads hold their lock while a buffer has samples, not while it goes.
    if (m_count == 0)
        return;
    m_budget->m_samples -= static_cast<int>(m_count);
    for (std::size_t i = 0; i < m_count; ++i)
        m_budget->m_bytes -= m_ring[(m_first + i) % m_ring.size()].bytes;
}

} // namespace Velk
