// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_ROBOT_TASK_H
#define APPS_VELK_SRC_ROBOT_TASK_H

#include "task.h"

#include <session/robot_session.h>

#include <memory>

namespace Velk {

/// The work of a command on a robot: opens the robot, waits until the session is ready, and works from then on until it
/// is done, interrupted or stopped by a failure.
///
/// The time-out runs until setWorking(). It is also a failure when the link gives up. What happens when the connection
/// is lost after setWorking() is decided by the derived class.
class RobotTask : public Task
{
    Q_OBJECT

public:
    /// The link is not open yet.
    RobotTask(std::unique_ptr<RobotLink> link, RobotSession::Use use, Console& console, int timeoutMs);
    ~RobotTask() override;

    void interrupt(int signalNumber) override;

protected:
    RobotSession& session() { return m_session; }
    RobotLink& link() { return *m_session.link(); }
    bool isWorking() const { return m_isWorking; }
    /// The preparations are over, and the session's catalogue is not needed any more.
    void setWorking();
    /// Works from now on until the time is over, and then calls stop(). 0: until a signal interrupts the task, which is
    /// its regular end then.
    void workFor(int milliseconds);
    /// Ends the work, early or in time.
    virtual void stop(int status) { finish(status); }
    void reportTimeout(const QString& seconds) override;
    void reportNotConnected(const QString& url, const QString& seconds);
    /// Prints what the robot's connection could not deliver.
    void reportLosses();

    /// The session is ready: this is its catalogue. Again after every reconnection before setWorking().
    virtual void onListed(const MemoryKeyListModel& catalogue) = 0;
    /// The robot is connected again while the task works.
    virtual void onConnectedAgain() {}

private:
    void open() override;
    void onReadyChanged(bool isReady);
    void onLinkFailed();

    RobotSession m_session;
    QTimer m_end;
    bool m_isWorking = false;
    bool m_isEndless = false;
};

} // namespace Velk

#endif
