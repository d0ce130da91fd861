// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_LINK_SAMPLE_BUFFER_H
#define CONNECTIONS_LINK_SAMPLE_BUFFER_H

#include <connections/link/link_export.h>
#include <connections/link/loss_ledger.h>
#include <robotconnection/memory_interface.h>

#include <QVariant>

#include <limits>
#include <vector>

namespace Velk {

/// How much a connection buffers between two deliveries.
struct SampleLimits
{
    int samplesPerKey = std::numeric_limits<int>::max(); ///< at least 1
    int samples = std::numeric_limits<int>::max();       ///< of all keys together
    qint64 bytes = std::numeric_limits<qint64>::max();   ///< of the values of all keys together
};

/// What the buffers of a connection hold together, within the limits.
class SampleBudget
{
public:
    explicit SampleBudget(const SampleLimits& limits = {})
        : m_limits(limits)
    {}

    const SampleLimits& limits() const { return m_limits; }
    /// How many more samples fit, as far as all keys together are concerned.
    int room() const
    {
        return m_bytes >= m_limits.bytes || m_samples >= m_limits.samples ? 0 : m_limits.samples - m_samples;
    }

private:
    friend class SampleBuffer;

    SampleLimits m_limits;
    int m_samples = 0;
    qint64 m_bytes = 0;
};

/// The samples of one key between two deliveries, in the order in which they were added.
///
/// Bounded by the budget that it shares with the other keys. The rule when there is no room: the key's own oldest
/// sample makes room for the new one, so that the newest value of a key always arrives; a new sample of a key that has
/// none in the buffer is dropped. What is dropped is counted.
///
/// Not thread-safe; an empty buffer does not touch the budget when it is destroyed. Keeps its memory from one delivery
/// to the next: adding a sample allocates nothing then.
class LINK_EXPORT SampleBuffer
{
public:
    /// The budget outlives the buffer.
    explicit SampleBuffer(SampleBudget* budget);
    ~SampleBuffer();
    SampleBuffer(SampleBuffer&& other) noexcept;
    SampleBuffer& operator=(SampleBuffer&&) = delete;

    bool isEmpty() const { return m_count == 0; }
    /// The time stamp is later than that of the sample before. `bytes` is what the value takes beside what other
    /// samples share with it.
    void add(double timeStamp, const QVariant& value, qint64 bytes = 0);
    /// Hands out all samples; the buffer is empty then.
    Samples take();
    /// Discards all samples, which is no loss, and gives back the memory.
    void clear();

    /// What was dropped since the last call, with the time stamps of the first and the last one.
    LossSpan takeDropped();

private:
    struct Sample
    {
        double timeStamp;
        QVariant value;
        qint64 bytes;
    };

    void release();

    SampleBudget* m_budget;
    std::vector<Sample> m_ring; // grows on demand; circular from m_first when full
    std::size_t m_first = 0;
    std::size_t m_count = 0;
    LossSpan m_dropped;
};

} // namespace Velk

#endif
