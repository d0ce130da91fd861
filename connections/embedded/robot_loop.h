// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef CONNECTIONS_EMBEDDED_ROBOT_LOOP_H
#define CONNECTIONS_EMBEDDED_ROBOT_LOOP_H

#include <connections/embedded/embedded_export.h>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

namespace Velk {

/// The control loop of a robot in this process: a thread of its own that calls a function at a fixed period.
///
/// start(), stop(), waitUntilIdle() and the destructor are called on one thread.
class EMBEDDED_EXPORT RobotLoop
{
public:
    /// Both functions run on the loop's thread and must not throw: `prepare` once at every start, then `step` every
    /// `period`. Steps that would come late because one took too long are left out.
    RobotLoop(std::chrono::milliseconds period, std::function<void()> prepare, std::function<void()> step);
    /// Stops the loop, and waits for the function that is being called. Does not wait when it runs on the loop's thread
    /// because the owner ends there.
    ~RobotLoop();
    RobotLoop(const RobotLoop&) = delete;
    RobotLoop& operator=(const RobotLoop&) = delete;

    /// Does not wait: if a function of an earlier start is still being called, this start begins after it. `owner`, if
    /// given, is what the functions use, and has this loop as a member: it is kept alive until the last function of
    /// this start has returned, and may then be destroyed on the loop's thread. Nothing when the loop runs.
    void start(std::shared_ptr<void> owner = nullptr);
    /// Does not wait: a function that is being called ends by itself, and is the last one. Nothing when the loop does
    /// not run.
    void stop();
    /// Waits, after stop(), until no function is being called. False when that takes longer than `limit`.
    bool waitUntilIdle(std::chrono::milliseconds limit);

    /// In one of the functions: whether stop() was called since the start that it belongs to. A function that takes
    /// long then returns early. False on other threads.
    bool isStopping() const;

private:
    void runThread();
    void runFunctions(std::unique_lock<std::mutex>& lock);
    bool isCurrent() const { return m_isStarted && m_threadStart == m_start && !m_isEnding; }

    const std::chrono::milliseconds m_period;
    const std::function<void()> m_prepare;
    const std::function<void()> m_step;

    // Guarded by the mutex.
    mutable std::mutex m_mutex;
    std::condition_variable m_changed; // one of the members below
    bool m_isStarted = false;
    bool m_isEnding = false;       // the destructor runs
    bool m_isInFunctions = false;  // the thread serves a start, which may have been stopped
    int m_start = 0;               // counts the starts
    int m_threadStart = 0;         // the one that the thread serves, or served last
    std::shared_ptr<void> m_owner; // of a start that the thread has not begun yet
    std::thread::id m_threadId;

    std::thread m_thread; // from the first start to the destruction
};

} // namespace Velk

#endif
