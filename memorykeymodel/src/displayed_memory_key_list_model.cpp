// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/displayed_memory_key_list_model.h>

#include "batch_matcher.h"
#include "newest_values.h"
#include "recording.h"

#include <memorykeymodel/memory_key_list_model.h>
#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <algorithm>

namespace Velk {

namespace {

// The shortest periods that are requested: a robot delivers a batch every gather period and samples the keys every
// sampling period. The shortest gather period and the shortest sampling period without real-time support are equal by
// chance: neither follows from the other.
constexpr int minGatherPeriodMs = 200;
constexpr int minSamplingPeriodMs = 200;
constexpr int minRealTimeSamplingPeriodMs = 10;

const char* const dataGatheredSignal = SIGNAL(dataGathered(QMap<QString, QMap<double, QVariant>>));
const char* const onDataGatheredSlot = SLOT(onDataGathered(QMap<QString, QMap<double, QVariant>>));

int gatherPeriodFor(int samplingPeriod)
{
    return std::max(samplingPeriod, minGatherPeriodMs);
}

QSet<DisplayedMemoryKey>::const_iterator findByName(const QSet<DisplayedMemoryKey>& keys, const QString& name)
{
    return std::find_if(keys.cbegin(), keys.cend(),
                        [&name](const DisplayedMemoryKey& displayed) { return displayed.key().name() == name; });
}

QSet<MemoryKey> keysOf(const QSet<DisplayedMemoryKey>& displayedKeys)
{
    QSet<MemoryKey> keys;
    keys.reserve(displayedKeys.size());
    for (const DisplayedMemoryKey& displayed : displayedKeys)
        keys.insert(displayed.key());
    return keys;
}

} // namespace

DisplayedMemoryKeyListModel::DisplayedMemoryKeyListModel(ConnectionManager* connectionManager)
    : QObject(connectionManager)
    , m_connectionManager(connectionManager)
    , m_recording(std::make_shared<Recording>(this))
{
    connect(m_connectionManager, &ConnectionManager::connectionEstablished, this,
            &DisplayedMemoryKeyListModel::onConnectionStateChanged);
    connect(m_connectionManager, &ConnectionManager::connectionLost, this,
            &DisplayedMemoryKeyListModel::onConnectionStateChanged);
    connect(m_connectionManager, &ConnectionManager::disconnected, this,
            &DisplayedMemoryKeyListModel::onConnectionStateChanged);
    // The odd name is part of the interface.
    qRegisterMetaType<GatheredData>("const QMap<QString, QMap<double, QVariant> >&)");
}

ConnectionManager* DisplayedMemoryKeyListModel::connectionManager()
{
    return m_connectionManager;
}

bool DisplayedMemoryKeyListModel::isRobotConnected()
{
    return m_connectionManager->isConnected();
}

// Displayed keys and selection

QSet<MemoryKey> DisplayedMemoryKeyListModel::keys() const
{
    return keysOf(m_displayedKeys);
}

QSet<DisplayedMemoryKey> DisplayedMemoryKeyListModel::displayedKeys() const
{
    return m_displayedKeys;
}

QSet<MemoryKey> DisplayedMemoryKeyListModel::selectedKeys() const
{
    return keysOf(m_selectedKeys);
}

void DisplayedMemoryKeyListModel::setSelectedKeys(const QSet<MemoryKey>& keys)
{
    m_selectedKeys.clear();
    for (const MemoryKey& key : keys) {
        const auto found = findByName(m_displayedKeys, key.name());
        if (found != m_displayedKeys.cend())
            m_selectedKeys.insert(*found);
    }
}

void DisplayedMemoryKeyListModel::addKeys(const QSet<MemoryKey>& keys)
{
    QSet<DisplayedMemoryKey> addedKeys;
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    const QSet<MemoryKey> requestedKeys = keys; // a slot may change the caller's set
    for (const MemoryKey& key : requestedKeys) {
        if (findByName(m_displayedKeys, key.name()) != m_displayedKeys.cend())
            continue;
        addedKeys.insert(DisplayedMemoryKey(key));
        if (memory)
            memory->watchKey(key.name(), m_samplingPeriod);
    }
    if (!addedKeys.isEmpty()) {
        m_displayedKeys.unite(addedKeys);
        displayedKeysHaveChanged();
    }

    const QPointer<DisplayedMemoryKeyListModel> self(this);
    if (!m_displayedKeys.isEmpty())
        startWatcher(false);
    if (self)
        emit keysAdded(addedKeys);
}

void DisplayedMemoryKeyListModel::removeKeys(const QSet<MemoryKey>& keys)
{
    QSet<DisplayedMemoryKey> removedKeys;
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    const QSet<MemoryKey> requestedKeys = keys; // a slot may change the caller's set
    for (const MemoryKey& key : requestedKeys) {
        const auto found = findByName(m_displayedKeys, key.name());
        if (found != m_displayedKeys.cend()) {
            const DisplayedMemoryKey displayed = *found;
            m_selectedKeys.remove(displayed);
            m_displayedKeys.remove(displayed);
            displayedKeysHaveChanged();
            removedKeys.insert(displayed);
        }
        if (memory)
            memory->unwatchKey(key.name());
    }
    if (m_displayedKeys.isEmpty())
        stopWatcher();
    emit keysRemoved(removedKeys);
}

// Connection

void DisplayedMemoryKeyListModel::onConnectionStateChanged()
{
    const QPointer<DisplayedMemoryKeyListModel> self(this);
    if (!isRobotConnected()) {
        stopRecording();
        if (!self)
            return;
        stopWatcher();
        emit robotConnected(false);
        return;
    }

    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (!memory)
        return;
    xSetMinSamplingPeriod(minSamplingPeriodMs);
    if (!self)
        return;
    memory->isRealTimeSupported(this, "gotRealTimeSupported");
    if (!self)
        return;
    memory->unwatchAll();
    const QSet<DisplayedMemoryKey> displayedKeys = m_displayedKeys;
    for (const DisplayedMemoryKey& displayed : displayedKeys)
        memory->watchKey(displayed.key().name(), displayed.watchPeriod());

    // A catalogue that is replaced here is not deleted: it belongs to the connection manager.
    m_keyListModel = new MemoryKeyListModel(m_connectionManager, keys());
    if (m_keyListModel->isReady())
        onKeyListModelReady();
    else
        connect(m_keyListModel, &MemoryKeyListModel::ready, this, &DisplayedMemoryKeyListModel::onKeyListModelReady);
    if (self)
        emit robotConnected(true);
}

void DisplayedMemoryKeyListModel::onKeyListModelReady()
{
    // A catalogue that was replaced on a later connection still emits ready() to this slot. The held catalogue decides
    // then; without one there is nothing to rebuild from.
    if (!m_keyListModel)
        return;

    const QSet<MemoryKey>& resolvedKeys = m_keyListModel->selectedKeys();
    // A key that stays displayed keeps its place in the set: the columns of a running recording follow the set's order.
    QSet<DisplayedMemoryKey> droppedKeys = m_displayedKeys;
    for (const MemoryKey& key : resolvedKeys) {
        const DisplayedMemoryKey displayed(key);
        const auto found = m_displayedKeys.find(displayed);
        if (found == m_displayedKeys.end()) {
            m_displayedKeys.insert(displayed);
        } else {
            found->replaceAllButName(displayed);
            droppedKeys.remove(displayed);
        }
    }
    m_displayedKeys.subtract(droppedKeys);
    displayedKeysHaveChanged();

    const QPointer<DisplayedMemoryKeyListModel> self(this);
    emit keysUpdated(m_displayedKeys);
    if (self)
        delete m_keyListModel.data();
}

// Watcher and sampling

void DisplayedMemoryKeyListModel::startWatcher(bool ownPeriods)
{
    if (m_isWatcherRunning)
        return;
    if (!isRobotConnected()) {
        emit error(tr("Not connected to a robot"), tr("Cannot retrieve memory value if no robot is connected."));
        return;
    }
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (!memory) {
        emit error(tr("Missing memory interface"),
                   tr("Cannot retrieve memory values as no memory interface was found."));
        return;
    }
    // Unique: when the watcher was stopped without a memory interface, the connection to it was left. A second one
    // would take every batch in twice.
    connect(memory.get(), dataGatheredSignal, this, onDataGatheredSlot,
            Qt::ConnectionType(Qt::AutoConnection | Qt::UniqueConnection));
    memory->startWatcher(gatherPeriodFor(m_samplingPeriod), ownPeriods ? 0 : m_samplingPeriod);
    m_isWatcherRunning = true;
}

void DisplayedMemoryKeyListModel::stopWatcher()
{
    if (!m_isWatcherRunning)
        return;
    m_isWatcherRunning = false;
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (!memory)
        return;
    disconnect(memory.get(), dataGatheredSignal, this, onDataGatheredSlot);
    memory->stopWatcher();
}

int DisplayedMemoryKeyListModel::samplingPeriod() const
{
    return m_samplingPeriod;
}

int DisplayedMemoryKeyListModel::minSamplingPeriod() const
{
    return m_minSamplingPeriod;
}

int DisplayedMemoryKeyListModel::maxSamplingPeriod() const
{
    return m_maxSamplingPeriod;
}

void DisplayedMemoryKeyListModel::setSamplingPeriod(int period)
{
    const int boundedPeriod = std::min(std::max(period, m_minSamplingPeriod), m_maxSamplingPeriod);
    if (boundedPeriod == m_samplingPeriod)
        return;
    m_samplingPeriod = boundedPeriod;
    if (!isRobotConnected())
        return;
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (!memory)
        return;
    memory->setGatherPeriod(gatherPeriodFor(boundedPeriod));
    memory->setSamplingPeriod(boundedPeriod);
    emit sampligPeriodUpdated(boundedPeriod);
}

void DisplayedMemoryKeyListModel::gotRealTimeSupported(bool supported)
{
    xSetMinSamplingPeriod(supported ? minRealTimeSamplingPeriodMs : minSamplingPeriodMs);
}

void DisplayedMemoryKeyListModel::xSetMinSamplingPeriod(int period)
{
    if (m_minSamplingPeriod == period)
        return;
    m_minSamplingPeriod = period;
    emit minSamplingPeriodUpdated(period);
}

// Intake

std::shared_ptr<BatchMatcher> DisplayedMemoryKeyListModel::batchMatcher()
{
    if (!m_batchMatcher)
        m_batchMatcher = std::make_shared<BatchMatcher>(m_displayedKeys);
    return m_batchMatcher;
}

void DisplayedMemoryKeyListModel::displayedKeysHaveChanged()
{
    m_batchMatcher.reset();
    m_newestValues.reset();
}

void DisplayedMemoryKeyListModel::onDataGathered(const QMap<QString, QMap<double, QVariant>>& data)
{
    const GatheredData batch = data; // a slot may change the sender's map
    const std::shared_ptr<BatchMatcher> matcher = batchMatcher();
    const std::vector<BatchMatcher::Match> matches = matcher->match(batch);
    if (!m_newestValues)
        m_newestValues = std::make_shared<NewestValues>();
    const QSet<DisplayedMemoryKey> updatedKeys = m_newestValues->keep(matches, &m_displayedKeys);

    const QPointer<DisplayedMemoryKeyListModel> self(this);
    emit keysUpdated(updatedKeys);
    if (!self || !isRecording())
        return;
    if (m_batchMatcher == matcher)
        m_recording->write(matches);
    else
        recordData(batch); // a slot has changed the displayed keys
}

// Recording

void DisplayedMemoryKeyListModel::startRecording()
{
    m_recording->start();
}

void DisplayedMemoryKeyListModel::stopRecording()
{
    m_recording->stop();
}

bool DisplayedMemoryKeyListModel::isRecording()
{
    return m_isRecording;
}

QTemporaryFile* DisplayedMemoryKeyListModel::takeRecordFile()
{
    return m_recording->takeFile();
}

void DisplayedMemoryKeyListModel::recordData(const QMap<QString, QMap<double, QVariant>>& data)
{
    m_recording->write(batchMatcher()->match(data));
}

void DisplayedMemoryKeyListModel::xSetRecording(bool isRecording)
{
    if (m_isRecording == isRecording)
        return;
    m_isRecording = isRecording;
    emit recording(isRecording);
}

} // namespace Velk
