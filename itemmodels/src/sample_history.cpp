#include <itemmodels/sample_history.h>

#include <itemmodels/value_text.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace Velk {

namespace {

// The watcher delivers a batch every gather period, which is the sampling period and never less than this.
constexpr int minGatherPeriodMs = 200;

// So many periods without a batch are no delay any more.
constexpr int silentPeriods = 3;

// Dropped samples stay in front of the others until they are as many as those: each is then moved once, on average,
// in its life.
constexpr size_t minUnusedCount = 64;

} // namespace

SampleHistory::SampleHistory(DisplayedMemoryKeyListModel* displayedKeys, QObject* parent)
    : QObject(parent)
{
    // A timer and not the time between two batches: after the event loop was held up, the batches that wait are
    // delivered before it fires.
    m_silenceTimer.setSingleShot(true);
    connect(&m_silenceTimer, &QTimer::timeout, this, &SampleHistory::markGap);
    setDisplayedKeys(displayedKeys);
}

SampleHistory::~SampleHistory() = default;

void SampleHistory::setDisplayedKeys(DisplayedMemoryKeyListModel* displayedKeys)
{
    if (m_displayedKeys == displayedKeys && displayedKeys)
        return;
    detach();
    if (m_displayedKeys)
        m_displayedKeys->disconnect(this);
    if (m_connectionManager)
        m_connectionManager->disconnect(this);
    m_rings.clear();
    clear();
    m_displayedKeys = displayedKeys;
    m_connectionManager = displayedKeys ? displayedKeys->connectionManager() : nullptr;
    if (!m_displayedKeys)
        return;

    for (auto signal : {&ConnectionManager::connectionEstablished, &ConnectionManager::connectionLost,
                        &ConnectionManager::disconnected})
        connect(m_connectionManager, signal, this, &SampleHistory::onConnectionChanged);
    connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysAdded, this, &SampleHistory::onKeysAdded);
    connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysRemoved, this, &SampleHistory::onKeysRemoved);
    connect(m_displayedKeys, &DisplayedMemoryKeyListModel::keysUpdated, this, &SampleHistory::onKeysUpdated);
    connect(m_displayedKeys, &QObject::destroyed, this, [this] {
        detach();
        m_rings.clear();
        clear();
    });
    synchronise();
    attach();
}

// Following the connection

void SampleHistory::attach()
{
    if (!m_displayedKeys)
        return;
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (memory && memory.get() == m_attachedTo)
        return;
    detach();
    if (!memory)
        return;
    connect(memory.get(), &MemoryInterface::dataGathered, this, &SampleHistory::onDataGathered);
    m_attachedTo = memory.get();
}

void SampleHistory::detach()
{
    if (m_attachedTo)
        m_attachedTo->disconnect(this);
    m_attachedTo.clear();
}

void SampleHistory::onConnectionChanged()
{
    markGap();
    attach();
}

void SampleHistory::markGap()
{
    m_silenceTimer.stop();
    for (Ring& ring : m_rings)
        ring.isGapOpen = ring.samples.size() > ring.unused;
    if (!m_hasSamplesSinceGap)
        return;
    m_hasSamplesSinceGap = false;
    emit gapBegan();
}

// Following the displayed keys

void SampleHistory::onKeysAdded(const QSet<DisplayedMemoryKey>& keys)
{
    for (const DisplayedMemoryKey& displayed : keys)
        m_rings[displayed.key().name()];
    // A memory service may have come without a word since the connection came up.
    attach();
}

void SampleHistory::onKeysRemoved(const QSet<DisplayedMemoryKey>& keys)
{
    bool isDropped = false;
    for (const DisplayedMemoryKey& displayed : keys)
        isDropped |= m_rings.remove(displayed.key().name()) > 0;
    if (isDropped)
        emit samplesDropped();
}

void SampleHistory::onKeysUpdated(const QSet<DisplayedMemoryKey>& keys)
{
    // After a connection the set is rebuilt and may have gained and lost keys, of which no other signal tells. It
    // names all keys then, so a change shows in the count or in a name.
    bool isChanged = m_displayedKeys && m_displayedKeys->displayedKeys().size() != m_rings.size();
    for (auto displayed = keys.begin(); displayed != keys.end() && !isChanged; ++displayed)
        isChanged = !m_rings.contains(displayed->key().name());
    if (isChanged)
        synchronise();
    attach();
}

void SampleHistory::synchronise()
{
    if (!m_displayedKeys)
        return;
    const QSet<DisplayedMemoryKey> displayedKeys = m_displayedKeys->displayedKeys();
    QHash<QString, Ring> rings;
    for (const DisplayedMemoryKey& displayed : displayedKeys)
        rings.insert(displayed.key().name(), m_rings.take(displayed.key().name()));
    const bool isDropped = !m_rings.isEmpty();
    m_rings.swap(rings);
    if (isDropped)
        emit samplesDropped();
}

// Samples

void SampleHistory::onDataGathered(const QMap<QString, QMap<double, QVariant>>& data)
{
    const int periodMs = std::max(minGatherPeriodMs, m_displayedKeys ? m_displayedKeys->samplingPeriod() : 0);
    m_silenceTimer.start(int(std::min<qint64>(qint64(silentPeriods) * periodMs, std::numeric_limits<int>::max())));

    bool isAdded = false;
    for (auto key = data.cbegin(); key != data.cend(); ++key) {
        if (key->isEmpty())
            continue;
        const auto ring = m_rings.find(key.key());
        if (ring == m_rings.end())
            continue;
        for (auto sample = key->cbegin(); sample != key->cend(); ++sample)
            insert(*ring, sample.key(), sample.value());
        applyBounds(*ring);
        ++ring->revision;
        isAdded = true;
    }
    if (!isAdded)
        return;
    m_hasSamplesSinceGap = true;
    emit samplesAdded();
}

void SampleHistory::insert(Ring& ring, double time, const QVariant& value)
{
    if (!std::isfinite(time))
        return; // it has no place on an axis
    std::vector<HistorySample>& samples = ring.samples;
    HistorySample sample;
    sample.time = time;
    sample.number = ValueText::number(value);
    sample.value = value;
    const auto first = samples.begin() + std::ptrdiff_t(ring.unused);
    if (first == samples.end() || samples.back().time < time) {
        sample.isAfterGap = ring.isGapOpen;
        samples.push_back(std::move(sample));
        ring.isGapOpen = false;
    } else if (ring.isGapOpen ? time < samples.back().time : time < first->time) {
        // The robot's clock has started again.
        samples.clear();
        ring.unused = 0;
        sample.isAfterGap = true;
        samples.push_back(std::move(sample));
        ring.isGapOpen = false;
        m_newestTime = time;
    } else {
        const auto next = std::lower_bound(first, samples.end(), time,
                                           [](const HistorySample& other, double t) { return other.time < t; });
        if (next->time == time) {
            // Told once more, perhaps after a gap: that one stays open for the first new sample.
            sample.isAfterGap = next->isAfterGap;
            *next = std::move(sample);
        } else {
            samples.insert(next, std::move(sample));
        }
    }
    m_newestTime = std::max(m_newestTime, time);
}

void SampleHistory::applyBounds(Ring& ring)
{
    const size_t count = ring.samples.size() - ring.unused;
    size_t dropped = count > size_t(m_maximumCount) ? count - size_t(m_maximumCount) : 0;
    if (m_maximumAge > 0.0 && count > 0) {
        const double oldest = ring.samples.back().time - m_maximumAge;
        while (ring.samples[ring.unused + dropped].time < oldest)
            ++dropped;
    }
    dropFirst(ring, dropped);
}

void SampleHistory::dropFirst(Ring& ring, size_t count)
{
    for (size_t i = 0; i < count; ++i)
        ring.samples[ring.unused + i].value.clear(); // a large value is not kept for nothing
    ring.unused += count;
    const size_t used = ring.samples.size() - ring.unused;
    if (ring.unused >= std::max(minUnusedCount, used)) {
        ring.samples.erase(ring.samples.begin(), ring.samples.begin() + std::ptrdiff_t(ring.unused));
        ring.unused = 0;
    }
}

void SampleHistory::setMaximumCount(int count)
{
    m_maximumCount = std::max(count, 1);
    for (Ring& ring : m_rings)
        applyBounds(ring);
}

void SampleHistory::setMaximumAge(double age)
{
    m_maximumAge = age > 0.0 ? age : 0.0;
    for (Ring& ring : m_rings)
        applyBounds(ring);
}

void SampleHistory::clear()
{
    m_silenceTimer.stop();
    for (Ring& ring : m_rings) {
        const quint64 revision = ring.revision + 1;
        ring = Ring();
        ring.revision = revision;
    }
    m_newestTime = 0.0;
    m_hasSamplesSinceGap = false;
    emit samplesDropped();
}

HistorySpan SampleHistory::samples(const QString& name) const
{
    const auto ring = m_rings.constFind(name);
    if (ring == m_rings.cend())
        return {};
    const HistorySample* const data = ring->samples.data();
    return {data + ring->unused, data + ring->samples.size()};
}

HistorySpan SampleHistory::samples(const QString& name, double from, double to) const
{
    const HistorySpan all = samples(name);
    const HistorySample* first = std::lower_bound(
        all.begin(), all.end(), from, [](const HistorySample& sample, double time) { return sample.time < time; });
    const HistorySample* last = std::upper_bound(
        first, all.end(), to, [](double time, const HistorySample& sample) { return time < sample.time; });
    return {first == all.begin() ? first : first - 1, last == all.end() ? last : last + 1};
}

quint64 SampleHistory::revision(const QString& name) const
{
    const auto ring = m_rings.constFind(name);
    return ring == m_rings.cend() ? 0 : ring->revision;
}

} // namespace Velk
