// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "task.h"

#include "exit_status.h"
#include "unix_signals.h"

#include <QEventLoop>

namespace Velk {

int runTask(Task& task)
{
    UnixSignals signalWatcher;
    QEventLoop loop;
    int status = Success;
    bool isFinished = false;
    QObject::connect(&signalWatcher, &UnixSignals::received, &task, &Task::interrupt);
    QObject::connect(&task, &Task::finished, &loop, [&](int taskStatus) {
        status = taskStatus;
        isFinished = true;
        loop.quit();
    });
    task.start();
    if (!isFinished)
        loop.exec();
    return status;
}

} // namespace Velk
