// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_ROBOT_LOOP_H
#define CONNECTIONS_EMBEDDED_ROBOT_LOOP_H

#include <connections/embedded/embedded_export.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace Velk {

/// The control loop of a robot in this process: a thread of its own that calls a function at a fixed period.
///
/// start(), stop() and the destructor are called on one thread.
class EMBEDDED_EXPORT RobotLoop
{
public:
    /// Both functions run on the loop's thread and must not throw: `prepare` once at every start, then `step` every
    /// `period`. Steps that would come late because one took too long are left out.
    RobotLoop(std::chrono::milliseconds period, std::function<void()> prepare, std::function<void()> step);
    ~RobotLoop();
    RobotLoop(const RobotLoop&) = delete;
    RobotLoop& operator=(const RobotLoop&) = delete;

    /// Nothing when it runs.
    void start();
    /// Waits for the function that is being called; neither is called afterwards. Nothing when it does not run.
    void stop();

    /// Whether stop() waits: for a function that takes long, to return early.
    bool isStopping() const;

private:
    void run();

    const std::chrono::milliseconds m_period;
    const std::function<void()> m_prepare;
    const std::function<void()> m_step;
    mutable std::mutex m_mutex;
    std::condition_variable m_wakeUp;
    bool m_isStopping = false;
    std::thread m_thread;
};

} // namespace Velk

#endif
