// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SOURCE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SOURCE_H

#include "redis_stream_position.h"

#include <QByteArray>
#include <QVariant>

namespace Velk {

/// A place on the server from which samples of a watched key come.
struct RedisSource
{
    enum Type
    {
        Unresolved, ///< not known yet: nothing is fetched
        Absent,     ///< there is nothing: looked for again from time to time
        Value,      ///< a string, or a field of a hash
        Stream,
        TooLong, ///< a value that is not fetched any more until it is shorter
        Unusable ///< something else
    };

    QByteArray key;
    QByteArray field;         ///< of the hash `key`, when isHashField
    QByteArray index;         ///< the set in which the robot lists the name; empty: every existing key counts as listed
    bool isHashField = false; ///< the source is a field of a hash
    bool isAlwaysStream = false; ///< of an event: only a stream is accepted

    Type type = Unresolved;
    bool isListed = false;

    // Of a value: most samples are equal to the one before, and decoding costs more than comparing.
    QByteArray newestBytes;
    QVariant newestValue;

    // Of a stream.
    RedisStreamPosition position;
    bool hasPosition = false;
    bool hasUncountedEntries = false; ///< entries were read since trimmed entries were last counted

    /// Whether the robot lists the names of such keys.
    bool hasIndex() const { return !index.isEmpty(); }
};

} // namespace Velk

#endif
