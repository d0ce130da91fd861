#include "redis_sampler.h"

#include <QPointer>

#include <algorithm>
#include <utility>

namespace Velk {

namespace {

constexpr int resolvePeriodMs = 1000;
// What is read between two deliveries is delivered late anyway; more often than that keeps the replies short.
constexpr int minStreamPeriodMs = 10;
constexpr int maxStreamPeriodMs = 100;
// Keys that are looked for again in one go.
constexpr int unresolvedKeysPerPeriod = 1000;

} // namespace

RedisSampler::RedisSampler(RedisSession* session, std::shared_ptr<RedisCarryOver> carryOver)
    : m_session(session)
    , m_carryOver(carryOver)
    , m_queue(carryOver)
    , m_resolver(session, &m_queue)
    , m_streams(session, &m_queue)
{
    connect(&m_gatherTimer, &RedisPeriodicTimer::timeout, this, &RedisSampler::deliver);
    connect(&m_streamTimer, &RedisPeriodicTimer::timeout, &m_streams, &RedisStreamReader::read);
    m_resolveTimer.setInterval(resolvePeriodMs);
    connect(&m_resolveTimer, &QTimer::timeout, this, &RedisSampler::resolveAgain);
    m_groupTimer.setSingleShot(true);
    connect(&m_groupTimer, &QTimer::timeout, this, &RedisSampler::group);
    connect(&m_resolver, &RedisKeyResolver::resolved, this, &RedisSampler::scheduleGrouping);
}

RedisSampler::~RedisSampler() = default;

void RedisSampler::watch(const QString& name, const QByteArray& rawName, std::vector<RedisSource> sources, int periodMs)
{
    const int boundedPeriodMs = std::max(1, periodMs);
    const auto found = m_keys.find(name);
    if (found != m_keys.end()) {
        found->second->periodMs = boundedPeriodMs;
    } else {
        const auto key = std::make_shared<RedisWatchedKey>();
        key->name = name;
        key->rawName = rawName;
        key->periodMs = boundedPeriodMs;
        key->sources = std::move(sources);
        key->carried = m_carryOver->ofKey(name);
        m_keys.emplace(name, key);
        m_unresolved.push_back(key);
    }
    if (isRunning())
        scheduleGrouping();
}

void RedisSampler::unwatch(const QString& name)
{
    const auto found = m_keys.find(name);
    if (found == m_keys.end())
        return;
    found->second->isWatched = false;
    found->second->carried->positions.clear();
    m_keys.erase(found);
    if (isRunning())
        scheduleGrouping();
}

void RedisSampler::unwatchAll()
{
    // Positions are kept: after a reconnection everything is unwatched and watched again before reading goes on.
    for (const auto& [name, key] : m_keys)
        key->isWatched = false;
    m_keys.clear();
    m_unresolved.clear();
    m_resolver.clear();
    if (isRunning())
        scheduleGrouping();
}

void RedisSampler::start(int gatherPeriodMs, int samplingPeriodMs)
{
    m_samplingPeriodMs = samplingPeriodMs;
    startTimers(gatherPeriodMs);
    m_resolveTimer.start();
    scheduleGrouping();
}

void RedisSampler::startTimers(int gatherPeriodMs)
{
    m_gatherTimer.start(std::max(1, gatherPeriodMs));
    m_streamTimer.start(std::clamp(gatherPeriodMs / 2, minStreamPeriodMs, maxStreamPeriodMs));
}

void RedisSampler::stopTimers()
{
    m_gatherTimer.stop();
    m_streamTimer.stop();
    m_resolveTimer.stop();
    m_groupTimer.stop();
    m_groups.clear();
    m_streams.setSources({});
    m_resolver.clear();
}

void RedisSampler::stop()
{
    if (!isRunning())
        return;
    stopTimers();
    forgetPositions();
    m_unresolved.clear();
    for (const auto& [name, key] : m_keys) {
        for (RedisSource& source : key->sources) {
            source.type = RedisSource::Unresolved;
            source.hasPosition = false;
        }
        key->wasResolved = false;
        m_unresolved.push_back(key);
    }
    m_queue.take(m_unresolved);
}

void RedisSampler::forgetPositions()
{
    for (auto& [name, carried] : m_carryOver->keys)
        carried.positions.clear();
}

void RedisSampler::setGatherPeriod(int periodMs)
{
    if (isRunning())
        startTimers(periodMs);
}

void RedisSampler::setSamplingPeriod(int periodMs)
{
    m_samplingPeriodMs = periodMs;
    if (isRunning())
        scheduleGrouping();
}

void RedisSampler::endForReconnection()
{
    if (!isRunning())
        return;
    stopTimers();
    std::vector<RedisWatchedKeyPtr> keys;
    for (const auto& [name, key] : m_keys) {
        keys.push_back(key);
        for (const RedisSource& source : key->sources) {
            // An unresolved one may still be the stream that it was.
            const bool mayBeStream = source.type == RedisSource::Stream || source.type == RedisSource::Unresolved;
            if (mayBeStream && source.hasPosition)
                key->carried->positions.insert(source.key, source.position);
        }
    }
    const QMap<QString, QMap<double, QVariant>> rest = m_queue.take(keys);
    if (!rest.isEmpty())
        emit gathered(rest);
}

void RedisSampler::deliver()
{
    std::vector<RedisWatchedKeyPtr> keys;
    keys.reserve(m_keys.size());
    for (const auto& [name, key] : m_keys)
        keys.push_back(key);
    // Last statement on purpose: a receiver may end the connection, and this object with it.
    emit gathered(m_queue.take(keys));
}

void RedisSampler::resolveAgain()
{
    m_streams.countTrimmed();

    std::vector<RedisWatchedKeyPtr> unresolvedKeys;
    auto next = m_keys.lower_bound(m_nextUnresolvedKey);
    for (std::size_t i = 0; i < m_keys.size() && unresolvedKeys.size() < unresolvedKeysPerPeriod; ++i, ++next) {
        if (next == m_keys.end())
            next = m_keys.begin();
        if (next->second->wasResolved && RedisKeyResolver::isUnresolved(*next->second)) {
            next->second->wasResolved = false; // not twice at once
            unresolvedKeys.push_back(next->second);
        }
    }
    m_nextUnresolvedKey = next == m_keys.end() ? QString() : next->first;
    if (!unresolvedKeys.empty())
        m_resolver.resolve(unresolvedKeys);
}

void RedisSampler::scheduleGrouping()
{
    // Keys come one by one: all that come in one turn of the event loop are grouped together.
    if (!m_groupTimer.isActive())
        m_groupTimer.start(0);
}

void RedisSampler::group()
{
    if (!isRunning())
        return;
    if (!m_unresolved.empty())
        m_resolver.resolve(std::exchange(m_unresolved, {}));

    std::map<int, std::vector<RedisWatchedKeyPtr>> keysOfPeriod;
    std::vector<RedisSourceRef> streams;
    for (const auto& [name, key] : m_keys) {
        keysOfPeriod[samplingPeriodOf(*key)].push_back(key);
        for (std::size_t i = 0; i < key->sources.size(); ++i) {
            if (key->sources[i].type == RedisSource::Stream)
                streams.push_back({key, i});
        }
    }
    m_streams.setSources(streams);
    // A group of a period that no key has any more takes on a new one: its ticks go on, however often periods change.
    std::vector<std::unique_ptr<RedisSamplingGroup>> unused;
    for (auto samplingGroup = m_groups.begin(); samplingGroup != m_groups.end();) {
        if (keysOfPeriod.count(samplingGroup->first)) {
            ++samplingGroup;
        } else {
            unused.push_back(std::move(samplingGroup->second));
            samplingGroup = m_groups.erase(samplingGroup);
        }
    }
    for (const auto& [period, keys] : keysOfPeriod) {
        std::unique_ptr<RedisSamplingGroup>& samplingGroup = m_groups[period];
        if (!samplingGroup && !unused.empty()) {
            samplingGroup = std::move(unused.back());
            unused.pop_back();
            samplingGroup->setPeriod(period);
        } else if (!samplingGroup) {
            samplingGroup = std::make_unique<RedisSamplingGroup>(period, m_session, &m_queue, m_carryOver);
        }
        samplingGroup->setKeys(keys);
    }
}

int RedisSampler::samplingPeriodOf(const RedisWatchedKey& key) const
{
    return m_samplingPeriodMs > 0 ? m_samplingPeriodMs : key.periodMs;
}

} // namespace Velk
