#include <memorykeymodel/memory_key_list_model.h>

#include <robotconnection/connection_manager.h>
#include <robotconnection/memory_interface.h>

namespace Velk {

namespace {

QString descriptionOf(const QString& name)
{
    return name + QStringLiteral(" desc");
}

// The union that every result here is built by: an element that is there stays, whatever the other set holds
// under its name.
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
    // Counted before the result is read: reading it raises the exception of a fetch that failed, and the
    // list has been delivered all the same.
    --m_awaitedLists;
    const QStringList names = list.result();
    keys.reserve(keys.size() + names.size());
    for (const QString& name : names)
        keys.insert(MemoryKey(name, descriptionOf(name), nature));
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
    m_unknownKeys.clear();
    m_dataKeys.subtract(m_eventKeys);

    QSet<MemoryKey> candidates = m_selectedKeys;
    candidates.subtract(m_dataKeys).subtract(m_eventKeys);
    unite(candidates, m_userKeys);
    for (const MemoryKey& key : qAsConst(candidates))
        m_unknownKeys.insert(MemoryKey(key.name(), key.description(), UnknownNature));

    // Every selected key is in one of the three sets now, so none is lost. The catalogue's element replaces the
    // selected one, which an intersection of the two sets could keep instead.
    QSet<MemoryKey> selectedKeys;
    for (const MemoryKey& key : qAsConst(m_selectedKeys)) {
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
    QSet<MemoryKey> keys;
    if (nature & DataNature)
        unite(keys, m_dataKeys);
    if (nature & EventNature)
        unite(keys, m_eventKeys);
    if (nature & UnknownNature)
        unite(keys, m_unknownKeys);
    return keys;
}

void MemoryKeyListModel::selectKeys(const QSet<MemoryKey>& keys)
{
    m_selectedKeys = keys;
    updateKeyNatures();
}

void MemoryKeyListModel::addUserKey(const QString& name)
{
    // A copy of the stored key: a slot may delete this catalogue while others still read the argument.
    const MemoryKey key = *m_userKeys.insert(MemoryKey(name, descriptionOf(name), UnknownNature));
    updateKeyNatures();
    emit userKeyAdded(key);
}

} // namespace Velk
