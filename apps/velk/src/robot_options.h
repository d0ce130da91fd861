// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_ROBOT_OPTIONS_H
#define APPS_VELK_SRC_ROBOT_OPTIONS_H

#include "argument_values.h"
#include "command.h"
#include "exit_status.h"
#include "task.h"

#include <string>
#include <utility>

namespace Velk {

/// The options of a command that talks to a robot.
struct RobotOptions
{
    std::string url;
    double timeoutSeconds = 10.0;
};

/// Declares --robot and --timeout. `awaited` is what the time-out is for, as the help text has it.
void addRobotOptions(CLI::App& command, RobotOptions& options,
                     const std::string& awaited = "the robot and for its list of keys");

/// Whether a robot is named; if not, a message has been printed.
bool requireRobot(CommandContext& context, const RobotOptions& options);

/// Prints why a URL cannot be opened, and returns the exit status for it.
int reportBadUrl(CommandContext& context, const QString& error);

/// Runs a task on the robot, and returns its status. The task gets the robot's link, the console, the time-out and the
/// further arguments.
template <typename TaskType, typename... Arguments>
int runRobotTask(CommandContext& context, const RobotOptions& options, Arguments&&... arguments)
{
    if (!requireRobot(context, options))
        return UsageError;
    QString error;
    std::unique_ptr<RobotLink> link = context.createLink(toQString(options.url), &error);
    if (!link)
        return reportBadUrl(context, error);
    TaskType task(std::move(link), context.console, milliseconds(options.timeoutSeconds),
                  std::forward<Arguments>(arguments)...);
    return runTask(task);
}

} // namespace Velk

#endif
