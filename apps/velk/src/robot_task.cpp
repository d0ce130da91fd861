// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "robot_task.h"

#include "exit_status.h"

#include <utility>

namespace Velk {

RobotTask::RobotTask(std::unique_ptr<RobotLink> link, RobotSession::Use use, Console& console, int timeoutMs)
    : Task(console, timeoutMs)
    , m_session(std::move(link), use)
{
    m_end.setSingleShot(true);
    m_end.setTimerType(Qt::PreciseTimer);
    connect(&m_end, &QTimer::timeout, this, [this] { stop(Success); });
    connect(&m_session, &RobotSession::failed, this, &RobotTask::reportFailure);
    connect(m_session.link(), &RobotLink::failed, this, &RobotTask::onLinkFailed);
    connect(&m_session, &RobotSession::readyChanged, this, &RobotTask::onReadyChanged);
    connect(m_session.link(), &ConnectionManager::connectionEstablished, this, [this] {
        if (m_isWorking && !isFinished())
            onConnectedAgain();
    });
}

RobotTask::~RobotTask() = default;

void RobotTask::open()
{
    link().open();
}

void RobotTask::interrupt(int signalNumber)
{
    stop(m_isEndless ? Success : interruptedBy(signalNumber));
}

void RobotTask::setWorking()
{
    m_isWorking = true;
    stopTimeout();
    m_session.setCatalogueWanted(false);
}

void RobotTask::workFor(int milliseconds)
{
    m_isEndless = milliseconds == 0;
    if (!m_isEndless)
        m_end.start(milliseconds);
}

void RobotTask::reportLosses()
{
    const SampleLosses losses = link().losses();
    QStringList causes;
    if (losses.skippedTicks > 0)
        causes << QStringLiteral("%1 sampling ticks skipped, the robot was too slow or refused them")
                      .arg(losses.skippedTicks);
    if (losses.dropped > 0)
        causes << QStringLiteral("%1 samples and occurrences dropped, they came too fast").arg(losses.dropped);
    if (losses.trimmed > 0)
        causes << QStringLiteral("%1 occurrences discarded by the robot").arg(losses.trimmed);
    if (losses.missedTicks > 0)
        causes << QStringLiteral("%1 sampling ticks missed, this program was busy or stopped").arg(losses.missedTicks);
    if (!causes.isEmpty())
        report(QStringLiteral("Not everything was delivered"), causes.join(QStringLiteral("; ")));
}

void RobotTask::onReadyChanged(bool isReady)
{
    if (isReady && !isFinished() && !m_isWorking)
        onListed(*m_session.catalogue());
}

void RobotTask::onLinkFailed()
{
    // The session has reported it already.
    if (link().state() == RobotLink::Disconnected)
        finish(m_isWorking ? ConnectionLost : NotConnected);
}

void RobotTask::reportTimeout(const QString& seconds)
{
    if (link().isConnected())
        report(QStringLiteral("Robot does not answer"),
               QStringLiteral("%1 is connected but has not reported its keys and its limits within %2 s.\n"
                              "Check the robot, or allow more time with --timeout.")
                   .arg(link().url(), seconds));
    else
        reportNotConnected(link().url(), seconds);
}

void RobotTask::reportNotConnected(const QString& url, const QString& seconds)
{
    report(QStringLiteral("Not connected"),
           QStringLiteral("No connection to %1 within %2 s.\n"
                          "Check that the robot runs and its URL, or allow more time with --timeout.")
               .arg(url, seconds));
}

} // namespace Velk
