// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_PING_TASK_H
#define APPS_VELK_SRC_PING_TASK_H

#include "robot_task.h"

#include <QStringList>

namespace Velk {

/// Connects once and prints the report of the link, a line for each subject.
class PingTask : public RobotTask
{
    Q_OBJECT

public:
    PingTask(std::unique_ptr<RobotLink> link, Console& console, int timeoutMs);

protected:
    void onListed(const MemoryKeyListModel& catalogue) override;

private:
    void addLine(const QString& subject, const QString& text);

    QStringList m_lines;
};

} // namespace Velk

#endif
