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
    stop();
}

void RobotLoop::start()
{
    if (m_thread.joinable())
        return;
    m_isStopping = false;
    m_thread = std::thread(&RobotLoop::run, this);
}

void RobotLoop::stop()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_isStopping = true;
    }
    m_wakeUp.notify_all();
    m_thread.join();
}

bool RobotLoop::isStopping() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_isStopping;
}

void RobotLoop::run()
{
    using Clock = std::chrono::steady_clock;
    m_prepare();
    Clock::time_point due = Clock::now();
    std::unique_lock<std::mutex> lock(m_mutex);
    while (!m_isStopping) {
        lock.unlock();
        m_step();
        due += m_period;
        // A step that took long leaves out what it missed, rather than being followed by a burst.
        const Clock::time_point now = Clock::now();
        if (due < now)
            due += (now - due) / m_period * m_period + m_period;
        lock.lock();
        m_wakeUp.wait_until(lock, due, [this] { return m_isStopping; });
    }
}

} // namespace Velk
