// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "writer_task.h"

#include "exit_status.h"

#include <utility>

namespace Velk {

WriterTask::WriterTask(std::unique_ptr<RobotWriter> writer, Console& console, int timeoutMs, Write write)
    : Task(console, timeoutMs)
    , m_writer(std::move(writer))
{
    connect(m_writer.get(), &RobotWriter::failed, this, [this](const QString& title, const QString& message) {
        reportFailure(title, message);
        m_lastFailure = message;
    });
    connect(m_writer.get(), &RobotWriter::connected, this, [this, write = std::move(write)] {
        if (!std::exchange(m_isHandedOver, true))
            write(*m_writer, [this](const QString& error) { onAnswered(error); });
    });
    // Not written again with the next connection: an occurrence could be there twice. Queued: failed() reports the
    // reason next, unless its limits leave it out.
    connect(
        m_writer.get(), &RobotWriter::connectionLost, this,
        [this] {
            reportFailure(QStringLiteral("Perhaps not written"),
                          QStringLiteral("the connection was lost before the answer. Look whether it is there before "
                                         "you write it again."));
            finish(NotWritten);
        },
        Qt::QueuedConnection);
}

void WriterTask::open()
{
    m_writer->open();
}

void WriterTask::onAnswered(const QString& error)
{
    if (!error.isEmpty() && error != m_lastFailure)
        report(error);
    finish(error.isEmpty() ? Success : NotWritten);
}

void WriterTask::reportTimeout(const QString& seconds)
{
    report(m_isHandedOver ? QStringLiteral("Perhaps not written") : QStringLiteral("Not written"),
           QStringLiteral("no answer from %1 within %2 s.\n"
                          "Check that the server runs and its URL, or allow more time with --timeout.")
               .arg(m_writer->url(), seconds));
}

} // namespace Velk
