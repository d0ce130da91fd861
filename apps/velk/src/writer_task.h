// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_WRITER_TASK_H
#define APPS_VELK_SRC_WRITER_TASK_H

#include "task.h"

#include <connections/link/robot_writer.h>

#include <functional>
#include <memory>

namespace Velk {

/// Opens a writer and writes one thing with it, once. Failures on the way are printed; the task ends when the server
/// has answered, when the connection is lost before the answer, or when the time-out is over.
class WriterTask : public Task
{
    Q_OBJECT

public:
    using Write = std::function<void(RobotWriter& writer, RobotWriter::Done done)>;

    WriterTask(std::unique_ptr<RobotWriter> writer, Console& console, int timeoutMs, Write write);

private:
    void open() override;
    void reportTimeout(const QString& seconds) override;
    void onAnswered(const QString& error);

    std::unique_ptr<RobotWriter> m_writer;
    QString m_lastFailure;
    bool m_isHandedOver = false; // to the writer, which may have written it
};

} // namespace Velk

#endif
