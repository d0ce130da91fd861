// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_EMBEDDED_LINK_H
#define CONNECTIONS_EMBEDDED_EMBEDDED_LINK_H

#include <connections/embedded/embedded_export.h>
#include <connections/embedded/robot_feed.h>
#include <connections/link/robot_link.h>

#include <memory>
#include <mutex>
#include <vector>

namespace Velk {

class RobotMemory;

/// The link to a robot that writes into a RobotMemory of this process.
///
/// Data keys are sampled at the watcher's sampling period. If that period is 0, each key is sampled at the period of
/// its watchKey(). Events, micro-events and appended samples of data keys are not sampled: one that comes while the
/// watcher runs and its key is watched is delivered once. One batch is delivered per gather period while the watcher
/// runs, an empty one if there is nothing to deliver. Stopping the watcher discards what was collected since the last
/// delivery.
///
/// A call can wait for a thread of the robot that writes one value. The link itself holds the memory's mutex for some
/// hundred keys at most. Closing does not wait for a feed that is writing; only the destructor does.
///
/// Losses: samples and occurrences that did not fit in the buffer of their key are dropped, the oldest first; sampling
/// ticks that come due while the thread is busy or the process is stopped are missed.
class EMBEDDED_EXPORT EmbeddedLink : public RobotLink
{
    Q_OBJECT

public:
    /// The link to robot code that runs by itself and writes into this memory, or into a new one when it is null.
    explicit EmbeddedLink(std::shared_ptr<RobotMemory> memory, QObject* parent = nullptr);
    /// The link to this feed, which is not null and has no other link.
    explicit EmbeddedLink(std::shared_ptr<RobotFeed> feed, QObject* parent = nullptr);
    /// Ends the connection without a signal, and waits until the feed has stopped, at most one second. A feed that
    /// takes longer is left to its own thread.
    ~EmbeddedLink() override;

    /// Where the robot's code writes; never null.
    std::shared_ptr<RobotMemory> memory() const { return m_feed->memory(); }
    RobotFeed& feed() const { return *m_feed; }

    /// The URL of the feed.
    QString url() const override;

    /// Whether the robot supports real-time sampling; at first as the feed says. A change holds from the next
    /// connection on.
    bool isRealTimeSupported() const { return m_isRealTimeSupported; }
    void setRealTimeSupported(bool isSupported) { m_isRealTimeSupported = isSupported; }
    /// How many samples or occurrences of one key are kept for one delivery, from the next connection on, at least 1;
    /// 4096 at first.
    int bufferCapacity() const { return m_bufferCapacity; }
    void setBufferCapacity(int capacity);

protected:
    void startConnecting() override;
    void stopConnecting() override;
    void endService(MemoryInterface& service, Ending ending) override;
    void collectLosses() override;

private Q_SLOTS:
    void scheduleReports();

private:
    void addReport(const RobotFeed::Report& report);
    void takeReports();
    void onReport(const RobotFeed::Report& report);

    const std::shared_ptr<RobotFeed> m_feed;
    bool m_isRealTimeSupported;
    int m_bufferCapacity = 4096;
    int m_run = 0; // counts the runs of the robot: reports of a run that a slot has ended are dropped
    std::mutex m_reportMutex;
    std::vector<RobotFeed::Report> m_reports; // of this run, from any thread, until takeReports()
};

} // namespace Velk

#endif
