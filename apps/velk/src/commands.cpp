#include "command.h"

namespace Velk {

void addRobotsCommand(CommandContext& context);
void addKeysCommand(CommandContext& context);
void addWatchCommand(CommandContext& context);
void addRecordCommand(CommandContext& context);

void addCommands(CommandContext& context)
{
    // In the order in which the help text shows them.
    const auto commands = {
        addRobotsCommand,
        addKeysCommand,
        addWatchCommand,
        addRecordCommand,
    };
    for (const auto add : commands)
        add(context);
}

} // namespace Velk
