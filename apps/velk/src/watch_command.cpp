// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "displayed_keys_arguments.h"
#include "watch_task.h"

namespace Velk {

namespace {

struct WatchArguments : DisplayedKeysArguments
{
    bool json = false;
};

} // namespace

void addWatchCommand(CommandContext& context)
{
    const auto arguments = std::make_shared<WatchArguments>();
    CLI::App* const command = context.parser.add_subcommand("watch", "Show the newest values of keys as they come");
    arguments->addTo(*command);
    command->add_flag("--json", arguments->json, "Write a JSON object a line, also on a terminal");
    context.onTyped(*command, [&context, arguments] {
        arguments->requireKeys();
        return runRobotTask<WatchTask>(context, arguments->robot, arguments->options(),
                                       arguments->json ? WatchTask::JsonLines : WatchTask::Automatic);
    });
}

} // namespace Velk
