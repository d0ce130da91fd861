#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_WATCHED_KEY_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_WATCHED_KEY_H

#include "redis_sampling_history.h"
#include "redis_stream_position.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace Velk {

/// A place on the server from which samples of a watched key come.
struct RedisSource
{
    enum Nature
    {
        Data,       ///< of the robot memory's layout
        Event,      ///< the same
        MicroEvent, ///< the same
        PlainKey,   ///< in plain mode: the key itself
        PlainField  ///< in plain mode: a field of a hash
    };
    enum Type
    {
        Unasked, ///< not known yet: nothing is fetched
        Absent,  ///< there is nothing: asked for again from time to time
        Value,   ///< a string, or a hash's field
        Stream,
        TooLong, ///< a value that is not fetched any more until it is shorter
        Unusable ///< something else
    };

    Nature nature;
    QByteArray key;
    QByteArray field; ///< of a PlainField
    Type type = Unasked;
    bool isListed = false; ///< whether the robot lists the name as being of this nature

    // Of a value: most samples are equal to the one before, and decoding costs more than comparing.
    QByteArray newestBytes;
    QVariant newestValue;

    // Of a stream.
    RedisStreamPosition position;
    bool hasPosition = false;
    bool hasUncountedEntries = false; ///< read since it was last checked what the server had discarded
};

/// A key that is watched, with the samples that wait to be delivered.
struct RedisWatchedKey
{
    QString name;
    QByteArray rawName; ///< as the server spells it
    int periodMs;
    bool isWatched = true; ///< replies that are due still refer to a key that is watched no longer
    bool wasSettled = false;
    std::vector<RedisSource> sources;
    QMap<double, QVariant> samples;
    RedisKeyHistory* history;
};

using RedisWatchedKeyPtr = std::shared_ptr<RedisWatchedKey>;

/// One source of a watched key, which it keeps alive.
struct RedisSourceRef
{
    RedisWatchedKeyPtr key;
    std::size_t index;

    RedisSource& source() const { return key->sources[index]; }
};

} // namespace Velk

#endif
