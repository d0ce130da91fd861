// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "robot_options.h"

#include "console.h"

namespace Velk {

void addRobotOptions(CLI::App& command, RobotOptions& options, const std::string& awaited)
{
    command.add_option("--robot", options.url, "The robot; `velk robots` lists the kinds")
        ->envname("VELK_ROBOT")
        ->type_name("URL");
    command.add_option("--timeout", options.timeoutSeconds, "How long to wait for " + awaited + " (default 10)")
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

int reportBadUrl(CommandContext& context, const QString& error)
{
    context.console.message(error);
    return BadRobotUrl;
}

} // namespace Velk
