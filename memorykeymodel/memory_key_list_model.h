// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

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

/// The catalogue: every key that the robot's memory lists, with its nature; the keys that the user typed in; and a
/// selection, whose natures the catalogue resolves.
///
/// A catalogue is for one connection: on construction it fetches the robot's three key lists once, in the background.
/// It can be queried at any time and answers from the lists that have arrived. Owned by its connection manager.
/// Everything runs, and every signal arrives, on that object's thread. It reports no errors: without a memory service
/// it is ready at once with no fetched keys, and a fetch that never ends leaves it not ready.
class MEMORYKEYMODEL_EXPORT MemoryKeyListModel : public QObject
{
    Q_OBJECT

public:
    /// Starts fetching. The catalogue may be ready when the constructor returns: ready() was then emitted before
    /// anything could connect to it. Call isReady() before you connect.
    MemoryKeyListModel(ConnectionManager* connectionManager, QSet<MemoryKey> selectedKeys);
    /// Does not wait for a running fetch and does not cancel it. Emits nothing.
    ~MemoryKeyListModel() override;

    /// Whether all lists have arrived and the natures are resolved. Once true, it stays true.
    bool isReady() const { return m_isReady; }

    /// Every key once. When the catalogue is ready, a name in the list of data keys and in a list of events is an event
    /// key; before, it is a data key. A user key that the robot lists has the nature of its list.
    QSet<MemoryKey> keys() const;
    /// The keys of the natures whose bits are set in `nature`; other bits are ignored. With UnknownNature alone, every
    /// user key is returned as unknown, also a key that the robot lists.
    QSet<MemoryKey> keys(MemoryKeyNature nature) const;

    /// The selection: a reference to the set itself, which shows later changes and is valid as long as the catalogue
    /// exists. Selected keys that the robot does not list stay selected, with UnknownNature.
    const QSet<MemoryKey>& selectedKeys() const { return m_selectedKeys; }
    /// Replaces the whole selection. Each key gets the nature and the description that the catalogue has for its name.
    /// Emits nothing.
    void selectKeys(const QSet<MemoryKey>& keys);

    /// Adds a key that the user typed in. Any name is accepted, unchanged. Emits userKeyAdded() every time, also when
    /// the name is a user key already or the robot lists it.
    void addUserKey(const QString& name);

Q_SIGNALS:
    /// All three lists have arrived and the natures are resolved. Emitted once by each catalogue, as its last
    /// statement: a slot may delete the catalogue. (A const signal: the declaration is part of the interface.)
    void ready() const;
    /// The end of every addUserKey(): the user key as it is stored, with UnknownNature. keys() contains the name by
    /// then, with the nature that the robot gives it.
    void userKeyAdded(const MemoryKey& key);

protected:
    /// Only for the constructor.
    void fetchKeys();
    /// Only for the three slots.
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
