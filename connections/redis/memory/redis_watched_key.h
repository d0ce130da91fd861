// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_WATCHED_KEY_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_WATCHED_KEY_H

#include "redis_carry_over.h"
#include "redis_source.h"

#include <connections/link/sample_buffer.h>

#include <QByteArray>
#include <QString>

#include <memory>
#include <utility>
#include <vector>

namespace Velk {

/// A key that is watched, with the samples that wait to be delivered.
struct RedisWatchedKey
{
    explicit RedisWatchedKey(std::shared_ptr<SampleBudget> sampleBudget)
        : budget(std::move(sampleBudget))
        , samples(budget.get())
    {}

    QString name;
    QByteArray rawName;    ///< as the server spells it
    bool isWatched = true; ///< false: replies that are due still refer to the key
    bool wasResolved = false;
    std::vector<RedisSource> sources;
    std::shared_ptr<SampleBudget> budget; ///< of all keys of the connection
    SampleBuffer samples;
    RedisCarriedKey* carried = nullptr; ///< outlives the connection
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
