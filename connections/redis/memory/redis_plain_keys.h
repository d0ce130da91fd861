// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_PLAIN_KEYS_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_PLAIN_KEYS_H

#include "redis_key_space.h"

#include <connections/link/list_fetch.h>
#include <connections/redis/client/redis_inquiry.h>

#include <QFuture>
#include <QHash>
#include <QObject>
#include <QSet>
#include <QStringList>

#include <vector>

namespace Velk {

/// The keys of a server whose programs know nothing of the robot memory's layout: strings are data keys, streams are
/// event keys, and each field of a hash is a data key named KEY#FIELD. Only ever reads.
class RedisPlainKeys : public QObject, public RedisKeySpace
{
    Q_OBJECT

public:
    /// The session outlives this object. `pattern` is a glob pattern, as SCAN takes it.
    RedisPlainKeys(RedisSession* session, const QByteArray& pattern);
    /// Finishes what is being fetched.
    ~RedisPlainKeys() override;

    /// One SCAN fills all lists; a list that is requested meanwhile gets the result of the same SCAN. There are no
    /// micro-events.
    QFuture<QStringList> fetchNames(KeyKind kind) override;
    void finishLists() override;

    /// The bytes of a name that is not UTF-8 are remembered: the text does not preserve them.
    QByteArray rawName(const QString& name) const override { return m_rawNames.value(name, name.toUtf8()); }
    /// The key of that name, and for a name with a separator also the field of a hash.
    std::vector<RedisSource> sourcesOf(const QByteArray& rawName) const override;
    std::vector<QByteArrayList> neededCommands() const override;

private:
    struct Walk
    {
        QByteArray nextCursor; ///< empty: no portion is left
        QSet<QByteArray> seen;
        QSet<QString> data;
        QSet<QString> events;
    };
    struct Pending
    {
        KeyKind kind;
        ListFetch list;
    };

    void startWalk();
    void scan(const QByteArray& cursor);
    void onPortion(const RedisReply& reply);
    void askType(const QByteArray& key);
    void scanFields(const QByteArray& key, const QByteArray& cursor);
    void addName(QSet<QString>* names, const QByteArray& rawName);
    void onPortionKnown();
    void finish(const Walk& walk);

    RedisInquiry m_inquiry;
    QByteArray m_pattern;
    std::vector<Pending> m_pending; // lists that are being fetched
    bool m_isWalking = false;
    Walk m_walk;
    QHash<QString, QByteArray> m_rawNames; // only of names that are not UTF-8
};

} // namespace Velk

#endif
