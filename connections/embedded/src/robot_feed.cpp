// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/robot_feed.h>

#include <utility>

namespace Velk {

RobotFeed::RobotFeed(std::shared_ptr<RobotMemory> memory)
    : m_memory(memory ? std::move(memory) : std::make_shared<RobotMemory>())
{}

RobotFeed::~RobotFeed() = default;

QString RobotFeed::url() const
{
    return QStringLiteral("embedded:");
}

bool RobotFeed::isRealTimeSupported() const
{
    return true;
}

void RobotFeed::start()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_receiver)
        m_receiver({m_isOutOfReach ? Report::OutOfReach : Report::InReach, {}, {}});
}

void RobotFeed::stop() {}

bool RobotFeed::waitUntilStopped(std::chrono::milliseconds)
{
    return true;
}

void RobotFeed::inReach()
{
    report({Report::InReach, {}, {}});
}

void RobotFeed::outOfReach()
{
    report({Report::OutOfReach, {}, {}});
}

void RobotFeed::failed(const QString& title, const QString& message)
{
    report({Report::Failed, title, message});
}

bool RobotFeed::isReportInTime() const
{
    return true;
}

void RobotFeed::setReceiver(std::function<void(const Report&)> receiver)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_receiver = std::move(receiver);
}

void RobotFeed::report(const Report& report)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    // With the mutex held: the receiver of the next start is set after this one was stopped.
    if (!isReportInTime())
        return;
    if (report.type != Report::Failed)
        m_isOutOfReach = report.type == Report::OutOfReach;
    if (m_receiver)
        m_receiver(report);
}

} // namespace Velk
