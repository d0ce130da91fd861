// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include <connections/embedded/loop_feed.h>

#include <utility>

namespace Velk {

LoopFeed::LoopFeed(std::chrono::milliseconds period, std::shared_ptr<RobotMemory> memory)
    : RobotFeed(std::move(memory))
    , m_loop(
          period, [this] { prepare(); }, [this] { step(); })
{}

LoopFeed::~LoopFeed() = default;

void LoopFeed::start()
{
    m_loop.start(weak_from_this().lock());
}

void LoopFeed::stop()
{
    m_loop.stop();
}

bool LoopFeed::waitUntilStopped(std::chrono::milliseconds limit)
{
    return m_loop.waitUntilIdle(limit);
}

void LoopFeed::prepare()
{
    step();
    inReach();
}

bool LoopFeed::isReportInTime() const
{
    return !m_loop.isStopping();
}

} // namespace Velk
