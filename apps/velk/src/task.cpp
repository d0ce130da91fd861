// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "task.h"

#include "console.h"
#include "exit_status.h"
#include "unix_signals.h"

#include <QEventLoop>

namespace Velk {

Task::Task(Console& console, int timeoutMs)
    : m_console(console)
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeoutMs);
    connect(&m_timeout, &QTimer::timeout, this, &Task::onTimeout);
}

void Task::start()
{
    m_timeout.start();
    open();
}

void Task::interrupt(int signalNumber)
{
    finish(interruptedBy(signalNumber));
}

void Task::report(const QString& text)
{
    m_console.message(text);
}

void Task::report(const QString& title, const QString& text)
{
    report(title + QStringLiteral(": ") + text);
}

void Task::reportFailure(const QString& title, const QString& text)
{
    if (!m_isFinished)
        report(title, text);
}

bool Task::write(const QByteArray& data)
{
    if (m_console.write(data))
        return true;
    // No status: a signal interrupted the write, and ends the task from the event loop.
    if (m_console.outputStatus() != Success)
        finish(m_console.outputStatus());
    return false;
}

void Task::finish(int status)
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    m_timeout.stop();
    m_console.setStatusLine(QString());
    emit finished(status);
}

void Task::onTimeout()
{
    reportTimeout(QString::number(m_timeout.interval() / 1000.0));
    finish(NotConnected);
}

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
