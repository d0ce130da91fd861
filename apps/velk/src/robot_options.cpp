// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "robot_options.h"

#include "argument_values.h"
#include "console.h"
#include "exit_status.h"
#include "robot_task.h"

namespace Velk {

void addRobotOptions(CLI::App& command, RobotOptions& options)
{
    command.add_option("--robot", options.url, "The robot; `velk robots` lists the kinds")
        ->envname("VELK_ROBOT")
        ->type_name("URL");
    command
        .add_option("--timeout", options.timeoutSeconds,
                    "How long to wait for the robot and for its list of keys (default 10)")
        ->type_name("SECONDS")
        ->check(seconds());
}

bool requireRobot(CommandContext& context, const RobotOptions& options)
{
    if (!options.url.empty())
        return true;
    context.console.message(QStringLiteral("No robot: name one with --robot URL or the variable VELK_ROBOT.\n"
                                           "`velk robots` lists the kinds."));
    return false;
}

int runRobotTask(
    CommandContext& context, const RobotOptions& options,
    const std::function<std::unique_ptr<RobotTask>(std::unique_ptr<RobotLink> link, int timeoutMs)>& makeTask)
{
    if (!requireRobot(context, options))
        return UsageError;
    QString error;
    std::unique_ptr<RobotLink> link = context.createLink(toQString(options.url), &error);
    if (!link) {
        context.console.message(error);
        return BadRobotUrl;
    }
    const std::unique_ptr<RobotTask> task = makeTask(std::move(link), milliseconds(options.timeoutSeconds));
    return runTask(*task);
}

} // namespace Velk
