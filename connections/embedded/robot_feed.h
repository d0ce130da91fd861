// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_ROBOT_FEED_H
#define CONNECTIONS_EMBEDDED_ROBOT_FEED_H

#include <connections/embedded/embedded_export.h>
#include <connections/embedded/robot_memory.h>

#include <QString>

#include <chrono>
#include <functional>
#include <memory>
#include <mutex>

namespace Velk {

/// A robot that pushes: it writes into a RobotMemory, and reports whether it is in reach. An EmbeddedLink shows the
/// memory to the models and follows the reports.
///
/// Used as it is, it represents robot code that runs by itself in this process: in reach as soon as the link is open. A
/// robot that has to be started derives from it, or from LoopFeed when it writes at a fixed period.
class EMBEDDED_EXPORT RobotFeed : public std::enable_shared_from_this<RobotFeed>
{
public:
    /// Writes into this memory, or into one of its own when it is null.
    explicit RobotFeed(std::shared_ptr<RobotMemory> memory = nullptr);
    virtual ~RobotFeed();
    RobotFeed(const RobotFeed&) = delete;
    RobotFeed& operator=(const RobotFeed&) = delete;

    /// Never null.
    const std::shared_ptr<RobotMemory>& memory() const { return m_memory; }
    /// The robot's URL, fit to be shown; here "embedded:".
    virtual QString url() const;
    /// Whether sampling every 10 ms makes sense; here true.
    virtual bool isRealTimeSupported() const;

    // Called on the link's thread. Only waitUntilStopped() may wait.

    /// The link was opened: starts the robot. Reports, then or later, inReach(), outOfReach() or failed(). Here:
    /// inReach(), unless outOfReach() was reported last.
    virtual void start();
    /// The link was closed, or is destroyed; comes after start(). The robot may finish the write that it is in. Then it
    /// writes nothing until the next start(), which may come before that write is finished.
    virtual void stop();
    /// The link is destroyed, after stop(): waits until the robot writes nothing more. False when that takes longer
    /// than `limit`. Here: true.
    virtual bool waitUntilStopped(std::chrono::milliseconds limit);

    // Reports, from any thread at any time. The link handles them in its event loop, in their order. If the robot goes
    // out of reach and comes back before the link has handled it, once or several times, the link is lost once and
    // connected once, unless failed() was called in between. The link always follows the reach that was reported last.
    // Without an open link no report is handled. start(), as it is here, uses the reach that was reported last.

    /// The robot writes, and its keys are declared: the link connects.
    void inReach();
    /// The connection to the robot broke, or cannot be made at the moment: the link is lost, or waits, until inReach().
    void outOfReach();
    /// The robot cannot be started: a short title, and a sentence that says what happened and what to do. The link
    /// waits for inReach(). RobotLink::failed() has a bound: a feed may call this as often as it fails.
    void failed(const QString& title, const QString& message);

private:
    friend class EmbeddedLink;

    struct Report
    {
        enum Type
        {
            InReach,
            OutOfReach,
            Failed
        };
        Type type;
        QString title;
        QString message;
    };

    /// Whether a report by the calling thread is still of interest: not when the start() that it belongs to was
    /// stopped. Here: true.
    virtual bool isReportInTime() const;
    /// Sets the function that receives reports, on the reporting thread; an empty one for none. Returns when no report
    /// is being delivered.
    void setReceiver(std::function<void(const Report&)> receiver);
    void report(const Report& report);

    const std::shared_ptr<RobotMemory> m_memory;
    std::mutex m_mutex;
    std::function<void(const Report&)> m_receiver;
    bool m_isOutOfReach = false;
};

} // namespace Velk

#endif
