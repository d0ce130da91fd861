// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/link/sample_buffer.h>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

// Samples of a key for which the memory is kept from one delivery to the next.
constexpr std::size_t maxIdleSamples = 1024;

} // namespace

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
    , m_bytes(std::exchange(other.m_bytes, 0))
    , m_dropped(std::exchange(other.m_dropped, {}))
{}

void SampleBuffer::add(double timeStamp, const QVariant& value, qint64 bytes)
{
    if (!canFit(bytes)) {
        m_dropped.add(1, timeStamp, timeStamp);
        return;
    }
    const SampleLimits& limits = m_budget->limits();
    while (m_count >= static_cast<std::size_t>(limits.samplesPerKey) || m_budget->m_samples >= limits.samples ||
           m_budget->m_bytes > limits.bytes - bytes)
        dropOldest();
    if (m_count == m_ring.size()) {
        // The start is moved to the front before the ring grows: the order is that of the places again.
        std::rotate(m_ring.begin(), m_ring.begin() + static_cast<std::ptrdiff_t>(m_first), m_ring.end());
        m_first = 0;
        m_ring.push_back({timeStamp, value, bytes});
    } else {
        m_ring[(m_first + m_count) % m_ring.size()] = {timeStamp, value, bytes};
    }
    ++m_count;
    m_bytes += bytes;
    ++m_budget->m_samples;
    m_budget->m_bytes += bytes;
}

// Whether the sample fits when all others of this key are dropped.
bool SampleBuffer::canFit(qint64 bytes) const
{
    const SampleLimits& limits = m_budget->limits();
    const bool hasPlace = m_count > 0 || m_budget->m_samples < limits.samples;
    return hasPlace && m_budget->m_bytes - m_bytes <= limits.bytes - bytes;
}

void SampleBuffer::dropOldest()
{
    Sample& oldest = m_ring[m_first];
    m_dropped.add(1, oldest.timeStamp, oldest.timeStamp);
    m_first = (m_first + 1) % m_ring.size();
    --m_count;
    --m_budget->m_samples;
    if (m_count > 0 && m_ring[m_first].bytes == 0) {
        // The value stays in memory: the next sample shares it.
        m_ring[m_first].bytes = oldest.bytes;
    } else {
        m_bytes -= oldest.bytes;
        m_budget->m_bytes -= oldest.bytes;
    }
    oldest.value = QVariant();
}

Samples SampleBuffer::take()
{
    release();
    Samples samples;
    for (std::size_t i = 0; i < m_count; ++i) {
        Sample& sample = m_ring[(m_first + i) % m_ring.size()];
        samples.insert(samples.cend(), sample.timeStamp, std::exchange(sample.value, QVariant()));
    }
    // After a burst, many keys would otherwise keep more memory than the budget allows them to fill.
    if (m_ring.size() > maxIdleSamples)
        m_ring = std::vector<Sample>(); // "= {}" would keep the memory
    m_first = 0;
    m_count = 0;
    return samples;
}

void SampleBuffer::clear()
{
    release();
    m_ring = std::vector<Sample>(); // "= {}" would keep the memory
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
    m_budget->m_bytes -= m_bytes;
    m_bytes = 0;
}

} // namespace Velk
