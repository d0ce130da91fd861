// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_ROBOT_TASK_H
#define APPS_VELK_SRC_ROBOT_TASK_H

#include "task.h"

#include <session/robot_session.h>

#include <QString>
#include <QTimer>

#include <memory>

namespace Velk {

class Console;

/// The work of a command on a robot: opens the robot, waits until the session is ready, and works from then on until it
/// is done, interrupted or stopped by a failure.
///
/// It is a failure when the robot is not ready within the time-out, or when the link gives up. What happens when the
/// connection is lost after that is decided by the derived class.
class RobotTask : public Task
{
    Q_OBJECT

public:
    /// The link is not open yet. The console outlives the task.
    RobotTask(std::unique_ptr<RobotLink> link, RobotSession::Use use, Console& console, int timeoutMs);
    ~RobotTask() override;

    void start() override;
    void interrupt(int signalNumber) override;

protected:
    RobotSession& session() { return m_session; }
    RobotLink& link() { return *m_session.link(); }
    Console& console() { return m_console; }
    bool isFinished() const { return m_isFinished; }
    /// True after setWorking(): the time-out does not run any more.
    bool isWorking() const { return m_isWorking; }
    /// The preparations are over, and the session's catalogue is not needed any more.
    void setWorking();
    /// Prints a message for the user.
    virtual void report(const QString& text);
    void report(const QString& title, const QString& text);
    /// Prints what is missing when the preparations have taken so many seconds.
    virtual void reportTimeout(const QString& seconds);
    void reportNotConnected(const QString& url, const QString& seconds);
    /// Prints what the robot's connection could not deliver.
    void reportLosses();
    /// Ends the task; only the first call counts.
    virtual void finish(int status);

    /// The session is ready: this is its catalogue. Again after every reconnection before setWorking().
    virtual void onListed(const MemoryKeyListModel& catalogue) = 0;
    /// The robot is connected again while the task works.
    virtual void onConnectedAgain() {}

private:
    void onReadyChanged(bool isReady);
    void onLinkFailed();
    void onTimeout();

    RobotSession m_session;
    Console& m_console;
    QTimer m_timeout;
    bool m_isWorking = false;
    bool m_isFinished = false;
};

} // namespace Velk

#endif
