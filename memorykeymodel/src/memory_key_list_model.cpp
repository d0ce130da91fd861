// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <memorykeymodel/memory_key_list_model.h>

#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

#include <utility>

namespace Velk {

namespace {

// Adds the keys whose names are not in `keys` yet. The other elements stay unchanged.
void unite(QSet<MemoryKey>& keys, const QSet<MemoryKey>& others)
{
    if (keys.isEmpty())
        keys = others;
    else
        keys.unite(others);
}

} // namespace

MemoryKeyListModel::MemoryKeyListModel(ConnectionManager* connectionManager, QSet<MemoryKey> selectedKeys)
    : QObject(connectionManager)
    , m_connectionManager(connectionManager)
    , m_selectedKeys(selectedKeys)
    , m_dataList(this)
    , m_eventList(this)
    , m_microEventList(this)
{
    connect(&m_dataList, &QFutureWatcherBase::finished, this, &MemoryKeyListModel::onDataKeysReceived);
    connect(&m_eventList, &QFutureWatcherBase::finished, this, &MemoryKeyListModel::onEventKeysReceived);
    connect(&m_microEventList, &QFutureWatcherBase::finished, this, &MemoryKeyListModel::onMicroEventKeysReceived);
    fetchKeys();
}

MemoryKeyListModel::~MemoryKeyListModel() = default;

void MemoryKeyListModel::fetchKeys()
{
    const boost::shared_ptr<MemoryInterface> memory = m_connectionManager->memoryInterface();
    if (!memory) {
        m_awaitedLists = 0;
        updateReadiness();
        return;
    }
    m_dataList.setFuture(memory->getDataList());
    m_eventList.setFuture(memory->getEventList());
    m_microEventList.setFuture(memory->getMicroEventList());
}

void MemoryKeyListModel::onDataKeysReceived()
{
    fileNames(m_dataList, m_dataKeys, DataNature);
    updateReadiness();
}

void MemoryKeyListModel::onEventKeysReceived()
{
    fileNames(m_eventList, m_eventKeys, EventNature);
    updateReadiness();
}

void MemoryKeyListModel::onMicroEventKeysReceived()
{
    fileNames(m_microEventList, m_eventKeys, EventNature);
    updateReadiness();
}

void MemoryKeyListModel::fileNames(const QFutureWatcher<QStringList>& list, QSet<MemoryKey>& keys,
                                   MemoryKeyNature nature)
{
    // Before the result is read: reading the result of a failed fetch throws, and that list counts as delivered too.
    --m_awaitedLists;
    const QStringList names = list.result();
    forgetQueries();
    m_areNaturesResolved = false;
    keys.reserve(keys.size() + names.size());
    for (const QString& name : names)
        keys.insert(MemoryKey(name, nature));
}

void MemoryKeyListModel::updateReadiness()
{
    if (m_awaitedLists > 0)
        return;
    updateKeyNatures();
    m_isReady = true;
    // Last statement on purpose: a receiver of ready() may delete this catalogue.
    emit ready();
}

void MemoryKeyListModel::updateKeyNatures()
{
    forgetQueries();
    if (!m_areNaturesResolved) {
        m_dataKeys.subtract(m_eventKeys);
        m_areNaturesResolved = true;
    }

    // The rest visits the selected keys and the user keys only, not every name that the robot lists.
    m_unknownKeys.clear();
    for (const MemoryKey& key : std::as_const(m_selectedKeys)) {
        if (!m_dataKeys.contains(key) && !m_eventKeys.contains(key))
            m_unknownKeys.insert(MemoryKey(key.name(), key.description(), UnknownNature));
    }
    // After the selected keys: the element of a key that is selected and typed in is the selected one.
    unite(m_unknownKeys, m_userKeys);

    // Every selected key is in one of the three sets now, so none is lost. Not an intersection of sets: QSet may keep
    // the element of either operand, and the catalogue's element must replace the selected one.
    QSet<MemoryKey> selectedKeys;
    selectedKeys.reserve(m_selectedKeys.size());
    for (const MemoryKey& key : std::as_const(m_selectedKeys)) {
        for (const QSet<MemoryKey>* keys : {&m_dataKeys, &m_eventKeys, &m_unknownKeys}) {
            const auto found = keys->constFind(key);
            if (found != keys->constEnd()) {
                selectedKeys.insert(*found);
                break;
            }
        }
    }
    m_selectedKeys = selectedKeys;
}

QSet<MemoryKey> MemoryKeyListModel::keys() const
{
    return keys(MemoryKeyNature(DataNature | EventNature | UnknownNature));
}

QSet<MemoryKey> MemoryKeyListModel::keys(MemoryKeyNature nature) const
{
    const std::size_t query = std::size_t(nature & (DataNature | EventNature | UnknownNature));
    QSet<MemoryKey>& keys = m_queries[query];
    if (keys.isEmpty()) {
        if (nature & DataNature)
            unite(keys, m_dataKeys);
        if (nature & EventNature)
            unite(keys, m_eventKeys);
        if (nature & UnknownNature)
            unite(keys, m_unknownKeys);
    }
    return keys;
}

void MemoryKeyListModel::forgetQueries()
{
    m_queries.fill(QSet<MemoryKey>());
}

void MemoryKeyListModel::selectKeys(const QSet<MemoryKey>& keys)
{
    m_selectedKeys = keys;
    updateKeyNatures();
}

void MemoryKeyListModel::addUserKey(const QString& name)
{
    // A copy of the stored key: a slot may delete this catalogue before the next slot reads the argument.
    const MemoryKey key = *m_userKeys.insert(MemoryKey(name, UnknownNature));
    updateKeyNatures();
    emit userKeyAdded(key);
}

} // namespace Velk
