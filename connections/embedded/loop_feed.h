// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_LOOP_FEED_H
#define CONNECTIONS_EMBEDDED_LOOP_FEED_H

#include <connections/embedded/embedded_export.h>
#include <connections/embedded/robot_feed.h>
#include <connections/embedded/robot_loop.h>

#include <chrono>
#include <memory>

namespace Velk {

/// A robot that writes at a fixed period, on a thread of its own, while its link is open.
///
///     class Clock : public LoopFeed
///     {
///     public:
///         Clock() : LoopFeed(std::chrono::milliseconds(100)) {}
///         void step() override { memory()->setData("Clock/Second", QTime::currentTime().second()); }
///     };
///     EmbeddedLink link(std::make_shared<Clock>());
///
/// Held by a std::shared_ptr. Its thread keeps it alive while a step runs, and may be the one that destroys it.
class EMBEDDED_EXPORT LoopFeed : public RobotFeed
{
public:
    /// The first step comes at once, the next ones every `period`; steps that would come late because one took too long
    /// are left out.
    explicit LoopFeed(std::chrono::milliseconds period, std::shared_ptr<RobotMemory> memory = nullptr);
    ~LoopFeed() override;

    void start() override;
    /// The step that runs is the last one until start().
    void stop() override;
    bool waitUntilStopped(std::chrono::milliseconds limit) override;

protected:
    /// Declares the robot's keys, once at every start, and ends in inReach() or failed(). Here: a step() and inReach().
    /// Like step() it runs on the loop's thread and does not throw. What either reports after stop() has no effect.
    virtual void prepare();
    virtual void step() = 0;
    /// Whether stop() was called meanwhile: for a prepare() or step() that takes long, to return early.
    bool isStopping() const { return m_loop.isStopping(); }

private:
    bool isReportInTime() const override;

    RobotLoop m_loop;
};

} // namespace Velk

#endif
