// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "command.h"

namespace Velk {

void addRobotsCommand(CommandContext& context);
void addKeysCommand(CommandContext& context);
void addWatchCommand(CommandContext& context);
void addRecordCommand(CommandContext& context);
void addPingCommand(CommandContext& context);
void addServeCommand(CommandContext& context);
void addPutCommand(CommandContext& context);
void addRaiseCommand(CommandContext& context);

void addCommands(CommandContext& context)
{
    // In the order in which the help text shows them.
    const auto commands = {addRobotsCommand, addKeysCommand,  addWatchCommand, addRecordCommand,
                           addPingCommand,   addServeCommand, addPutCommand,   addRaiseCommand};
    for (const auto add : commands)
        add(context);
}

} // namespace Velk
