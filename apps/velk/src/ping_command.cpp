// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "ping_task.h"
#include "robot_options.h"

namespace Velk {

void addPingCommand(CommandContext& context)
{
    const auto robot = std::make_shared<RobotOptions>();
    CLI::App* const command =
        context.parser.add_subcommand("ping", "Print whether the robot answers, how fast, and what its server grants");
    addRobotOptions(*command, *robot);
    context.onTyped(*command, [&context, robot] { return runRobotTask<PingTask>(context, *robot); });
}

} // namespace Velk
