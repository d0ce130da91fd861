// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLE_INTAKE_H
#define CONNECTIONS_REDIS_MEMORY_REDIS_SAMPLE_INTAKE_H

#include "redis_carry_over.h"
#include "redis_watched_key.h"

#include <connections/link/sample_buffer.h>
#include <robotconnection/memory_interface.h>

#include <QString>
#include <QVariant>

#include <memory>
#include <vector>

namespace Velk {

/// Buffers the samples of watched keys between two deliveries, and records in the ledger what is lost. Time stamps of
/// one key are strictly ascending, within a delivery and from one to the next.
class RedisSampleIntake
{
public:
    /// At most 250 000 samples and 64 MiB in the buffers of all keys.
    static SampleLimits defaultLimits();

    explicit RedisSampleIntake(std::shared_ptr<RedisCarryOver> carryOver, const SampleLimits& limits = defaultLimits());

    /// A key of this name, without samples, sources and losses.
    RedisWatchedKeyPtr createKey(const QString& name) const;

    /// A stamp that is not newer than the one before is moved to just after it. `bytes` as for SampleBuffer::add().
    void add(RedisWatchedKey& key, double stamp, const QVariant& value, qint64 bytes);
    /// One sample of that time was too long.
    void countDropped(RedisWatchedKey& key, double stamp);
    /// The server had discarded entries before now.
    void countTrimmed(RedisWatchedKey& key, qint64 count);

    /// How many more samples fit.
    int room() const { return m_budget->room(); }

    /// The samples that wait to be delivered; none wait afterwards.
    static GatheredData take(const std::vector<RedisWatchedKeyPtr>& keys);

private:
    std::shared_ptr<RedisCarryOver> m_carryOver;
    std::shared_ptr<SampleBudget> m_budget;
};

} // namespace Velk

#endif
