// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/recorded_rows.h>

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <session/sample_stream.h>

#include <algorithm>
#include <vector>

namespace Velk {

namespace {

qint64 distinctCount(std::vector<double>& times)
{
    std::sort(times.begin(), times.end());
    return std::unique(times.begin(), times.end()) - times.begin();
}

} // namespace

RecordedRows::RecordedRows(DisplayedMemoryKeyListModel* displayedKeys, SampleStream* samples, QObject* parent)
    : QObject(parent)
    , m_displayedKeys(displayedKeys)
{
    connect(displayedKeys, &DisplayedMemoryKeyListModel::recording, this, &RecordedRows::onRecording);
    connect(samples, &SampleStream::batchReceived, this, &RecordedRows::onBatch);
}

RecordedRows::~RecordedRows() = default;

void RecordedRows::onRecording(bool isRecording)
{
    if (!isRecording)
        return;
    // The newest known values are written at their own times, before the first batch.
    std::vector<double> times;
    const QSet<DisplayedMemoryKey> keys = m_displayedKeys->displayedKeys();
    for (const DisplayedMemoryKey& displayed : keys) {
        const Samples history = displayed.valueHistory();
        if (!history.isEmpty())
            times.push_back(history.lastKey());
    }
    xSetCount(distinctCount(times));
}

void RecordedRows::onBatch(const GatheredData& batch)
{
    if (!m_displayedKeys || !m_displayedKeys->isRecording())
        return;
    const QSet<DisplayedMemoryKey> keys = m_displayedKeys->displayedKeys();
    std::vector<double> times;
    for (auto samples = batch.cbegin(); samples != batch.cend(); ++samples) {
        if (!keys.contains(DisplayedMemoryKey(MemoryKey(samples.key(), QString(), UnknownNature))))
            continue;
        for (auto sample = samples->cbegin(); sample != samples->cend(); ++sample)
            times.push_back(sample.key());
    }
    xSetCount(m_count + distinctCount(times));
}

void RecordedRows::xSetCount(qint64 count)
{
    if (m_count == count)
        return;
    m_count = count;
    emit countChanged();
}

} // namespace Velk
