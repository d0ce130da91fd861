// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLE_INTAKE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLE_INTAKE_H

#include "redis_carry_over.h"
#include "redis_watched_key.h"

#include <QMap>
#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace Velk {

/// Takes in the samples of watched keys between two deliveries. Bounded: a sample that does not fit is dropped and
/// counted. Time stamps of one key are strictly ascending, within a delivery and from one to the next.
class RedisSampleIntake
{
public:
    struct Limits
    {
        int samples = 250000;
        qint64 bytes = 64 * 1024 * 1024;
    };

    explicit RedisSampleIntake(std::shared_ptr<RedisCarryOver> carryOver)
        : RedisSampleIntake(std::move(carryOver), Limits())
    {}
    RedisSampleIntake(std::shared_ptr<RedisCarryOver> carryOver, const Limits& limits);

    /// A stamp that is not newer than the one before is moved to just after it. `bytes` is what the value takes beside
    /// what other samples share with it.
    void add(RedisWatchedKey& key, double stamp, const QVariant& value, qint64 bytes);
    void countDropped(RedisWatchedKey& key, qint64 count);
    void countTrimmed(RedisWatchedKey& key, qint64 count);

    /// How many more samples fit.
    int room() const;

    /// The samples that wait to be delivered; none wait afterwards.
    QMap<QString, QMap<double, QVariant>> take(const std::vector<RedisWatchedKeyPtr>& keys);

private:
    std::shared_ptr<RedisCarryOver> m_carryOver;
    Limits m_limits;
    int m_size = 0;
    qint64 m_bytes = 0;
};

} // namespace Velk

#endif
