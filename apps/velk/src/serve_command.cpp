// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "robot_options.h"
#include "serve_task.h"

#include <connections/links/robot_links.h>

namespace Velk {

namespace {

struct ServeArguments
{
    RobotOptions robot;
    std::string target;
    int periodMs = 100;
    double forSeconds = 0.0;
};

} // namespace

void addServeCommand(CommandContext& context)
{
    const auto arguments = std::make_shared<ServeArguments>();
    CLI::App* const command =
        context.parser.add_subcommand("serve", "Copy a robot's memory to a server, as it changes");
    command->add_option("--to", arguments->target, "The robot to write to, such as redis://host/robot")
        ->type_name("URL")
        ->required();
    command->add_option("--period", arguments->periodMs, "Write values every MS milliseconds (default 100)")
        ->type_name("MS")
        ->check(CLI::Range(1, 9999990));
    command->add_option("--for", arguments->forSeconds, "End after this time (default: Ctrl-C ends it)")
        ->type_name("SECONDS")
        ->check(seconds());
    addRobotOptions(*command, arguments->robot);
    context.onTyped(*command, [&context, arguments] {
        QString error;
        std::unique_ptr<RobotWriter> writer = RobotLinks::createWriter(toQString(arguments->target), &error);
        if (!writer)
            return reportBadUrl(context, QStringLiteral("--to: ") + error);
        return runRobotTask<ServeTask>(context, arguments->robot, std::move(writer), arguments->periodMs,
                                       milliseconds(arguments->forSeconds));
    });
}

} // namespace Velk
