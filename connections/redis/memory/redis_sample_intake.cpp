// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_sample_intake.h"

#include <connections/link/unix_time.h>

#include <utility>

namespace Velk {

SampleLimits RedisSampleIntake::defaultLimits()
{
    SampleLimits limits;
    limits.samples = 250000;
    limits.bytes = 64 * 1024 * 1024;
    return limits;
}

RedisSampleIntake::RedisSampleIntake(std::shared_ptr<RedisCarryOver> carryOver, const SampleLimits& limits)
    : m_carryOver(std::move(carryOver))
    , m_budget(std::make_shared<SampleBudget>(limits))
{}

RedisWatchedKeyPtr RedisSampleIntake::createKey(const QString& name) const
{
    const auto key = std::make_shared<RedisWatchedKey>(m_budget);
    key->name = name;
    key->carried = m_carryOver->ofKey(name);
    return key;
}

void RedisSampleIntake::add(RedisWatchedKey& key, double stamp, const QVariant& value, qint64 bytes)
{
    key.samples.add(key.carried->stamps.next(stamp), value, bytes);
    const LossSpan dropped = key.samples.takeDropped();
    m_carryOver->ledger->record(key.carried->losses, LossCause::Dropped, dropped.count, dropped.from, dropped.to);
}

void RedisSampleIntake::countDropped(RedisWatchedKey& key, double stamp)
{
    m_carryOver->ledger->record(key.carried->losses, LossCause::Dropped, 1, stamp, stamp);
}

void RedisSampleIntake::countTrimmed(RedisWatchedKey& key, qint64 count)
{
    const double now = unixTime();
    m_carryOver->ledger->record(key.carried->losses, LossCause::Trimmed, count, now, now);
}

GatheredData RedisSampleIntake::take(const std::vector<RedisWatchedKeyPtr>& keys)
{
    GatheredData batch;
    for (const RedisWatchedKeyPtr& key : keys) {
        if (!key->samples.isEmpty())
            batch.insert(key->name, key->samples.take());
    }
    return batch;
}

} // namespace Velk
