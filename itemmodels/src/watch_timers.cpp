// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "watch_timers.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

namespace Velk {

namespace {

constexpr int defaultUpdateIntervalMs = 16;
constexpr int ageIntervalMs = 1000;

int screenRefreshIntervalMs()
{
    const auto* const application = qobject_cast<QGuiApplication*>(QCoreApplication::instance());
    const QScreen* const screen = application ? QGuiApplication::primaryScreen() : nullptr;
    const double rate = screen ? screen->refreshRate() : 0.0;
    return rate >= 1.0 ? std::max(1, int(std::lround(1000.0 / rate))) : defaultUpdateIntervalMs;
}

} // namespace

WatchTimers::WatchTimers()
{
    m_update.setSingleShot(true);
    m_update.setTimerType(Qt::PreciseTimer);
    m_update.setInterval(screenRefreshIntervalMs());
    connect(&m_update, &QTimer::timeout, this, &WatchTimers::updateDue);
    m_aging.setInterval(ageIntervalMs);
    connect(&m_aging, &QTimer::timeout, this, &WatchTimers::agesDue);
}

bool WatchTimers::setUpdateInterval(int intervalMs)
{
    intervalMs = std::max(intervalMs, 0);
    if (updateInterval() == intervalMs)
        return false;
    m_update.setInterval(intervalMs);
    return true;
}

void WatchTimers::scheduleUpdate()
{
    // A running timer is not restarted: batches that come faster than the interval do not put the update off.
    if (!m_update.isActive())
        m_update.start();
}

void WatchTimers::startAging()
{
    if (!m_aging.isActive())
        m_aging.start();
}

} // namespace Velk
