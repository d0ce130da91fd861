// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "keys_task.h"
#include "robot_options.h"

#include <memorykeymodel/memory_key.h>

namespace Velk {

namespace {

struct KeysArguments
{
    RobotOptions robot;
    std::vector<std::string> names;
    std::vector<std::string> filters;
    std::vector<std::string> natures;
    bool json = false;
};

int natureMask(const std::vector<std::string>& natures)
{
    int mask = 0;
    for (const std::string& nature : natures)
        mask |= nature == "data" ? DataNature : nature == "event" ? EventNature : UnknownNature;
    return mask == 0 ? DataNature | EventNature | UnknownNature : mask;
}

} // namespace

void addKeysCommand(CommandContext& context)
{
    const auto arguments = std::make_shared<KeysArguments>();
    CLI::App* const command =
        context.parser.add_subcommand("keys", "List the robot's keys, sorted, with their natures");
    addRobotOptions(*command, arguments->robot);
    command->add_option("NAME", arguments->names, "Further names; UNKNOWN where the robot does not list them")
        ->type_name("");
    command->add_option("--nature", arguments->natures, "Only keys of these natures: data, event, unknown")
        ->type_name("NATURE,...")
        ->delimiter(',')
        ->allow_extra_args(false)
        ->check(CLI::IsMember({"data", "event", "unknown"}));
    command->add_option("--filter", arguments->filters, "Only keys whose whole name matches, with * and ?")
        ->type_name("PATTERN")
        ->take_all()
        ->expected(1);
    command->add_flag("--json", arguments->json, "Write a JSON array of objects");
    context.onTyped(*command, [&context, arguments] {
        const KeysOptions options{toQStrings(arguments->names), toQStrings(arguments->filters),
                                  natureMask(arguments->natures), arguments->json};
        return runRobotTask<KeysTask>(context, arguments->robot, options);
    });
}

} // namespace Velk
