// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_sampler.h"

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr int resolvePeriodMs = 1000;
// Streams are read twice per delivery, which keeps the replies short; reading more often would deliver nothing earlier.
constexpr int minStreamPeriodMs = 10;
constexpr int maxStreamPeriodMs = 100;
// Keys that are looked for again in one go.
constexpr int unresolvedKeysPerPeriod = 1000;

} // namespace

RedisSampler::RedisSampler(RedisSession* session, std::shared_ptr<RedisCarryOver> carryOver)
    : m_session(session)
    , m_carryOver(carryOver)
    , m_intake(carryOver)
    , m_resolver(session, &m_intake)
    , m_streams(session, &m_intake)
{
    connect(&m_schedule, &SamplingSchedule::groupingDue, this, &RedisSampler::group);
    connect(&m_schedule, &SamplingSchedule::samplingDue, this, &RedisSampler::sample);
    connect(&m_schedule, &SamplingSchedule::ticksMissed, this, &RedisSampler::countMissedTicks);
    connect(&m_schedule, &SamplingSchedule::deliveryDue, this, &RedisSampler::deliver);
    connect(&m_resolver, &RedisKeyResolver::resolved, &m_schedule, &SamplingSchedule::scheduleGrouping);
    m_resolveTimer.setInterval(resolvePeriodMs);
    connect(&m_resolveTimer, &QTimer::timeout, this, &RedisSampler::resolveAgain);
}

RedisSampler::~RedisSampler() = default;

void RedisSampler::watch(const QString& name, const QByteArray& rawName, std::vector<RedisSource> sources, int periodMs)
{
    m_keys.watch(name, periodMs, [&] {
        const RedisWatchedKeyPtr key = m_intake.createKey(name);
        key->rawName = rawName;
        key->sources = std::move(sources);
        m_unresolved.push_back(key);
        return key;
    });
    m_schedule.scheduleGrouping();
}

void RedisSampler::unwatch(const QString& name)
{
    const RedisWatchedKeyPtr* const key = m_keys.find(name);
    if (!key)
        return;
    m_schedule.scheduleGrouping();
    (*key)->isWatched = false;
    (*key)->samples.clear();
    (*key)->carried->positions.clear();
    m_keys.unwatch(name);
}

void RedisSampler::unwatchAll()
{
    m_schedule.scheduleGrouping();
    // Positions are kept: after a reconnection everything is unwatched and watched again before reading goes on.
    for (const auto& [name, entry] : m_keys.entries()) {
        entry.key->isWatched = false;
        entry.key->samples.clear();
    }
    m_keys.unwatchAll();
    m_unresolved.clear();
    m_resolver.clear();
}

void RedisSampler::start(int gatherPeriodMs, int samplingPeriodMs)
{
    m_schedule.start(gatherPeriodMs);
    m_resolveTimer.start();
    setGatherPeriod(gatherPeriodMs);
    setSamplingPeriod(samplingPeriodMs);
}

void RedisSampler::halt()
{
    m_schedule.stop();
    m_resolveTimer.stop();
    m_groups.clear();
    m_streams.clear();
    m_resolver.clear();
}

void RedisSampler::stop()
{
    if (!isRunning())
        return;
    halt();
    forgetPositions();
    m_unresolved = allKeys();
    for (const RedisWatchedKeyPtr& key : m_unresolved) {
        for (RedisSource& source : key->sources) {
            source.type = RedisSource::Unresolved;
            source.hasPosition = false;
        }
        key->wasResolved = false;
    }
    for (const RedisWatchedKeyPtr& key : m_unresolved)
        key->samples.clear();
}

void RedisSampler::forgetPositions()
{
    for (auto& [name, carried] : m_carryOver->keys)
        carried.positions.clear();
}

void RedisSampler::setGatherPeriod(int periodMs)
{
    m_streamPeriodMs = std::clamp(periodMs / 2, minStreamPeriodMs, maxStreamPeriodMs);
    m_schedule.setGatherPeriod(periodMs);
    m_schedule.scheduleGrouping();
}

void RedisSampler::setSamplingPeriod(int periodMs)
{
    m_keys.setSamplingPeriod(periodMs);
    m_schedule.scheduleGrouping();
}

void RedisSampler::endForReconnection()
{
    const std::vector<RedisWatchedKeyPtr> keys = allKeys();
    for (const RedisWatchedKeyPtr& key : keys) {
        for (const RedisSource& source : key->sources) {
            // An unresolved one may still be the stream that it was.
            const bool mayBeStream = source.type == RedisSource::Stream || source.type == RedisSource::Unresolved;
            if (mayBeStream && source.hasPosition)
                key->carried->positions.insert(source.key, source.position);
        }
    }
    const GatheredData rest = RedisSampleIntake::take(keys);
    if (!rest.isEmpty())
        emit gathered(rest);
}

void RedisSampler::sample(int periodMs, qint64 missedTicks)
{
    if (periodMs == m_streamPeriodMs)
        m_streams.read();
    const auto found = m_groups.find(periodMs);
    if (found != m_groups.end())
        found->second->tick(periodMs, missedTicks);
}

void RedisSampler::countMissedTicks(int periodMs, qint64 count)
{
    const auto found = m_groups.find(periodMs);
    if (found != m_groups.end())
        found->second->countMissedTicks(periodMs, count);
}

void RedisSampler::deliver()
{
    // Last statement on purpose: a receiver may end the connection, and this object with it.
    emit gathered(RedisSampleIntake::take(allKeys()));
}

std::vector<RedisWatchedKeyPtr> RedisSampler::allKeys() const
{
    std::vector<RedisWatchedKeyPtr> keys;
    keys.reserve(m_keys.entries().size());
    for (const auto& [name, entry] : m_keys.entries())
        keys.push_back(entry.key);
    return keys;
}

void RedisSampler::resolveAgain()
{
    m_streams.countTrimmed();

    const auto& entries = m_keys.entries();
    std::vector<RedisWatchedKeyPtr> keys;
    auto next = entries.lower_bound(m_nextUnresolvedKey);
    for (std::size_t i = 0; i < entries.size() && keys.size() < unresolvedKeysPerPeriod; ++i, ++next) {
        if (next == entries.end())
            next = entries.begin();
        const RedisWatchedKeyPtr& key = next->second.key;
        if (key->wasResolved && RedisKeyResolver::isUnresolved(*key)) {
            key->wasResolved = false; // not twice at once
            keys.push_back(key);
        }
    }
    m_nextUnresolvedKey = next == entries.end() ? QString() : next->first;
    if (!keys.empty())
        m_resolver.resolve(keys);
}

void RedisSampler::group()
{
    if (!m_unresolved.empty())
        m_resolver.resolve(std::exchange(m_unresolved, {}));

    std::vector<RedisSourceRef> streams;
    for (const auto& [name, entry] : m_keys.entries()) {
        for (std::size_t i = 0; i < entry.key->sources.size(); ++i) {
            if (entry.key->sources[i].type == RedisSource::Stream)
                streams.push_back({entry.key, i});
        }
    }
    m_streams.setSources(streams);

    std::vector<int> periods = m_keys.group();
    // A group whose period is no longer used gets a new period, so that its outstanding replies are still used.
    std::map<int, std::unique_ptr<RedisSamplingGroup>> unused = std::exchange(m_groups, {});
    std::vector<int> newPeriods;
    for (const int period : periods) {
        if (auto found = unused.extract(period))
            m_groups.insert(std::move(found));
        else
            newPeriods.push_back(period);
    }
    for (const int period : newPeriods) {
        if (unused.empty())
            m_groups.emplace(period, std::make_unique<RedisSamplingGroup>(m_session, &m_intake, m_carryOver));
        else
            m_groups.emplace(period, std::move(unused.extract(unused.begin()).mapped()));
    }
    for (const auto& [period, samplingGroup] : m_groups) {
        std::vector<RedisWatchedKeyPtr> keys;
        for (const auto* const entry : m_keys.keysOfPeriod(period))
            keys.push_back(entry->key);
        samplingGroup->setKeys(keys);
    }
    // Streams come first in a turn: reading them is not kept waiting by the replies to a tick.
    if (!m_groups.count(m_streamPeriodMs))
        periods.insert(periods.begin(), m_streamPeriodMs);
    m_schedule.setPeriods(periods);
}

} // namespace Velk
