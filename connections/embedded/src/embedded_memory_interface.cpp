// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "embedded_memory_interface.h"

#include <connections/link/unix_time.h>

#include <QMetaObject>

namespace Velk {

namespace {

// Keys per holding of the memory's mutex: the robot's threads, which may be control loops, wait for no more than
// these, however many keys are watched.
constexpr int keysPerSamplingLock = 512;
constexpr int keysPerDeliveryLock = 32;

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

SampleLimits limitsPerKey(int capacity)
{
    SampleLimits limits;
    limits.samplesPerKey = capacity;
    return limits;
}

} // namespace

EmbeddedMemoryInterface::EmbeddedMemoryInterface(std::shared_ptr<RobotMemory> memory, LossLedger* ledger,
                                                 int bufferCapacity, bool isRealTimeSupported)
    : m_memory(std::move(memory))
    , m_ledger(ledger)
    , m_budget(limitsPerKey(bufferCapacity))
{
    connect(&m_schedule, &SamplingSchedule::groupingDue, this, [this] { m_schedule.setPeriods(m_watched.group()); });
    connect(&m_schedule, &SamplingSchedule::samplingDue, this, &EmbeddedMemoryInterface::sample);
    connect(&m_schedule, &SamplingSchedule::ticksMissed, this, &EmbeddedMemoryInterface::countMissedTicks);
    connect(&m_schedule, &SamplingSchedule::deliveryDue, this, &EmbeddedMemoryInterface::deliver);
    m_realTimeQuestion.answer(isRealTimeSupported);
}

EmbeddedMemoryInterface::~EmbeddedMemoryInterface()
{
    shutDown();
    finishLists();
}

void EmbeddedMemoryInterface::shutDown()
{
    stopWatcher();
    unwatchAll();
    m_ledger = nullptr;
}

void EmbeddedMemoryInterface::collectLosses()
{
    if (!m_ledger)
        return;
    StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
    for (auto& [name, entry] : m_watched.entries()) {
        const LossSpan dropped = entry.key.listener.buffer.takeDropped();
        m_ledger->record(entry.key.losses, LossCause::Dropped, dropped.count, dropped.from, dropped.to);
        lock.nextKey();
    }
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
    m_pendingLists.emplace_back(ListFetch(), m_ledger ? m_memory->d->names(kind) : QStringList());
    return m_pendingLists.back().first.future();
}

void EmbeddedMemoryInterface::finishLists()
{
    // Out of the member first: what continues from a finished future may fetch again, or let go of this object.
    auto lists = std::exchange(m_pendingLists, {});
    for (auto& [list, names] : lists)
        list.finish(names);
}

void EmbeddedMemoryInterface::watchKey(const QString& name, int period)
{
    if (!m_ledger)
        return;
    const bool isNew = m_watched.watch(name, period, [&] {
        return Subscription{m_memory->d->watch(name), MemoryListener(&m_budget), m_ledger->account(name)};
    });
    if (isNew && m_schedule.isRunning()) {
        Subscription& subscription = *m_watched.find(name);
        const std::lock_guard<std::mutex> lock(m_memory->d->mutex);
        RobotMemoryPrivate::listen(*subscription.slot, &subscription.listener);
    }
    m_schedule.scheduleGrouping();
}

void EmbeddedMemoryInterface::unwatchKey(const QString& name)
{
    if (Subscription* const subscription = m_watched.find(name)) {
        m_schedule.scheduleGrouping();
        endSubscription(*subscription);
        m_watched.unwatch(name);
    }
}

void EmbeddedMemoryInterface::unwatchAll()
{
    m_schedule.scheduleGrouping();
    for (auto& [name, entry] : m_watched.entries())
        endSubscription(entry.key);
    m_watched.unwatchAll();
}

void EmbeddedMemoryInterface::endSubscription(Subscription& subscription)
{
    LossSpan dropped;
    {
        const std::lock_guard<std::mutex> lock(m_memory->d->mutex);
        if (m_schedule.isRunning())
            RobotMemoryPrivate::stopListening(*subscription.slot, &subscription.listener);
        dropped = subscription.listener.buffer.takeDropped();
        subscription.listener.buffer.clear(); // here and not at its destruction: the budget is guarded as well
    }
    m_ledger->record(subscription.losses, LossCause::Dropped, dropped.count, dropped.from, dropped.to);
    m_memory->d->unwatch(subscription.slot);
}

void EmbeddedMemoryInterface::startWatcher(int gatherPeriod, int samplingPeriod)
{
    if (!m_ledger)
        return;
    if (!m_schedule.isRunning()) {
        StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
        for (auto& [name, entry] : m_watched.entries()) {
            RobotMemoryPrivate::listen(*entry.key.slot, &entry.key.listener);
            lock.nextKey();
        }
    }
    m_schedule.start(gatherPeriod);
    setSamplingPeriod(samplingPeriod);
}

void EmbeddedMemoryInterface::stopWatcher()
{
    if (!m_schedule.isRunning())
        return;
    m_schedule.stop();
    collectLosses();
    StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
    for (auto& [name, entry] : m_watched.entries()) {
        RobotMemoryPrivate::stopListening(*entry.key.slot, &entry.key.listener);
        // Nobody receives any more: the next start begins with what happens from then on.
        entry.key.listener.buffer.clear();
        lock.nextKey();
    }
}

void EmbeddedMemoryInterface::setGatherPeriod(int period)
{
    m_schedule.setGatherPeriod(period);
}

void EmbeddedMemoryInterface::setSamplingPeriod(int period)
{
    m_watched.setSamplingPeriod(period);
    m_schedule.scheduleGrouping();
}

void EmbeddedMemoryInterface::isRealTimeSupported(QObject* receiver, const char* member)
{
    if (m_ledger) {
        m_realTimeQuestion.ask(receiver, member);
        return;
    }
    RealTimeQuestion question;
    question.answer(false);
    question.ask(receiver, member);
}

// Keys of several periods that are due together share it, too. Called with the memory's mutex held.
double EmbeddedMemoryInterface::momentOfTurn()
{
    if (m_sampledTurn != m_schedule.turn()) {
        m_sampledTurn = m_schedule.turn();
        m_sampledAt = m_memory->d->tick();
    }
    return m_sampledAt;
}

void EmbeddedMemoryInterface::sample(int periodMs, qint64 missedTicks)
{
    countMissedTicks(periodMs, missedTicks);
    StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
    const double now = momentOfTurn();
    for (auto* const entry : m_watched.keysOfPeriod(periodMs)) {
        MemorySlot& slot = *entry->key.slot;
        MemoryListener& listener = entry->key.listener;
        if (slot.kind == KeyKind::Data && slot.hasValue) {
            if (!slot.isStampedByRobot) {
                const double timeStamp = listener.stamps.next(now);
                slot.stamps.raise(timeStamp);
                listener.buffer.add(timeStamp, slot.newest.value);
            } else if (slot.newest.timeStamp > listener.stamps.last()) {
                listener.buffer.add(listener.stamps.next(slot.newest.timeStamp), slot.newest.value);
            }
        }
        lock.nextKey();
    }
}

// Of the keys that such a tick would have sampled. A key whose robot stamps its values misses none.
void EmbeddedMemoryInterface::countMissedTicks(int periodMs, qint64 count)
{
    if (count == 0)
        return;
    QVector<LossAccount*> missing;
    {
        StridingLock lock(m_memory->d->mutex, keysPerSamplingLock);
        for (const auto* const entry : m_watched.keysOfPeriod(periodMs)) {
            const MemorySlot& slot = *entry->key.slot;
            if (slot.kind == KeyKind::Data && slot.hasValue && !slot.isStampedByRobot)
                missing.append(entry->key.losses);
            lock.nextKey();
        }
    }
    if (missing.isEmpty())
        return;
    const double period = periodMs / 1000.0;
    const double now = unixTime();
    m_ledger->recordTicks(missing, LossCause::MissedTick, count, now - double(count) * period, now - period);
}

void EmbeddedMemoryInterface::deliver()
{
    collectLosses();
    GatheredData batch;
    {
        StridingLock lock(m_memory->d->mutex, keysPerDeliveryLock);
        for (auto& [name, entry] : m_watched.entries()) {
            if (!entry.key.listener.buffer.isEmpty())
                batch.insert(batch.cend(), name, entry.key.listener.buffer.take());
            lock.nextKey();
        }
    }
    // Last, and with a hold on this object: a slot may stop the watcher, start it again or close the connection.
    const auto keepAlive = shared_from_this();
    emit dataGathered(batch);
}

} // namespace Velk
