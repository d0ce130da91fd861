// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_WATCHED_KEY_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_WATCHED_KEY_H

#include "redis_carry_over.h"
#include "redis_source.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace Velk {

/// A key that is watched, with the samples that wait to be delivered.
struct RedisWatchedKey
{
    QString name;
    QByteArray rawName;    ///< as the server spells it
    bool isWatched = true; ///< false: replies that are due still refer to the key
    bool wasResolved = false;
    std::vector<RedisSource> sources;
    QMap<double, QVariant> samples;
    RedisCarriedKey* carried; ///< outlives the connection
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
