// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_TASK_H
#define APPS_VELK_SRC_TASK_H

#include <QObject>
#include <QString>
#include <QTimer>

namespace Velk {

class Console;

/// The work of a command in the event loop. It fails when it is not prepared within the time-out.
class Task : public QObject
{
    Q_OBJECT

public:
    /// The console outlives the task.
    Task(Console& console, int timeoutMs);

    /// Begins; the rest happens in the event loop.
    void start();
    /// Ctrl-C or another signal that asks to end. Here the task ends unfinished.
    virtual void interrupt(int signalNumber);

Q_SIGNALS:
    /// The task is over, with velk's exit status. Once.
    void finished(int status);

protected:
    Console& console() { return m_console; }
    bool isFinished() const { return m_isFinished; }
    /// The preparations are over: the time-out does not run any more.
    void stopTimeout() { m_timeout.stop(); }

    /// Prints a message for the user.
    virtual void report(const QString& text);
    void report(const QString& title, const QString& text);
    /// Prints a failure, unless the task is over.
    void reportFailure(const QString& title, const QString& text);
    /// Writes data. Returns false when that failed: the task is over, or a signal is about to interrupt it.
    bool write(const QByteArray& data);
    /// Ends the task; only the first call counts.
    virtual void finish(int status);

    /// Connects to the other side.
    virtual void open() = 0;
    /// Prints what is missing when the preparations have taken so many seconds.
    virtual void reportTimeout(const QString& seconds) = 0;

private:
    void onTimeout();

    Console& m_console;
    QTimer m_timeout;
    bool m_isFinished = false;
};

/// Runs the task until it is finished, and returns its status. Signals that ask velk to end interrupt the task.
int runTask(Task& task);

} // namespace Velk

#endif
