// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_WRITER_TASK_H
#define APPS_VELK_SRC_WRITER_TASK_H

#include "robot_options.h"
#include "task.h"

#include <connections/link/robot_writer.h>

#include <QTimer>

#include <functional>
#include <memory>

namespace Velk {

class Console;

/// Opens a writer and writes one thing with it. Failures on the way are printed; the task ends when the server
/// has answered or the time-out is over.
class WriterTask : public Task
{
    Q_OBJECT

public:
    using Write = std::function<void(RobotWriter& writer, RobotWriter::Done done)>;

    WriterTask(std::unique_ptr<RobotWriter> writer, Console& console, int timeoutMs, Write write);
    ~WriterTask() override;

    void start() override;
    void interrupt(int signalNumber) override;

private:
    void finish(int status);

    std::unique_ptr<RobotWriter> m_writer;
    Console& m_console;
    Write m_write;
    QTimer m_timeout;
    QString m_lastFailure;
    bool m_isFinished = false;
};

/// Runs a task that writes one value. `json` is what was typed: text that jsonArgument() refuses is reported, and
/// nothing is written.
int runWriterTask(CommandContext& context, const RobotOptions& options, const std::string& json,
                  const std::function<void(RobotWriter& writer, const QVariant& value, RobotWriter::Done done)>& write);

} // namespace Velk

#endif
