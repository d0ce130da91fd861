// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/robot_loop.h>

#include <utility>

namespace Velk {

RobotLoop::RobotLoop(std::chrono::milliseconds period, std::function<void()> prepare, std::function<void()> step)
    : m_period(period)
    , m_prepare(std::move(prepare))
    , m_step(std::move(step))
{}

RobotLoop::~RobotLoop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isEnding = true;
    }
    m_changed.notify_all();
    if (!m_thread.joinable())
        return;
    if (m_thread.get_id() == std::this_thread::get_id())
        m_thread.detach();
    else
        m_thread.join();
}

void RobotLoop::start(std::shared_ptr<void> owner)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (m_isStarted)
            return;
        m_isStarted = true;
        ++m_start;
        m_owner = std::move(owner);
    }
    m_changed.notify_all();
    if (!m_thread.joinable())
        m_thread = std::thread(&RobotLoop::runThread, this);
}

void RobotLoop::stop()
{
    std::shared_ptr<void> owner; // let go of without the lock
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStarted = false;
        owner = std::move(m_owner);
    }
    m_changed.notify_all();
}

bool RobotLoop::waitUntilIdle(std::chrono::milliseconds limit)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_changed.wait_for(lock, limit, [this] { return !m_isInFunctions; });
}

bool RobotLoop::isStopping() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_threadId == std::this_thread::get_id() && !isCurrent();
}

void RobotLoop::runThread()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_threadId = std::this_thread::get_id();
    for (;;) {
        m_changed.wait(lock, [this] { return m_isStarted || m_isEnding; });
        if (m_isEnding)
            return;
        m_threadStart = m_start;
        m_isInFunctions = true;
        std::shared_ptr<void> owner = std::move(m_owner);
        runFunctions(lock);
        if (owner) {
            const std::weak_ptr<void> remaining = owner;
            lock.unlock();
            owner.reset();
            // The loop has gone with its owner, or another thread destroys both and waits for this one to end.
            if (remaining.expired())
                return;
            lock.lock();
        }
        m_isInFunctions = false;
        m_changed.notify_all();
    }
}

void RobotLoop::runFunctions(std::unique_lock<std::mutex>& lock)
{
    using Clock = std::chrono::steady_clock;
    lock.unlock();
    m_prepare();
    Clock::time_point due = Clock::now();
    lock.lock();
    while (isCurrent()) {
        lock.unlock();
        m_step();
        due += m_period;
        // A step that took long leaves out what it missed, rather than being followed by a burst.
        const Clock::time_point now = Clock::now();
        if (due < now)
            due += (now - due) / m_period * m_period + m_period;
        lock.lock();
        m_changed.wait_until(lock, due, [this] { return !isCurrent(); });
    }
}

} // namespace Velk
