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
    qint64 entriesAdded = 0; ///< -1: not known, or the server does not count

    /// The end of the stream, from the reply to XINFO STREAM.
    static RedisStreamPosition endOf(const RedisReply& streamInfo);

    /// Whether the server has come back with an older state of the stream, such as a snapshot, or a replica that lacks
    /// the newest entries. A stream that was deleted and created again is not meant: its ids, which are made from the
    /// server's clock, are newer than those that were read.
    bool isAheadOf(const RedisReply& streamInfo) const;

    /// Moves on to the state in the reply to XINFO STREAM and returns how many entries were discarded before they could
    /// be read. A stream that was deleted and created again is read from its start. One that came back older is read on
    /// from its newest entry, and nothing is counted: how many entries it lacks is not known.
    qint64 countTrimmed(const RedisReply& streamInfo);
};

/// Whether the entry `a` is older than the entry `b`. Ids are two numbers with "-" between them.
bool isOlderStreamId(QByteArrayView a, QByteArrayView b);

/// The time of an entry whose producer gave none: the first number of its id, in seconds.
double streamIdSeconds(QByteArrayView id);

} // namespace Velk

#endif
