// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_TASK_H
#define APPS_VELK_SRC_TASK_H

#include <QObject>

namespace Velk {

/// The work of a command in the event loop.
class Task : public QObject
{
    Q_OBJECT

public:
    /// Begins; the rest happens in the event loop.
    virtual void start() = 0;
    /// Ctrl-C or another signal that asks to end.
    virtual void interrupt(int signalNumber) = 0;

Q_SIGNALS:
    /// The task is over, with velk's exit status. Once.
    void finished(int status);
};

/// Runs the task until it is finished, and returns its status. Signals that ask velk to end interrupt the task.
int runTask(Task& task);

} // namespace Velk

#endif
