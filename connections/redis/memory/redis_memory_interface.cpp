#include "redis_memory_interface.h"

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
                                           std::shared_ptr<RedisCarryOver> carryOver)
    : m_realTimeSupport(metadata.isRealTimeSupported)
    , m_roundTrips(std::make_unique<RedisRoundTrips>(session))
    , m_keySpace(RedisKeySpace::create(session, url))
    , m_sampler(std::make_unique<RedisSampler>(session, std::move(carryOver)))
{
    connect(m_sampler.get(), &RedisSampler::gathered, this, &RedisMemoryInterface::dataGathered);
}

RedisMemoryInterface::~RedisMemoryInterface() = default;

void RedisMemoryInterface::end(bool comesBack)
{
    if (!m_sampler)
        return;
    const std::unique_ptr<RedisSampler> sampler = std::move(m_sampler);
    const std::unique_ptr<RedisKeySpace> keySpace = std::move(m_keySpace);
    keySpace->finishLists();
    m_roundTrips.reset();
    m_realTimeSupport = false;
    if (!m_askers.empty())
        answerAskers(false);
    if (comesBack)
        sampler->endForReconnection();
}

std::vector<QByteArrayList> RedisMemoryInterface::neededCommands() const
{
    return m_keySpace ? m_keySpace->neededCommands() : std::vector<QByteArrayList>();
}

QFuture<QStringList> RedisMemoryInterface::fetchNames(KeyKind kind)
{
    return m_keySpace ? m_keySpace->fetchNames(kind) : emptyList();
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
    m_askers.push_back({receiver, member});
    if (m_realTimeSupport || !m_roundTrips) {
        answerAskers(m_realTimeSupport.value_or(false));
        return;
    }
    if (m_askers.size() > 1)
        return; // it is being measured
    m_roundTrips->measure([this](const std::vector<double>& timesMs) {
        answerAskers(RedisRoundTrips::percentile99(timesMs) < realTimeRoundTripMs);
    });
}

void RedisMemoryInterface::answerAskers(bool isSupported)
{
    // Queued: the receiver is not ready for the answer before it has asked.
    for (const Asker& asker : std::exchange(m_askers, {})) {
        if (asker.receiver)
            QMetaObject::invokeMethod(asker.receiver, asker.member.constData(), Qt::QueuedConnection,
                                      Q_ARG(bool, isSupported));
    }
    m_realTimeSupport = isSupported;
    emit realTimeAnswered(isSupported);
}

} // namespace Velk
