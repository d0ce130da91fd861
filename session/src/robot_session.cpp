// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <session/robot_session.h>

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <robotconnection/memory_interface.h>
#include <session/rebuilt_keys.h>
#include <session/sample_stream.h>

#include <utility>

namespace Velk {

RobotSession::RobotSession(std::unique_ptr<RobotLink> link, Use use, QObject* parent)
    : QObject(parent)
    , m_link(std::move(link))
{
    // The link's signals reach the session before the displayed key set, which rebuilds its keys after a connection,
    // and connectionEstablished() after it.
    connect(m_link.get(), &RobotLink::stateChanged, this, &RobotSession::onStateChanged);
    connect(m_link.get(), &RobotLink::realTimeSupportAnswered, this, &RobotSession::onRealTimeSupportAnswered);
    connect(m_link.get(), &RobotLink::failed, this, &RobotSession::failed);
    if (use == WatchKeys)
        createDisplayedKeys();
    m_samples = new SampleStream(m_link.get(), m_displayedKeys, this);
    connect(m_link.get(), &ConnectionManager::connectionEstablished, this, &RobotSession::onConnected);
}

RobotSession::~RobotSession()
{
    m_link->disconnect(this);
    if (m_displayedKeys)
        m_displayedKeys->disconnect(this);
}

void RobotSession::createDisplayedKeys()
{
    m_displayedKeys = new DisplayedMemoryKeyListModel(m_link.get());
    m_wantedPeriod = m_displayedKeys->samplingPeriod();
    using Model = DisplayedMemoryKeyListModel;
    connect(m_displayedKeys, &Model::robotConnected, this, &RobotSession::onRobotConnected);
    connect(m_displayedKeys, &Model::keysUpdated, this, &RobotSession::onKeysUpdated);
    connect(m_displayedKeys, &Model::keysAdded, this, &RobotSession::onKeysAdded);
    connect(m_displayedKeys, &Model::keysRemoved, this, &RobotSession::onKeysRemoved);
    connect(m_displayedKeys, &Model::error, this, &RobotSession::onError);
    connect(m_displayedKeys, &Model::minSamplingPeriodUpdated, this, &RobotSession::periodChanged);
    connect(m_displayedKeys, &Model::sampligPeriodUpdated, this, &RobotSession::periodChanged);
}

// Connection

void RobotSession::onStateChanged(RobotLink::State state)
{
    m_isRebuilding = state == RobotLink::Connected && m_displayedKeys;
    m_isCatalogueCurrent = false;
    m_isLimitKnown = false;
    if (state != RobotLink::Connected) {
        // Its lists may end empty, because the service has gone.
        dropFetchingCatalogue();
        xSetWatcherRunning(false);
        xSetReady(false);
    }
}

void RobotSession::onConnected()
{
    fetchCatalogue();
    proceed();
}

void RobotSession::onRobotConnected(bool isConnected)
{
    if (!isConnected)
        proceed();
}

void RobotSession::onRealTimeSupportAnswered()
{
    m_isLimitKnown = true;
    if (m_displayedKeys) {
        // The displayed key set keeps the period that it has bounded, and not the one that was asked for.
        m_displayedKeys->setSamplingPeriod(m_wantedPeriod);
        emit periodChanged();
    }
    proceed();
}

void RobotSession::askRealTimeSupport()
{
    // The link reports the answer to everyone.
    if (const boost::shared_ptr<MemoryInterface> memory = m_link->memoryInterface())
        memory->isRealTimeSupported(this, "ignoreAnswer");
}

void RobotSession::ignoreAnswer(bool) {}

// Catalogue

MemoryKeyListModel* RobotSession::catalogue() const
{
    return m_catalogue;
}

void RobotSession::setCatalogueWanted(bool isWanted)
{
    if (m_isCatalogueWanted == isWanted)
        return;
    m_isCatalogueWanted = isWanted;
    if (isWanted) {
        fetchCatalogue();
        return;
    }
    dropFetchingCatalogue();
    // Later: this may run in a slot of its signal.
    if (m_catalogue)
        m_catalogue->deleteLater();
    m_catalogue.clear();
    m_isCatalogueCurrent = false;
    proceed();
}

// Nothing when it is not wanted, cannot be fetched, or is being fetched.
void RobotSession::fetchCatalogue()
{
    if (!m_isCatalogueWanted || !m_link->isConnected() || m_fetchingCatalogue)
        return;
    m_fetchingCatalogue = new MemoryKeyListModel(m_link.get(), {});
    for (const QString& name : std::as_const(m_userKeys))
        m_fetchingCatalogue->addUserKey(name);
    // Never ready at once: a link that is connected has a memory service, whose lists come from the event loop.
    connect(m_fetchingCatalogue, &MemoryKeyListModel::ready, this, &RobotSession::onCatalogueReady);
}

void RobotSession::onCatalogueReady()
{
    const QPointer<MemoryKeyListModel> former = m_catalogue;
    m_catalogue = m_fetchingCatalogue;
    m_fetchingCatalogue.clear();
    m_isCatalogueCurrent = true;
    emit catalogueReady(m_catalogue);
    delete former;
    proceed();
}

void RobotSession::dropFetchingCatalogue()
{
    if (!m_fetchingCatalogue)
        return;
    m_fetchingCatalogue->disconnect(this);
    m_fetchingCatalogue->deleteLater();
    m_fetchingCatalogue.clear();
}

// Keys

void RobotSession::watch(const QSet<MemoryKey>& keys)
{
    if (!m_displayedKeys)
        return;
    xSetWatchedKeys(QSet<MemoryKey>(m_watchedKeys).unite(keys));
    proceed();
}

void RobotSession::watchByName(const QString& name)
{
    if (name.isEmpty() || !m_displayedKeys)
        return;
    const QSet<MemoryKey> key = asListed({MemoryKey(name, QString(), UnknownNature)});
    if (key.cbegin()->nature() == UnknownNature && !m_userKeys.contains(name)) {
        m_userKeys.append(name);
        for (MemoryKeyListModel* const catalogue : {m_catalogue.data(), m_fetchingCatalogue.data()}) {
            if (catalogue)
                catalogue->addUserKey(name);
        }
    }
    watch(key);
}

void RobotSession::unwatch(const QSet<MemoryKey>& keys)
{
    if (!m_displayedKeys)
        return;
    xSetWatchedKeys(QSet<MemoryKey>(m_watchedKeys).subtract(keys));
    proceed();
}

QSet<MemoryKey> RobotSession::asListed(const QSet<MemoryKey>& keys) const
{
    if (!m_catalogue)
        return keys;
    const QSet<MemoryKey> listed = m_catalogue->keys(MemoryKeyNature(DataNature | EventNature));
    QSet<MemoryKey> result;
    for (const MemoryKey& key : keys) {
        const auto found = listed.constFind(key);
        result.insert(found == listed.cend() ? key : *found);
    }
    return result;
}

void RobotSession::onKeysAdded()
{
    watchAddedKeys();
    updateWatcher();
}

// The keys that were added to the displayed key set since the session looked at it last. Those that a slot has removed
// from it meanwhile, or that the session was asked to unwatch, are not watched.
void RobotSession::watchAddedKeys()
{
    const QSet<MemoryKey> displayedKeys = m_displayedKeys->keys();
    const QSet<MemoryKey> addedKeys = QSet<MemoryKey>(displayedKeys).subtract(m_knownDisplayedKeys);
    m_knownDisplayedKeys = displayedKeys;
    xSetWatchedKeys(QSet<MemoryKey>(m_watchedKeys).unite(addedKeys));
}

void RobotSession::onKeysRemoved(const QSet<DisplayedMemoryKey>& keys)
{
    QSet<MemoryKey> removedKeys;
    for (const DisplayedMemoryKey& removed : keys)
        removedKeys.insert(removed.key());
    m_knownDisplayedKeys.subtract(removedKeys);
    xSetWatchedKeys(QSet<MemoryKey>(m_watchedKeys).subtract(removedKeys));
    updateWatcher();
}

void RobotSession::onKeysUpdated(const QSet<DisplayedMemoryKey>& keys)
{
    // Also when a late catalogue of a former connection rebuilds the set.
    if (!isRebuilt(keys, *m_displayedKeys, int(m_knownDisplayedKeys.size())))
        return;
    m_isRebuilding = false;
    m_knownDisplayedKeys = m_displayedKeys->keys();
    // Later: receivers of this signal are to see the rebuilt keys before they see the changes to them.
    QMetaObject::invokeMethod(this, &RobotSession::proceed, Qt::QueuedConnection);
}

void RobotSession::xSetWatchedKeys(const QSet<MemoryKey>& keys)
{
    if (m_watchedKeys == keys)
        return;
    m_watchedKeys = keys;
    emit watchedKeysChanged();
}

// Does what was postponed. Called after every event that can end a wait.
void RobotSession::proceed()
{
    if (m_displayedKeys && !m_isRebuilding && !m_fetchingCatalogue)
        displayWatchedKeys();
    updateWatcher();
    updateReadiness();
}

void RobotSession::displayWatchedKeys()
{
    const QSet<MemoryKey> surplus = m_displayedKeys->keys().subtract(m_watchedKeys);
    if (!surplus.isEmpty())
        m_displayedKeys->removeKeys(surplus);
    // After the removal: its slots may have changed what is watched.
    const QSet<MemoryKey> missing = QSet<MemoryKey>(m_watchedKeys).subtract(m_displayedKeys->keys());
    if (missing.isEmpty())
        return;
    m_isAddingOffline = !m_link->isConnected();
    m_displayedKeys->addKeys(asListed(missing));
    m_isAddingOffline = false;
}

void RobotSession::updateReadiness()
{
    const bool isCatalogueKnown = m_isCatalogueCurrent || !m_isCatalogueWanted;
    const bool isPeriodKnown =
        !m_displayedKeys || m_isLimitKnown || m_wantedPeriod >= m_displayedKeys->minSamplingPeriod();
    if (m_link->isConnected() && isCatalogueKnown && !m_isRebuilding && isPeriodKnown)
        xSetReady(true);
}

void RobotSession::xSetReady(bool isReady)
{
    if (m_isReady == isReady)
        return;
    m_isReady = isReady;
    emit readyChanged(isReady);
}

void RobotSession::onError(const QString& title, const QString& message)
{
    // addKeys() starts the watcher before it emits keysAdded(). Slots of failed() are to find the keys watched.
    watchAddedKeys();
    if (m_isAddingOffline)
        return;
    const QString error = title + QLatin1Char('\n') + message;
    if (error == m_lastError)
        return;
    m_lastError = error;
    QMetaObject::invokeMethod(
        this, [this] { m_lastError.clear(); }, Qt::QueuedConnection);
    emit failed(title, message);
}

// Period and watcher

void RobotSession::setWantedPeriod(int periodMs)
{
    if (!m_displayedKeys)
        return;
    m_wantedPeriod = periodMs;
    m_displayedKeys->setSamplingPeriod(periodMs);
    // Without a connection the displayed key set emits nothing.
    emit periodChanged();
    proceed();
}

int RobotSession::grantedPeriod() const
{
    return m_displayedKeys ? m_displayedKeys->samplingPeriod() : 0;
}

void RobotSession::setWatcherWanted(bool isWanted)
{
    if (m_isWatcherWanted == isWanted)
        return;
    m_isWatcherWanted = isWanted;
    updateWatcher();
    emit watcherChanged();
}

void RobotSession::updateWatcher()
{
    if (!m_displayedKeys)
        return;
    const bool canRun = m_link->isConnected() && !m_displayedKeys->displayedKeys().isEmpty();
    // addKeys() starts the watcher, wanted or not.
    if (!m_isWatcherWanted)
        m_displayedKeys->stopWatcher();
    else if (canRun)
        m_displayedKeys->startWatcher(false);
    xSetWatcherRunning(canRun && m_isWatcherWanted);
}

void RobotSession::xSetWatcherRunning(bool isRunning)
{
    if (m_isWatcherRunning == isRunning)
        return;
    m_isWatcherRunning = isRunning;
    if (!isRunning)
        m_samples->markGap();
    emit watcherChanged();
}

} // namespace Velk
