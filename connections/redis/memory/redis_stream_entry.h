// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_STREAM_ENTRY_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_STREAM_ENTRY_H

#include <connections/redis/client/redis_reply.h>

#include <QByteArray>
#include <QVariant>

namespace Velk {

/// One entry of a stream as a sample.
struct RedisStreamEntry
{
    QByteArray id; ///< empty: the reply is no entry
    double stamp = 0.0;
    QVariant value;
    qint64 bytes = 0;    ///< of the value, as it was sent
    qint64 cutBytes = 0; ///< the length of a value that was too long for the reply; 0: it is complete

    /// The time is the field t, when that is a finite number, else that of the entry's id. The value is the JSON in the
    /// field v; an entry without one is a map of all its fields.
    static RedisStreamEntry of(const RedisReply& entry);
};

} // namespace Velk

#endif
