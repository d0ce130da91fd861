// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_SRC_EMBEDDED_MEMORY_INTERFACE_H
#define CONNECTIONS_EMBEDDED_SRC_EMBEDDED_MEMORY_INTERFACE_H

#include "robot_memory_p.h"

#include <connections/link/key_kind.h>
#include <connections/link/list_fetch.h>
#include <connections/link/loss_ledger.h>
#include <connections/link/real_time_question.h>
#include <connections/link/sample_buffer.h>
#include <connections/link/sampling_schedule.h>
#include <connections/link/watch_table.h>
#include <robotconnection/memory_interface.h>

#include <boost/enable_shared_from_this.hpp>

#include <memory>
#include <utility>
#include <vector>

namespace Velk {

/// The memory service of one connection to a robot memory. Lives, samples and delivers on the models' thread; held by
/// a boost::shared_ptr only. All keys that are sampled at one moment carry one time stamp and share a row of a
/// recording.
class EmbeddedMemoryInterface : public MemoryInterface, public boost::enable_shared_from_this<EmbeddedMemoryInterface>
{
    Q_OBJECT

public:
    /// `bufferCapacity`: samples and occurrences of a key, at least 1, that are kept for one delivery. The ledger is
    /// used until shutDown().
    EmbeddedMemoryInterface(std::shared_ptr<RobotMemory> memory, LossLedger* ledger, int bufferCapacity,
                            bool isRealTimeSupported);
    ~EmbeddedMemoryInterface() override;

    /// The connection is over: nothing is watched or delivered from now on, lists are empty. Every operation stays safe
    /// to call for callers that still hold the interface.
    void shutDown();
    /// Records in the ledger what was dropped so far.
    void collectLosses();
    const RealTimeQuestion& realTimeQuestion() const { return m_realTimeQuestion; }

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

private:
    struct Subscription
    {
        std::shared_ptr<MemorySlot> slot;
        MemoryListener listener; // guarded by the memory's mutex: the robot's threads put samples in
        LossAccount* losses;
    };

    QFuture<QStringList> fetch(KeyKind kind);
    void finishLists();
    void endSubscription(Subscription& subscription);
    double momentOfTurn();
    void sample(int periodMs, qint64 missedTicks);
    void countMissedTicks(int periodMs, qint64 count);
    void deliver();

    const std::shared_ptr<RobotMemory> m_memory;
    LossLedger* m_ledger; // null after shutDown()
    SampleBudget m_budget;
    WatchTable<Subscription> m_watched;
    SamplingSchedule m_schedule;
    qint64 m_sampledTurn = 0; // of the schedule
    double m_sampledAt = 0.0; // the time stamp of what is sampled in that turn
    RealTimeQuestion m_realTimeQuestion;
    std::vector<std::pair<ListFetch, QStringList>> m_pendingLists;
};

} // namespace Velk

#endif
