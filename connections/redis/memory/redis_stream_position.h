// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_STREAM_POSITION_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_STREAM_POSITION_H

#include <connections/redis/client/redis_reply.h>

#include <QByteArray>
#include <QByteArrayView>

namespace Velk {

/// How far a stream has been read: the id of the newest entry that was read, and how many entries had been added up to
/// and including it. The number shows what the server has discarded unread: ids have gaps, numbers have none.
struct RedisStreamPosition
{
    QByteArray id = "0-0";
    qint64 entriesAdded = 0; ///< -1: the server does not count

    /// The end of the stream, from the reply to XINFO STREAM.
    static RedisStreamPosition endOf(const RedisReply& streamInfo);

    /// Moves on to the state in the reply to XINFO STREAM and returns how many entries were discarded before they could
    /// be read. A stream that was deleted and begun anew is read from its start.
    qint64 countTrimmed(const RedisReply& streamInfo);
};

/// Whether the entry `a` is older than the entry `b`. Ids are two numbers with "-" between them.
bool isOlderStreamId(QByteArrayView a, QByteArrayView b);

/// The time of an entry whose producer gave none: the first number of its id, in seconds.
double streamIdSeconds(QByteArrayView id);

} // namespace Velk

#endif
