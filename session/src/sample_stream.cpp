// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/sample_stream.h>

#include <connections/link/robot_link.h>
#include <memorykeymodel/displayed_memory_key_list_model.h>

#include <algorithm>

namespace Velk {

namespace {

// The watcher delivers a batch every gather period: the sampling period, and never more often than this, as
// DisplayedMemoryKeyListModel::startWatcher() requests it. The contract has no question for the gather period.
constexpr int minGatherPeriodMs = 200;

// After this many silent periods it is a gap and no delay.
constexpr int silentPeriods = 3;

} // namespace

SampleStream::SampleStream(ConnectionManager* connectionManager, DisplayedMemoryKeyListModel* displayedKeys,
                           QObject* parent)
    : QObject(parent)
    , m_connectionManager(connectionManager)
    , m_displayedKeys(displayedKeys)
{
    // A timer and not the time between two batches: when the event loop was held up, the batches that wait are
    // delivered before it fires.
    m_silenceTimer.setSingleShot(true);
    connect(&m_silenceTimer, &QTimer::timeout, this, &SampleStream::markGap);
    for (auto signal : {&ConnectionManager::connectionEstablished, &ConnectionManager::connectionLost,
                        &ConnectionManager::disconnected})
        connect(connectionManager, signal, this, &SampleStream::onConnectionChanged);
    if (auto* const link = qobject_cast<RobotLink*>(connectionManager))
        connect(link, &RobotLink::lossesRecorded, this, &SampleStream::lossesRecorded);
    if (displayedKeys) {
        // A memory service may have appeared without a signal since the connection came up.
        connect(displayedKeys, &DisplayedMemoryKeyListModel::keysAdded, this, &SampleStream::attach);
        connect(displayedKeys, &DisplayedMemoryKeyListModel::keysUpdated, this, &SampleStream::attach);
    }
    attach();
}

SampleStream::~SampleStream() = default;

SampleLosses SampleStream::losses() const
{
    const auto* const link = qobject_cast<RobotLink*>(m_connectionManager.data());
    return link ? link->losses() : SampleLosses();
}

void SampleStream::attach()
{
    if (!m_connectionManager)
        return;
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (memory && memory.get() == m_attachedTo)
        return;
    detach();
    if (!memory)
        return;
    connect(memory.get(), &MemoryInterface::dataGathered, this, &SampleStream::onDataGathered);
    m_attachedTo = memory.get();
}

void SampleStream::detach()
{
    if (m_attachedTo)
        m_attachedTo->disconnect(this);
    m_attachedTo.clear();
}

void SampleStream::onConnectionChanged()
{
    const QPointer<SampleStream> self(this);
    markGap();
    if (self)
        attach();
}

void SampleStream::markGap()
{
    if (!m_hasBatchSinceGap)
        return;
    m_hasBatchSinceGap = false;
    emit gapBegan();
}

void SampleStream::onDataGathered(const GatheredData& data)
{
    if (m_displayedKeys) {
        m_silenceTimer.start(silentPeriods * std::max(minGatherPeriodMs, m_displayedKeys->samplingPeriod()));
    }
    if (!m_hasBatchSinceGap) {
        m_hasBatchSinceGap = true;
        const QPointer<SampleStream> self(this);
        emit began();
        if (!self)
            return;
    }
    emit batchReceived(data);
}

} // namespace Velk
