// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_KEY_LISTS_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_KEY_LISTS_H

#include <connections/link/list_fetch.h>
#include <connections/redis/client/redis_inquiry.h>

#include <QFuture>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <list>

namespace Velk {

/// Fetches the names in index sets. Every future gets its one result and finishes, whatever happens: an empty list when
/// the set cannot be read.
class RedisKeyLists : public QObject
{
    Q_OBJECT

public:
    /// The session outlives this object.
    explicit RedisKeyLists(RedisSession* session);
    /// Finishes what is being fetched.
    ~RedisKeyLists() override;

    QFuture<QStringList> fetch(const QByteArray& indexKey);
    /// Finishes what is being fetched, with empty lists: the connection is lost.
    void finishAll();

    /// Larger sets are fetched in portions, to let the server's other clients in between.
    static constexpr qint64 maxNamesAtOnce = 100000;

private:
    struct Fetch
    {
        Fetch(RedisSession* session, const QByteArray& key)
            : inquiry(session)
            , indexKey(key)
        {}

        RedisInquiry inquiry;
        QByteArray indexKey;
        ListFetch list;
        QSet<QString> names;
    };
    using FetchRef = std::list<Fetch>::iterator;

    void ask(FetchRef fetch);
    void askAll(FetchRef fetch);
    void scan(FetchRef fetch, const QByteArray& cursor);
    void finish(FetchRef fetch, const QStringList& names);
    void onError(FetchRef fetch, const RedisReply& reply);

    RedisSession* m_session;
    std::list<Fetch> m_fetches;
};

} // namespace Velk

#endif
