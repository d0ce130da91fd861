// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "writer_task.h"

#include "argument_values.h"
#include "console.h"
#include "exit_status.h"
#include "json_argument.h"

#include <connections/links/robot_links.h>

#include <optional>

namespace Velk {

WriterTask::WriterTask(std::unique_ptr<RobotWriter> writer, Console& console, int timeoutMs, Write write)
    : m_writer(std::move(writer))
    , m_console(console)
    , m_write(std::move(write))
{
    m_timeout.setSingleShot(true);
    m_timeout.setInterval(timeoutMs);
    connect(&m_timeout, &QTimer::timeout, this, [this] {
        m_console.message(QStringLiteral("Not written: no answer from %1 within %2 s.\n"
                                         "Check that the server runs and its URL, or allow more time with --timeout.")
                              .arg(m_writer->url())
                              .arg(m_timeout.interval() / 1000.0));
        finish(NotConnected);
    });
    connect(m_writer.get(), &RobotWriter::failed, this, [this](const QString& title, const QString& message) {
        const QString failure = title + QStringLiteral(": ") + message;
        if (!m_isFinished)
            m_console.message(failure);
        m_lastFailure = failure;
    });
    connect(m_writer.get(), &RobotWriter::connected, this, [this] {
        m_write(*m_writer, [this](const QString& error) {
            if (!error.isEmpty() && !m_lastFailure.endsWith(error))
                m_console.message(error);
            finish(error.isEmpty() ? Success : NotWritten);
        });
    });
}

WriterTask::~WriterTask() = default;

void WriterTask::start()
{
    m_timeout.start();
    m_writer->open();
}

void WriterTask::interrupt(int signalNumber)
{
    finish(interruptedBy(signalNumber));
}

void WriterTask::finish(int status)
{
    if (m_isFinished)
        return;
    m_isFinished = true;
    m_timeout.stop();
    emit finished(status);
}

int runWriterTask(CommandContext& context, const RobotOptions& options, const std::string& json,
                  const std::function<void(RobotWriter& writer, const QVariant& value, RobotWriter::Done done)>& write)
{
    if (!requireRobot(context, options))
        return UsageError;
    QString error;
    const std::optional<QVariant> value = jsonArgument(QByteArray::fromStdString(json), &error);
    if (!value) {
        context.console.message(error);
        return UsageError;
    }
    std::unique_ptr<RobotWriter> writer = RobotLinks::createWriter(toQString(options.url), &error);
    if (!writer) {
        context.console.message(error);
        return BadRobotUrl;
    }

    WriterTask task(std::move(writer), context.console, milliseconds(options.timeoutSeconds),
                    [&](RobotWriter& target, RobotWriter::Done done) { write(target, *value, std::move(done)); });
    return runTask(task);
}

} // namespace Velk
