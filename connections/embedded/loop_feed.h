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
class EMBEDDED_EXPORT LoopFeed : public RobotFeed
{
public:
    /// The first step comes at once, the next ones every `period`; steps that would come late because one took too long
    /// are left out.
    explicit LoopFeed(std::chrono::milliseconds period, std::shared_ptr<RobotMemory> memory = nullptr);
    ~LoopFeed() override;

    void start() override;
    /// Waits for the step that runs.
    void stop() override;

protected:
    /// Declares the robot's keys, once at every start, and ends in inReach() or failed(). Here: a step() and inReach().
    /// Like step() it runs on the loop's thread and does not throw.
    virtual void prepare();
    virtual void step() = 0;
    /// Whether stop() waits: for a prepare() that takes long, to return early.
    bool isStopping() const { return m_loop.isStopping(); }

private:
    RobotLoop m_loop;
};

} // namespace Velk

#endif
