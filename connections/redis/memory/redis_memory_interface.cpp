#include "redis_memory_interface.h"

#include "redis_plain_keys.h"

#include <connections/redis/client/redis_round_trips.h>

#include <QMetaObject>

#include <utility>

namespace Velk {

namespace {

constexpr double realTimeRoundTripMs = 5.0;

QFuture<QStringList> emptyList()
{
    QPromise<QStringList> promise;
    promise.start();
    promise.addResult(QStringList());
    promise.finish();
    return promise.future();
}

} // namespace

RedisMemoryInterface::RedisMemoryInterface(RedisSession* session, const RedisUrl& url, const RedisMetadata& metadata,
                                           std::shared_ptr<RedisSamplingHistory> history)
    : m_session(session)
    , m_layout(url.robot())
    , m_isPlain(url.isPlain())
    , m_metadata(metadata)
    , m_lists(std::make_unique<RedisKeyLists>(session))
    , m_plainKeys(m_isPlain ? std::make_unique<RedisPlainKeys>(session, url.plainPattern().toUtf8()) : nullptr)
    , m_sampler(std::make_unique<RedisSampler>(session, m_layout, std::move(history)))
{
    connect(m_sampler.get(), &RedisSampler::gathered, this, &RedisMemoryInterface::dataGathered);
}

RedisMemoryInterface::~RedisMemoryInterface() = default;

void RedisMemoryInterface::end(bool comesBack)
{
    if (!m_sampler)
        return;
    const std::unique_ptr<RedisSampler> sampler = std::move(m_sampler);
    const std::unique_ptr<RedisKeyLists> lists = std::move(m_lists);
    const std::unique_ptr<RedisPlainKeys> plainKeys = std::move(m_plainKeys);
    lists->finishAll();
    if (plainKeys)
        plainKeys->finishAll();
    if (comesBack)
        sampler->endForReconnection();
}

QFuture<QStringList> RedisMemoryInterface::getDataList()
{
    if (m_plainKeys)
        return m_plainKeys->fetchData();
    return m_lists ? m_lists->fetch(m_layout.dataIndex()) : emptyList();
}

QFuture<QStringList> RedisMemoryInterface::getEventList()
{
    if (m_plainKeys)
        return m_plainKeys->fetchEvents();
    return m_lists ? m_lists->fetch(m_layout.eventIndex()) : emptyList();
}

QFuture<QStringList> RedisMemoryInterface::getMicroEventList()
{
    return m_lists && !m_isPlain ? m_lists->fetch(m_layout.microEventIndex()) : emptyList();
}

void RedisMemoryInterface::watchKey(const QString& name, int period)
{
    if (!m_sampler)
        return;
    const QByteArray raw = rawName(name);
    m_sampler->watch(name, raw, sourcesOf(raw), period);
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
    const std::optional<bool> said = m_sampler && m_session ? m_metadata.isRealTimeSupported : false;
    if (said) {
        answer(receiver, member, *said);
        return;
    }
    auto* const roundTrips = new RedisRoundTrips(m_session, this);
    roundTrips->measure([this, roundTrips, receiver = QPointer<QObject>(receiver),
                         member = QByteArray(member)](const std::vector<double>& timesMs) {
        roundTrips->deleteLater();
        if (receiver)
            answer(receiver, member, RedisRoundTrips::percentile99(timesMs) < realTimeRoundTripMs);
    });
}

// Never from within the question: the answer can come at any time later, and whoever asks is not ready for it sooner.
void RedisMemoryInterface::answer(QObject* receiver, const QByteArray& member, bool isSupported)
{
    QMetaObject::invokeMethod(receiver, member.constData(), Qt::QueuedConnection, Q_ARG(bool, isSupported));
    emit realTimeAnswered(isSupported);
}

QByteArray RedisMemoryInterface::rawName(const QString& name) const
{
    return m_plainKeys ? m_plainKeys->rawName(name) : name.toUtf8();
}

std::vector<RedisSource> RedisMemoryInterface::sourcesOf(const QByteArray& rawName) const
{
    if (m_isPlain)
        return RedisPlainKeys::sourcesOf(rawName);
    std::vector<RedisSource> sources(3);
    sources[0].nature = RedisSource::Data;
    sources[0].key = m_layout.data(rawName);
    sources[1].nature = RedisSource::Event;
    sources[1].key = m_layout.event(rawName);
    sources[2].nature = RedisSource::MicroEvent;
    sources[2].key = m_layout.microEvent(rawName);
    return sources;
}

} // namespace Velk
