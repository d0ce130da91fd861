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
    /// How many more samples fit, as far as all keys together are concerned; none when the bytes are used up.
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
/// The budget, which it shares with the other keys, is never exceeded. When there is no room, the oldest samples of the
/// same key are dropped until the new one fits. The new sample is dropped if it does not fit even then: its key has no
/// samples in the buffer, or it is larger than what the other keys leave. Dropped samples are counted.
///
/// Not thread-safe; the destructor uses the budget only if samples are left. Keeps the memory of up to 1024
/// samples from one delivery to the next: adding a sample allocates nothing then.
class LINK_EXPORT SampleBuffer
{
public:
    /// The budget outlives the buffer.
    explicit SampleBuffer(SampleBudget* budget);
    ~SampleBuffer();
    SampleBuffer(SampleBuffer&& other) noexcept;
    SampleBuffer& operator=(SampleBuffer&&) = delete;

    bool isEmpty() const { return m_count == 0; }
    /// The time stamp is later than that of the sample before. `bytes` is the size of the value, or 0 if it shares its
    /// memory with the sample before.
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

    bool canFit(qint64 bytes) const;
    void dropOldest();
    void release();

    SampleBudget* m_budget;
    std::vector<Sample> m_ring; // grows on demand; circular from m_first when full
    std::size_t m_first = 0;
    std::size_t m_count = 0;
    qint64 m_bytes = 0; // of the samples in the ring
    LossSpan m_dropped;
};

} // namespace Velk

#endif
