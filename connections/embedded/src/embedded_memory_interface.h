#ifndef CONNECTIONS_EMBEDDED_SRC_EMBEDDED_MEMORY_INTERFACE_H
#define CONNECTIONS_EMBEDDED_SRC_EMBEDDED_MEMORY_INTERFACE_H

#include "robot_memory_p.h"

#include <robotconnection/memory_interface.h>

#include <QBasicTimer>
#include <QElapsedTimer>
#include <QFutureInterface>
#include <QHash>

#include <boost/enable_shared_from_this.hpp>

#include <map>
#include <memory>
#include <vector>

namespace Velk {

/// What the keys of one link have dropped, by name: kept across watchers and connections.
using DropCounts = QHash<QString, SampleQueue::DropCount>;

/// The memory service of one connection to a robot memory. Lives, samples and delivers on the models' thread; held by
/// a boost::shared_ptr only.
///
/// Sampling and delivering happen at the multiples of their periods since the watcher was started, sampling first. So
/// equal periods meet, a delivery holds the samples of its own moment, and all keys that are sampled at one
/// moment carry one time stamp and share a row of a recording. A moment that a busy thread misses is left out.
class EmbeddedMemoryInterface : public MemoryInterface, public boost::enable_shared_from_this<EmbeddedMemoryInterface>
{
    Q_OBJECT

public:
    /// `queueCapacity`: samples and occurrences of a key, at least 1, that are kept for one delivery.
    EmbeddedMemoryInterface(std::shared_ptr<RobotMemory> memory, std::shared_ptr<DropCounts> dropCounts,
                            int queueCapacity, bool isRealTimeSupported);
    ~EmbeddedMemoryInterface() override;

    /// The connection is over: nothing is watched or delivered from now on, lists are empty. For those who still hold
    /// the interface every operation stays safe to call.
    void shutDown();

    QFuture<QStringList> getDataList() override;
    QFuture<QStringList> getEventList() override;
    QFuture<QStringList> getMicroEventList() override;

    void watchKey(const QString& name, int period) override;
    void unwatchKey(const QString& name) override;
    void unwatchAll() override;

    void startWatcher(int gatherPeriod, int samplingPeriod) override;
    void stopWatcher() override;
    void setGatherPeriod(int period) override;
    void setSamplingPeriod(int period) override;

    void isRealTimeSupported(QObject* receiver, const char* member) override;

Q_SIGNALS:
    /// isRealTimeSupported() has queued its answer.
    void realTimeAnswered(bool isSupported);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    struct Subscription
    {
        Subscription(int watchPeriod, std::shared_ptr<MemorySlot> memorySlot, SampleQueue sampleQueue);

        int period;
        std::shared_ptr<MemorySlot> slot;
        SampleQueue queue; // guarded by the memory's mutex: the robot's threads put occurrences in
        double lastSampled = -std::numeric_limits<double>::infinity();
    };
    struct PendingList
    {
        QFutureInterface<QStringList> future;
        QStringList names;
    };

    QFuture<QStringList> fetch(KeyKind kind);
    void finishLists();
    void endSubscription(Subscription& subscription);
    void regroup();
    void arm();
    void onTimer();
    void sample(const std::vector<Subscription*>& subscriptions, double now);
    QMap<QString, QMap<double, QVariant>> takeBatch();

    const std::shared_ptr<RobotMemory> m_memory;
    const std::shared_ptr<DropCounts> m_dropCounts;
    const int m_queueCapacity;
    const bool m_isRealTimeSupported;
    bool m_isShutDown = false;

    std::map<QString, Subscription> m_subscriptions;    // its elements stay where they are: queues are known by address
    std::map<int, std::vector<Subscription*>> m_groups; // by the period that is in force
    bool m_isGroupingValid = false;

    bool m_isRunning = false;
    int m_gatherPeriod = 1;
    int m_samplingPeriod = 0;
    QElapsedTimer m_clock; // since the watcher was started
    qint64 m_lastWake = 0; // ms on that clock
    QBasicTimer m_timer;

    std::vector<PendingList> m_pendingLists;
};

} // namespace Velk

#endif
