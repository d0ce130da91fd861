#ifndef MEMORYKEYMODEL_MEMORY_KEY_LIST_MODEL_H
#define MEMORYKEYMODEL_MEMORY_KEY_LIST_MODEL_H

#include <memorykeymodel/memory_key.h>
#include <memorykeymodel/memorykeymodel_export.h>

#include <QFutureWatcher>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <array>

namespace Velk {

class ConnectionManager;

/// The catalogue: every key that the robot's memory lists, with its nature, together with the keys that the user typed
/// in and a selection whose natures the catalogue resolves.
///
/// Made for one connection: it fetches the robot's three key lists once, in the background, on construction. It can be
/// asked at any time and answers from what has arrived. Owned by its connection manager. Everything runs, and every
/// signal arrives, on that object's thread. It reports no errors: without a memory service it is ready at once
/// with no fetched keys, and a fetch that never ends leaves it not ready.
class MEMORYKEYMODEL_EXPORT MemoryKeyListModel : public QObject
{
    Q_OBJECT

public:
    /// Starts fetching. The catalogue may be ready when the constructor returns, with ready() emitted to nobody: ask
    /// isReady() before you connect to ready().
    MemoryKeyListModel(ConnectionManager* connectionManager, QSet<MemoryKey> selectedKeys);
    /// Neither waits for nor cancels a fetch that still runs. Emits nothing.
    ~MemoryKeyListModel() override;

    /// Whether all lists are in and the natures are settled; never false again afterwards.
    bool isReady() const { return m_isReady; }

    /// Every key once. A name that is in several sets is given as the robot lists it: data, event, then unknown.
    QSet<MemoryKey> keys() const;
    /// The keys of the natures whose bits are set in `nature`; other bits are ignored. UnknownNature gives every user
    /// key as unknown, also one that the robot lists.
    QSet<MemoryKey> keys(MemoryKeyNature nature) const;

    /// The selection: a reference to the set itself, which shows every later change and is valid as long as the
    /// catalogue. Selected keys that the robot does not list stay selected, with UnknownNature.
    const QSet<MemoryKey>& selectedKeys() const { return m_selectedKeys; }
    /// Replaces the whole selection and gives each key the nature and description that the catalogue has for its name.
    /// Emits nothing.
    void selectKeys(const QSet<MemoryKey>& keys);

    /// Adds a key that the user typed in; any name is accepted as it stands. Emits userKeyAdded() every time, also when
    /// the name is a user key already or the robot lists it.
    void addUserKey(const QString& name);

Q_SIGNALS:
    /// All three lists are filed and the natures settled. Emitted once in the life of a catalogue, as the last thing it
    /// does: a slot may delete it. (A const signal: the declaration is part of the interface.)
    void ready() const;
    /// Ends every addUserKey(): the user key as it is stored, with UnknownNature. keys() holds the name already, and
    /// tells the nature that the robot gives it.
    void userKeyAdded(const MemoryKey& key);

protected:
    /// Called by the constructor only.
    void fetchKeys();
    /// Called by the three slots only.
    void updateReadiness();

protected Q_SLOTS:
    void onDataKeysReceived();
    void onEventKeysReceived();
    void onMicroEventKeysReceived();

private:
    void updateKeyNatures();
    void forgetQueries();
    void fileNames(const QFutureWatcher<QStringList>& list, QSet<MemoryKey>& keys, MemoryKeyNature nature);

    ConnectionManager* m_connectionManager;
    QSet<MemoryKey> m_dataKeys;
    QSet<MemoryKey> m_eventKeys;
    QSet<MemoryKey> m_unknownKeys;
    QSet<MemoryKey> m_userKeys;
    QSet<MemoryKey> m_selectedKeys;
    QFutureWatcher<QStringList> m_dataList;
    QFutureWatcher<QStringList> m_eventList;
    QFutureWatcher<QStringList> m_microEventList;
    bool m_isReady = false;
    // Lists whose completion was not delivered yet. The watchers do not count them: in Qt 6 a watcher reports the state
    // of its future, and all three futures may be finished before the first list is filed.
    int m_awaitedLists = 3;
    // False from the arrival of a list until every name of both sets is removed from the data keys.
    bool m_areNaturesResolved = true;
    // Results of keys() by their mask, until a set changes.
    mutable std::array<QSet<MemoryKey>, 8> m_queries;
};

} // namespace Velk

#endif
