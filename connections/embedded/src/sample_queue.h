#ifndef CONNECTIONS_EMBEDDED_SRC_SAMPLE_QUEUE_H
#define CONNECTIONS_EMBEDDED_SRC_SAMPLE_QUEUE_H

#include <connections/embedded/robot_memory.h>

#include <QMap>

#include <atomic>
#include <memory>
#include <vector>

namespace Velk {

/// The samples of one key between two deliveries, in ascending time order. Bounded: when it is full, the oldest sample
/// makes room for the new one and is counted as dropped. Keeps its memory from one delivery to the next.
class SampleQueue
{
public:
    using DropCount = std::shared_ptr<std::atomic<qint64>>;

    /// `capacity` is at least 1. The count outlives the queue, so that what was dropped can be told afterwards.
    SampleQueue(int capacity, DropCount dropped);

    bool isEmpty() const { return m_count == 0; }
    void push(double timeStamp, const QVariant& value);
    /// Hands out all samples and is empty then.
    QMap<double, QVariant> take();
    void clear();

private:
    std::size_t m_capacity;
    DropCount m_dropped;
    std::vector<MemorySample> m_ring; // grows to the capacity on demand; round from m_first once it has
    std::size_t m_first = 0;
    std::size_t m_count = 0;
};

} // namespace Velk

#endif
