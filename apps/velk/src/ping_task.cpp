// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "ping_task.h"

#include "console.h"
#include "exit_status.h"

#include <connections/link/robot_link.h>
#include <memorykeymodel/memory_key_list_model.h>

namespace Velk {

PingTask::PingTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs)
    : RobotTask(std::move(link), RobotSession::ListKeys, console, timeoutMs)
{}

void PingTask::onListed(const MemoryKeyListModel& catalogue)
{
    m_lines.clear();
    addLine(QStringLiteral("robot"), link().url());
    addLine(QStringLiteral("keys"), QStringLiteral("%1 data, %2 event")
                                        .arg(catalogue.keys(DataNature).size())
                                        .arg(catalogue.keys(EventNature).size()));
    // The report does not come when the connection is lost meanwhile: the next one starts anew, within the time-out.
    link().requestReport([self = QPointer<PingTask>(this)](const LinkReport& report) {
        if (!self || self->isFinished())
            return;
        for (const LinkReport::Line& line : report.lines)
            self->addLine(line.subject, line.text);
        if (self->write(self->m_lines.join(QLatin1Char('\n')).toUtf8() + '\n'))
            self->finish(Success);
    });
}

void PingTask::addLine(const QString& subject, const QString& text)
{
    m_lines.append(subject.leftJustified(12) + Console::printable(text));
}

} // namespace Velk
