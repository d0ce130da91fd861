#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_PLAIN_KEYS_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_PLAIN_KEYS_H

#include "redis_watched_key.h"

#include <connections/redis/client/redis_session.h>

#include <QFuture>
#include <QHash>
#include <QObject>
#include <QPromise>
#include <QSet>
#include <QStringList>

#include <vector>

namespace Velk {

/// The keys of a server whose programs know nothing of the robot memory's layout: strings are data keys, streams are
/// event keys, and each field of a hash is a data key named KEY#FIELD. Only ever reads.
class RedisPlainKeys : public QObject
{
    Q_OBJECT

public:
    /// The session outlives this object. `pattern` is a glob pattern, as SCAN takes it.
    RedisPlainKeys(RedisSession* session, const QByteArray& pattern);
    /// Finishes what is being fetched.
    ~RedisPlainKeys() override;

    /// Both lists come from one walk through the server's keys, which a list that is asked for meanwhile joins.
    QFuture<QStringList> fetchData() { return fetch(&m_dataPromises); }
    QFuture<QStringList> fetchEvents() { return fetch(&m_eventPromises); }
    void finishAll();

    /// The bytes of a name of the lists: a name that is not UTF-8 cannot be told from its text.
    QByteArray rawName(const QString& name) const { return m_rawNames.value(name, name.toUtf8()); }

    static std::vector<RedisSource> sourcesOf(const QByteArray& rawName);

private:
    using Promises = std::vector<QPromise<QStringList>>;

    QFuture<QStringList> fetch(Promises* promises);
    void startWalk();
    void scan(const QByteArray& cursor);
    void onPortion(const RedisReply& reply);
    void askType(const QByteArray& key);
    void scanFields(const QByteArray& key, const QByteArray& cursor);
    void addName(QSet<QString>* names, const QByteArray& rawName);
    void startCommand(const QByteArrayList& command, RedisSocket::Callback callback);
    void finish();
    static void answer(Promises* promises, const QSet<QString>& names);

    RedisSession* m_session;
    QByteArray m_pattern;
    Promises m_dataPromises;
    Promises m_eventPromises;
    bool m_isWalking = false;
    int m_outstanding = 0;
    QByteArray m_nextCursor; // empty: no portion is left
    QSet<QByteArray> m_seen;
    QSet<QString> m_data;
    QSet<QString> m_events;
    QHash<QString, QByteArray> m_rawNames; // only of names that are not UTF-8
};

} // namespace Velk

#endif
