#include "watch_session.h"

#include "period_control.h"

#include <memorykeymodel/displayed_memory_key_list_model.h>
#include <memorykeymodel/memory_key_list_model.h>

namespace Velk {

WatchSession::WatchSession(std::unique_ptr<RobotLink> link, QObject* parent)
    : QObject(parent)
    , m_link(std::move(link))
{
    // Before the model connects itself to the link: its own slot has run when the change of state is known here.
    connect(m_link.get(), &RobotLink::stateChanged, this, &WatchSession::onStateChanged);
    connect(m_link.get(), &RobotLink::failed, this, &WatchSession::onLinkFailed);
    m_model = new DisplayedMemoryKeyListModel(m_link.get());
    m_period = new PeriodControl(m_model, m_model);
    connect(m_model, &DisplayedMemoryKeyListModel::robotConnected, this, &WatchSession::onRobotConnected);
    connect(m_model, &DisplayedMemoryKeyListModel::keysUpdated, this, &WatchSession::onKeysUpdated);
    connect(m_model, &DisplayedMemoryKeyListModel::keysAdded, this, &WatchSession::onKeysAdded);
    connect(m_model, &DisplayedMemoryKeyListModel::keysRemoved, this, &WatchSession::onKeysRemoved);
    connect(m_model, &DisplayedMemoryKeyListModel::error, this, &WatchSession::onModelError);
}

WatchSession::~WatchSession()
{
    // The models are told of nothing that the link does in its destructor.
    disconnect(m_link.get(), nullptr, this, nullptr);
    disconnect(m_model, nullptr, this, nullptr);
}

MemoryKeyListModel* WatchSession::catalogue() const
{
    return m_catalogue;
}

// Keys

void WatchSession::watch(const QSet<MemoryKey>& keys)
{
    if (keys.isEmpty())
        return;
    xSetWatchedKeys(QSet<MemoryKey>(m_watchedKeys).unite(keys));
    displayWatchedKeys();
}

void WatchSession::watchByName(const QString& name)
{
    const MemoryKey unknown(name, QString(), UnknownNature);
    if (!m_userKeys.contains(name) && !name.isEmpty()) {
        const QSet<MemoryKey> listed =
            m_catalogue ? m_catalogue->keys(MemoryKeyNature(DataNature | EventNature)) : QSet<MemoryKey>();
        const auto found = listed.constFind(unknown);
        if (found != listed.constEnd()) {
            watch({*found});
            return;
        }
        m_userKeys.append(name);
        if (m_catalogue)
            m_catalogue->addUserKey(name);
    }
    if (!name.isEmpty())
        watch({unknown});
}

void WatchSession::unwatch(const QSet<MemoryKey>& keys)
{
    if (keys.isEmpty())
        return;
    xSetWatchedKeys(QSet<MemoryKey>(m_watchedKeys).subtract(keys));
    displayWatchedKeys();
}

void WatchSession::onKeysAdded(const QSet<DisplayedMemoryKey>& keys)
{
    QSet<MemoryKey> watched = m_watchedKeys;
    for (const DisplayedMemoryKey& displayed : keys)
        watched.insert(displayed.key());
    xSetWatchedKeys(watched);
    updateWatcher();
}

void WatchSession::onKeysRemoved(const QSet<DisplayedMemoryKey>& keys)
{
    QSet<MemoryKey> watched = m_watchedKeys;
    for (const DisplayedMemoryKey& displayed : keys)
        watched.remove(displayed.key());
    xSetWatchedKeys(watched);
    updateWatcher();
}

void WatchSession::xSetWatchedKeys(const QSet<MemoryKey>& keys)
{
    if (m_watchedKeys == keys)
        return;
    m_watchedKeys = keys;
    emit watchedKeysChanged();
}

void WatchSession::displayWatchedKeys()
{
    if (m_isRebuilding)
        return;
    const QSet<MemoryKey> displayed = m_model->keys();
    const QSet<MemoryKey> missing = QSet<MemoryKey>(m_watchedKeys).subtract(displayed);
    const QSet<MemoryKey> surplus = QSet<MemoryKey>(displayed).subtract(m_watchedKeys);
    if (!surplus.isEmpty())
        m_model->removeKeys(surplus);
    if (!missing.isEmpty()) {
        // The model reports that it cannot start the watcher without a robot. That is no news to the user, who sees the
        // state of the connection and may well choose keys before.
        m_isAddingOffline = !m_model->isRobotConnected();
        m_model->addKeys(missing);
        m_isAddingOffline = false;
    }
    updateWatcher();
}

// Connection

void WatchSession::onStateChanged(RobotLink::State state)
{
    m_isRebuilding = state == RobotLink::Connected;
    if (state == RobotLink::Connected || state == RobotLink::Disconnected)
        m_lastFailure.clear();
    if (state != RobotLink::Connected)
        xSetWatcherRunning(false);
}

void WatchSession::onRobotConnected(bool isConnected)
{
    if (!isConnected) {
        m_isRebuilding = false;
        displayWatchedKeys();
        return;
    }
    delete m_fetchingCatalogue;
    m_fetchingCatalogue = new MemoryKeyListModel(m_link.get(), {});
    for (const QString& name : std::as_const(m_userKeys))
        m_fetchingCatalogue->addUserKey(name);
    if (m_fetchingCatalogue->isReady())
        onCatalogueReady();
    else
        connect(m_fetchingCatalogue, &MemoryKeyListModel::ready, this, &WatchSession::onCatalogueReady);
    displayWatchedKeys();
}

void WatchSession::onKeysUpdated()
{
    // A catalogue that is late, from a connection that broke meanwhile, rebuilds the keys at any time.
    const bool isRebuilt = m_isRebuilding || m_model->displayedKeys().size() != m_watchedKeys.size();
    m_isRebuilding = false;
    // The model's slot goes on after the signal.
    if (isRebuilt)
        QMetaObject::invokeMethod(this, &WatchSession::displayWatchedKeys, Qt::QueuedConnection);
}

void WatchSession::onCatalogueReady()
{
    MemoryKeyListModel* const former = m_catalogue;
    m_catalogue = m_fetchingCatalogue;
    m_fetchingCatalogue = nullptr;
    emit catalogueReady(m_catalogue);
    delete former;
}

void WatchSession::onLinkFailed(const QString& title, const QString& message)
{
    // A link that tries again fails again, and for the same reason: the user has been told.
    const QString failure = title + QLatin1Char('\n') + message;
    if (failure == m_lastFailure)
        return;
    m_lastFailure = failure;
    emit failed(title, message);
}

void WatchSession::onModelError(const QString& title, const QString& message)
{
    if (!m_isAddingOffline)
        emit failed(title, message);
}

// Watcher

void WatchSession::setWatcherWanted(bool isWanted)
{
    if (m_isWatcherWanted == isWanted)
        return;
    m_isWatcherWanted = isWanted;
    updateWatcher();
    emit watcherChanged();
}

void WatchSession::updateWatcher()
{
    const bool canRun = m_model->isRobotConnected() && !m_isRebuilding && !m_model->displayedKeys().isEmpty() &&
                        m_link->memoryInterface();
    // addKeys() starts the watcher, wanted or not.
    if (!m_isWatcherWanted)
        m_model->stopWatcher();
    else if (canRun)
        m_model->startWatcher(false);
    xSetWatcherRunning(canRun && m_isWatcherWanted);
}

void WatchSession::xSetWatcherRunning(bool isRunning)
{
    if (m_isWatcherRunning == isRunning)
        return;
    m_isWatcherRunning = isRunning;
    emit watcherChanged();
}

} // namespace Velk
