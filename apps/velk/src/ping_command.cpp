#include "command.h"
#include "ping_task.h"

namespace Velk {

void addPingCommand(CommandContext& context)
{
    const auto robot = std::make_shared<RobotOptions>();
    CLI::App* const command =
        context.parser.add_subcommand("ping", "Say whether the robot answers, how fast, and what its server grants");
    addRobotOptions(*command, *robot);
    context.onTyped(*command, [&context, robot] {
        return runTask(context, *robot, [&](RobotLink& link, int timeoutMs) {
            return std::make_unique<PingTask>(link, context.console, timeoutMs);
        });
    });
}

} // namespace Velk
