// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_sample_intake.h"

#include <connections/link/unix_time.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace Velk {

namespace {

// The resolution of the server's clock, in which the robot's producers count as well.
constexpr double stampStep = 1e-6;

double stampAfter(double previous)
{
    const double next = previous + stampStep;
    return next > previous ? next : std::nextafter(previous, std::numeric_limits<double>::infinity());
}

} // namespace

RedisSampleIntake::RedisSampleIntake(std::shared_ptr<RedisCarryOver> carryOver, const Limits& limits)
    : m_carryOver(std::move(carryOver))
    , m_limits(limits)
{}

void RedisSampleIntake::add(RedisWatchedKey& key, double stamp, const QVariant& value, qint64 bytes)
{
    if (room() == 0) {
        countDropped(key, 1);
        return;
    }
    double& newestStamp = key.carried->newestStamp;
    newestStamp = stamp > newestStamp ? stamp : stampAfter(newestStamp);
    key.samples.insert(key.samples.cend(), newestStamp, value);
    ++m_size;
    m_bytes += bytes;
}

void RedisSampleIntake::countDropped(RedisWatchedKey& key, qint64 count)
{
    const double now = unixTime();
    m_carryOver->ledger->record(key.carried->losses, LossCause::Dropped, count, now, now);
}

void RedisSampleIntake::countTrimmed(RedisWatchedKey& key, qint64 count)
{
    const double now = unixTime();
    m_carryOver->ledger->record(key.carried->losses, LossCause::Trimmed, count, now, now);
}

int RedisSampleIntake::room() const
{
    return m_bytes >= m_limits.bytes ? 0 : std::max(0, m_limits.samples - m_size);
}

QMap<QString, QMap<double, QVariant>> RedisSampleIntake::take(const std::vector<RedisWatchedKeyPtr>& keys)
{
    QMap<QString, QMap<double, QVariant>> batch;
    for (const RedisWatchedKeyPtr& key : keys) {
        if (!key->samples.isEmpty())
            batch.insert(key->name, std::exchange(key->samples, {}));
    }
    m_size = 0;
    m_bytes = 0;
    return batch;
}

} // namespace Velk
