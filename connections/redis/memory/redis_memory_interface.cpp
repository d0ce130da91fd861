// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "redis_memory_interface.h"

#include <connections/link/list_fetch.h>

#include <utility>

namespace Velk {

namespace {

constexpr double realTimeRoundTripMs = 5.0;

} // namespace

RedisMemoryInterface::RedisMemoryInterface(RedisSession* session, const RedisUrl& url, const RedisMetadata& metadata,
                                           std::shared_ptr<RedisCarryOver> carryOver)
    : m_realTime(std::make_unique<RealTimeQuestion>())
    , m_roundTrips(std::make_unique<RedisRoundTrips>(session))
    , m_keySpace(RedisKeySpace::create(session, url))
    , m_sampler(std::make_unique<RedisSampler>(session, std::move(carryOver)))
{
    connect(m_realTime.get(), &RealTimeQuestion::asked, this, &RedisMemoryInterface::measureRealTime);
    connect(m_realTime.get(), &RealTimeQuestion::answered, this, &RedisMemoryInterface::realTimeAnswered);
    if (metadata.isRealTimeSupported)
        m_realTime->answer(*metadata.isRealTimeSupported);
    connect(m_sampler.get(), &RedisSampler::gathered, this, &RedisMemoryInterface::dataGathered);
}

RedisMemoryInterface::~RedisMemoryInterface() = default;

void RedisMemoryInterface::end(bool comesBack)
{
    if (!m_sampler)
        return;
    const std::unique_ptr<RedisSampler> sampler = std::move(m_sampler);
    const std::unique_ptr<RedisKeySpace> keySpace = std::move(m_keySpace);
    // Before a receiver of a list can open the link again, which empties the ledger.
    const bool wasRunning = sampler->isRunning();
    sampler->halt();
    keySpace->finishLists();
    m_roundTrips.reset();
    // An ended service answers no, to pending askers and to later ones.
    m_realTime->answer(false);
    m_realTime = std::make_unique<RealTimeQuestion>();
    m_realTime->answer(false);
    if (comesBack && wasRunning)
        sampler->endForReconnection();
}

std::vector<QByteArrayList> RedisMemoryInterface::neededCommands() const
{
    return m_keySpace ? m_keySpace->neededCommands() : std::vector<QByteArrayList>();
}

QFuture<QStringList> RedisMemoryInterface::fetchNames(KeyKind kind)
{
    return m_keySpace ? m_keySpace->fetchNames(kind) : ListFetch::finished();
}

QFuture<QStringList> RedisMemoryInterface::getDataList()
{
    return fetchNames(KeyKind::Data);
}

QFuture<QStringList> RedisMemoryInterface::getEventList()
{
    return fetchNames(KeyKind::Event);
}

QFuture<QStringList> RedisMemoryInterface::getMicroEventList()
{
    return fetchNames(KeyKind::MicroEvent);
}

void RedisMemoryInterface::watchKey(const QString& name, int period)
{
    if (!m_sampler)
        return;
    const QByteArray rawName = m_keySpace->rawName(name);
    m_sampler->watch(name, rawName, m_keySpace->sourcesOf(rawName), period);
}

void RedisMemoryInterface::unwatchKey(const QString& name)
{
    if (m_sampler)
        m_sampler->unwatch(name);
}

void RedisMemoryInterface::unwatchAll()
{
    if (m_sampler)
        m_sampler->unwatchAll();
}

void RedisMemoryInterface::startWatcher(int gatherPeriod, int samplingPeriod)
{
    if (m_sampler)
        m_sampler->start(gatherPeriod, samplingPeriod);
}

void RedisMemoryInterface::stopWatcher()
{
    if (m_sampler)
        m_sampler->stop();
}

void RedisMemoryInterface::setGatherPeriod(int period)
{
    if (m_sampler)
        m_sampler->setGatherPeriod(period);
}

void RedisMemoryInterface::setSamplingPeriod(int period)
{
    if (m_sampler)
        m_sampler->setSamplingPeriod(period);
}

void RedisMemoryInterface::isRealTimeSupported(QObject* receiver, const char* member)
{
    m_realTime->ask(receiver, member);
}

void RedisMemoryInterface::measureRealTime()
{
    m_roundTrips->measure([this](const std::vector<double>& timesMs) {
        m_realTime->answer(RedisRoundTrips::percentile99(timesMs) < realTimeRoundTripMs);
    });
}

} // namespace Velk
