#include "embedded_memory_interface.h"

#include <QMetaObject>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace Velk {

namespace {

// Keys per holding of the memory's mutex: the robot's threads, which may be control loops, wait for no more than
// these, however many keys are watched.
constexpr int keysPerSamplingLock = 512;
constexpr int keysPerDeliveryLock = 32;

qint64 nextMultiple(int period, qint64 time)
{
    return (time / period + 1) * period;
}

bool isMultipleWithin(int period, qint64 after, qint64 upTo)
{
    return upTo / period > after / period;
}

/// Holds a mutex for a run of keys, and lets others have it every so often.
class StridingLock
{
public:
    StridingLock(std::mutex& mutex, int keysPerLock)
        : m_lock(mutex)
        , m_keysPerLock(keysPerLock)
    {}

    void nextKey()
    {
        if (++m_keys % m_keysPerLock == 0) {
            m_lock.unlock();
            m_lock.lock();
        }
    }

private:
    std::unique_lock<std::mutex> m_lock;
    int m_keysPerLock;
    int m_keys = 0;
};

} // namespace

EmbeddedMemoryInterface::Subscription::Subscription(int watchPeriod, std::shared_ptr<MemorySlot> memorySlot,
                                                    SampleQueue sampleQueue)
    : period(watchPeriod)
    , slot(std::move(memorySlot))
    , queue(std::move(sampleQueue))
{}

EmbeddedMemoryInterface::EmbeddedMemoryInterface(std::shared_ptr<RobotMemory> memory,
                                                 std::shared_ptr<DropCounts> dropCounts, int queueCapacity,
                                                 bool isRealTimeSupported)
    : m_memory(std::move(memory))
    , m_dropCounts(std::move(dropCounts))
    , m_queueCapacity(queueCapacity)
    , m_isRealTimeSupported(isRealTimeSupported)
{}

EmbeddedMemoryInterface::~EmbeddedMemoryInterface()
{
    shutDown();
    finishLists();
}

void EmbeddedMemoryInterface::shutDown()
{
    stopWatcher();
    unwatchAll();
    m_isShutDown = true;
}

QFuture<QStringList> EmbeddedMemoryInterface::getDataList()
{
    return fetch(KeyKind::Data);
}

QFuture<QStringList> EmbeddedMemoryInterface::getEventList()
{
    return fetch(KeyKind::Event);
}

QFuture<QStringList> EmbeddedMemoryInterface::getMicroEventList()
{
    return fetch(KeyKind::MicroEvent);
}

QFuture<QStringList> EmbeddedMemoryInterface::fetch(KeyKind kind)
{
    // The names are there already, but a caller of a fetch counts on getting the future before it is finished.
    if (m_pendingLists.empty())
        QMetaObject::invokeMethod(this, &EmbeddedMemoryInterface::finishLists, Qt::QueuedConnection);
    m_pendingLists.push_back({{}, m_isShutDown ? QStringList() : m_memory->d->names(kind)});
    QFutureInterface<QStringList>& future = m_pendingLists.back().future;
    future.reportStarted();
    return future.future();
}

void EmbeddedMemoryInterface::finishLists()
{
    // Out of the member first: what continues from a finished future may fetch again, or let go of this object.
    std::vector<PendingList> lists = std::exchange(m_pendingLists, {});
    for (PendingList& list : lists) {
        list.future.reportResult(list.names);
        list.future.reportFinished();
    }
}

void EmbeddedMemoryInterface::watchKey(const QString& name, int period)
{
    if (m_isShutDown)
        return;
    const int periodMs = std::max(period, 1);
    m_isGroupingValid = false;
    const auto found = m_subscriptions.find(name);
    if (found != m_subscriptions.end()) {
        found->second.period = periodMs;
    } else {
        SampleQueue::DropCount& dropped = (*m_dropCounts)[name];
        if (!dropped)
            dropped = std::make_shared<std::atomic<qint64>>(0);
        Subscription& subscription =
            m_subscriptions.try_emplace(name, periodMs, m_memory->d->watch(name), SampleQueue(m_queueCapacity, dropped))
                .first->second;
        if (m_isRunning) {
            const std::lock_guard<std::mutex> lock(m_memory->d->mutex);
            RobotMemoryPrivate::listen(*subscription.slot, &subscription.queue);
        }
    }
    arm();
}

void EmbeddedMemoryInterface::unwatchKey(const QString& name)
{
    const auto found = m_subscriptions.find(name);
    if (found == m_subscriptions.end())
        return;
    endSubscription(found->second);
    m_subscriptions.erase(found);
    m_groups.clear();
    m_isGroupingValid = false;
}

void EmbeddedMemoryInterface::unwatchAll()
{
    for (auto& [name, subscription] : m_subscriptions)
        endSubscription(subscription);
    m_subscriptions.clear();
    m_groups.clear();
    m_isGroupingValid = false;
}

void EmbeddedMemoryInterface::endSubscription(Subscription& subscription)
{
    if (m_isRunning) {
        const std::lock_guard<std::mutex> lock(m_memory->d->mutex);
        RobotMemoryPrivate::stopListening(*subscription.slot, &subscription.queue);
    }
    m_memory->d->unwatch(subscription.slot);
}

void EmbeddedMemoryInterface::startWatcher(int gatherPeriod, int samplingPeriod)
{
    if (m_isShutDown)
        return;
    if (!m_isRunning) {
        m_isRunning = true;
        m_clock.start();
        m_lastWake = 0;
        StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
        for (auto& [name, subscription] : m_subscriptions) {
            RobotMemoryPrivate::listen(*subscription.slot, &subscription.queue);
            lock.nextKey();
        }
    }
    m_gatherPeriod = std::max(gatherPeriod, 1);
    m_samplingPeriod = std::max(samplingPeriod, 0);
    m_isGroupingValid = false;
    arm();
}

void EmbeddedMemoryInterface::stopWatcher()
{
    if (!m_isRunning)
        return;
    m_isRunning = false;
    m_timer.stop();
    StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
    for (auto& [name, subscription] : m_subscriptions) {
        RobotMemoryPrivate::stopListening(*subscription.slot, &subscription.queue);
        // Whoever stops the watcher has stopped listening: the next start begins with what happens from then on.
        subscription.queue.clear();
        lock.nextKey();
    }
}

void EmbeddedMemoryInterface::setGatherPeriod(int period)
{
    m_gatherPeriod = std::max(period, 1);
    arm();
}

void EmbeddedMemoryInterface::setSamplingPeriod(int period)
{
    m_samplingPeriod = std::max(period, 0);
    m_isGroupingValid = false;
    arm();
}

void EmbeddedMemoryInterface::isRealTimeSupported(QObject* receiver, const char* member)
{
    if (!receiver || !member)
        return;
    // Queued to the receiver itself: the answer comes from its event loop, in its thread, also when this object is gone
    // by then, and is dropped with the receiver.
    QMetaObject::invokeMethod(receiver, member, Qt::QueuedConnection,
                              Q_ARG(bool, m_isRealTimeSupported && !m_isShutDown));
    emit realTimeAnswered(m_isRealTimeSupported);
}

void EmbeddedMemoryInterface::timerEvent(QTimerEvent* event)
{
    if (event->timerId() == m_timer.timerId())
        onTimer();
    else
        MemoryInterface::timerEvent(event);
}

void EmbeddedMemoryInterface::regroup()
{
    m_groups.clear();
    for (auto& [name, subscription] : m_subscriptions)
        m_groups[m_samplingPeriod > 0 ? m_samplingPeriod : subscription.period].push_back(&subscription);
    m_isGroupingValid = true;
}

void EmbeddedMemoryInterface::arm()
{
    if (!m_isRunning)
        return;
    const qint64 now = m_clock.elapsed();
    if (!m_isGroupingValid) {
        // Many keys are often watched in a row: they are sorted into groups once, when the event loop is back.
        m_timer.start(0, this);
        return;
    }
    qint64 next = nextMultiple(m_gatherPeriod, now);
    for (const auto& [period, subscriptions] : m_groups)
        next = std::min(next, nextMultiple(period, now));
    m_timer.start(static_cast<int>(next - now), Qt::PreciseTimer, this);
}

void EmbeddedMemoryInterface::onTimer()
{
    if (!m_isGroupingValid)
        regroup();
    const qint64 lastWake = std::exchange(m_lastWake, m_clock.elapsed());
    double now = 0.0;
    for (const auto& [period, subscriptions] : m_groups) {
        if (!isMultipleWithin(period, lastWake, m_lastWake))
            continue;
        if (now == 0.0) {
            const std::lock_guard<std::mutex> lock(m_memory->d->mutex);
            now = m_memory->d->tick();
        }
        sample(subscriptions, now);
    }
    arm();
    if (!isMultipleWithin(m_gatherPeriod, lastWake, m_lastWake))
        return;
    // Last, and with a hold on this object: a slot may stop the watcher, start it again or close the connection.
    const auto keepAlive = shared_from_this();
    emit dataGathered(takeBatch());
}

void EmbeddedMemoryInterface::sample(const std::vector<Subscription*>& subscriptions, double now)
{
    StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
    for (Subscription* subscription : subscriptions) {
        MemorySlot& slot = *subscription->slot;
        if (slot.kind == KeyKind::Data && slot.hasValue) {
            const double timeStamp =
                slot.isStampedByRobot
                    ? slot.newest.timeStamp
                    : std::max(now, std::nextafter(subscription->lastSampled, std::numeric_limits<double>::infinity()));
            if (timeStamp > subscription->lastSampled) {
                subscription->lastSampled = timeStamp;
                slot.lastTimeStamp = std::max(slot.lastTimeStamp, timeStamp);
                subscription->queue.push(timeStamp, slot.newest.value);
            }
        }
        lock.nextKey();
    }
}

QMap<QString, QMap<double, QVariant>> EmbeddedMemoryInterface::takeBatch()
{
    QMap<QString, QMap<double, QVariant>> batch;
    StridingLock lock(m_memory->d->mutex, keysPerDeliveryLock);
    for (auto& [name, subscription] : m_subscriptions) {
        if (!subscription.queue.isEmpty())
            batch.insert(batch.cend(), name, subscription.queue.take());
        lock.nextKey();
    }
    return batch;
}

} // namespace Velk
