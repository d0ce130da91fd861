// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_SERVE_TASK_H
#define APPS_VELK_SRC_SERVE_TASK_H

#include "exit_status.h"
#include "robot_task.h"

#include <connections/link/robot_writer.h>
#include <robotconnection/memory_interface.h>

#include <QFutureWatcher>
#include <QSet>
#include <QStringList>

#include <memory>

namespace Velk {

/// Writes everything that a robot has into a memory on a server: each sample of the data keys and each
/// occurrence of an event that the robot delivers. Goes on after a loss of either connection. At its end it waits, no
/// longer than the time-out, until the server has answered, and reports what was not written.
class ServeTask : public RobotTask
{
    Q_OBJECT

public:
    /// `forMs` 0: until interrupted.
    ServeTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs, std::unique_ptr<RobotWriter> writer,
              int periodMs, int forMs);

    void interrupt(int signalNumber) override;

protected:
    void onListed(const MemoryKeyListModel& catalogue) override;
    void onConnectedAgain() override;
    void reportTimeout(const QString& seconds) override;
    void finish(int status) override;

private:
    void beginWhenReady();
    void startWatcher();
    void listKeys();
    void onListFinished();
    KeyNames confirmNames(const KeyNames& listed);
    void writeBatch(const GatheredData& batch);
    void end();

    std::unique_ptr<RobotWriter> m_writer;
    const int m_periodMs;
    const int m_forMs;
    QFutureWatcher<QStringList> m_dataList;
    QFutureWatcher<QStringList> m_eventList;
    QFutureWatcher<QStringList> m_microEventList;
    int m_awaitedLists = 0;
    KeyNames m_formerList; // as the robot listed them last
    KeyNames m_served;     // as they were declared last
    QSet<QString> m_watched;
    QSet<QString> m_events; // and micro-events
    QTimer m_listTimer;
    QTimer m_answerTimeout; // from the end of serving
    bool m_isAnnounced = false;
    bool m_isEnding = false;
    bool m_isWaitCutOff = false; // the connection to the server was lost while the end waited for answers
    int m_status = Success;
};

} // namespace Velk

#endif
