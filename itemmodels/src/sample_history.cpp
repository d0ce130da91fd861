// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <itemmodels/sample_history.h>

#include <itemmodels/value_text.h>
#include <session/rebuilt_keys.h>
#include <session/sample_stream.h>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

// Dropped samples are erased when they are as many as the others: so each sample is moved once on average.
constexpr size_t minUnusedCount = 64;

} // namespace

SampleHistory::SampleHistory(DisplayedMemoryKeyListModel* displayedKeys, QObject* parent)
    : QObject(parent)
{
    setDisplayedKeys(displayedKeys);
}

SampleHistory::~SampleHistory() = default;

void SampleHistory::setDisplayedKeys(DisplayedMemoryKeyListModel* displayedKeys, SampleStream* samples)
{
    const bool isOwnStream = m_samples && m_samples == m_ownSamples.get();
    if (displayedKeys && m_displayedKeys == displayedKeys && (samples ? m_samples == samples : isOwnStream))
        return;
    if (m_displayedKeys)
        m_displayedKeys->disconnect(this);
    if (m_samples)
        m_samples->disconnect(this);
    m_ownSamples.reset();
    m_samples.clear();
    forgetAll();
    m_displayedKeys = displayedKeys;
    if (!displayedKeys)
        return;

    connect(displayedKeys, &DisplayedMemoryKeyListModel::keysAdded, this, &SampleHistory::onKeysAdded);
    connect(displayedKeys, &DisplayedMemoryKeyListModel::keysRemoved, this, &SampleHistory::onKeysRemoved);
    connect(displayedKeys, &DisplayedMemoryKeyListModel::keysUpdated, this, &SampleHistory::onKeysUpdated);
    connect(displayedKeys, &QObject::destroyed, this, &SampleHistory::forgetAll);
    synchronise();
    if (!samples)
        m_ownSamples = std::make_unique<SampleStream>(displayedKeys->connectionManager(), displayedKeys);
    m_samples = samples ? samples : m_ownSamples.get();
    connect(m_samples, &SampleStream::batchReceived, this, &SampleHistory::onBatch);
    connect(m_samples, &SampleStream::gapBegan, this, &SampleHistory::markGap);
}

void SampleHistory::forgetAll()
{
    m_rings.clear();
    clear();
}

void SampleHistory::markGap()
{
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
    if (m_displayedKeys && isRebuilt(keys, *m_displayedKeys, int(m_rings.size())))
        synchronise();
}

void SampleHistory::synchronise()
{
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

void SampleHistory::onBatch(const GatheredData& batch)
{
    bool isAdded = false;
    for (auto key = batch.cbegin(); key != batch.cend(); ++key) {
        if (key->isEmpty())
            continue;
        const auto ring = m_rings.find(key.key());
        if (ring == m_rings.end())
            continue;
        bool isChanged = false;
        for (auto sample = key->cbegin(); sample != key->cend(); ++sample)
            isChanged |= insert(*ring, sample.key(), sample.value());
        applyBounds(*ring);
        if (isChanged)
            hasChanged(*ring);
        isAdded = true;
    }
    if (!isAdded)
        return;
    m_hasSamplesSinceGap = true;
    emit samplesAdded();
}

void SampleHistory::hasChanged(Ring& ring)
{
    ring.revision = ++m_lastRevision;
}

bool SampleHistory::insert(Ring& ring, double time, const QVariant& value)
{
    if (!std::isfinite(time))
        return false; // it has no place on an axis
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
        // The robot's clock has restarted.
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
            // Delivered once more, perhaps after a gap: the gap stays open for the first new sample.
            sample.isAfterGap = next->isAfterGap;
            *next = std::move(sample);
        } else {
            samples.insert(next, std::move(sample));
        }
    }
    m_newestTime = std::max(m_newestTime, time);
    return true;
}

// Whether a sample was dropped.
bool SampleHistory::applyBounds(Ring& ring)
{
    const size_t count = ring.samples.size() - ring.unused;
    size_t dropped = count > size_t(m_maximumCount) ? count - size_t(m_maximumCount) : 0;
    if (m_maximumAge > 0.0 && count > 0) {
        const double oldest = ring.samples.back().time - m_maximumAge;
        while (ring.samples[ring.unused + dropped].time < oldest)
            ++dropped;
    }
    dropFirst(ring, dropped);
    return dropped > 0;
}

void SampleHistory::applyBoundsToAll()
{
    for (Ring& ring : m_rings) {
        if (applyBounds(ring))
            hasChanged(ring);
    }
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
    applyBoundsToAll();
}

void SampleHistory::setMaximumAge(double age)
{
    m_maximumAge = age > 0.0 ? age : 0.0;
    applyBoundsToAll();
}

void SampleHistory::clear()
{
    for (Ring& ring : m_rings)
        ring = Ring();
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
