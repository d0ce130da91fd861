// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "displayed_keys_arguments.h"

#include "argument_values.h"

#include <limits>

namespace Velk {

void DisplayedKeysArguments::addTo(CLI::App& command)
{
    command
        .add_option("KEY", keys,
                    "Names, also names that the robot does not list, and patterns with * and ? (quote them)")
        ->type_name("");
    command.add_flag("--all", all, "All keys that the robot lists");
    command.add_option("--period", periodMs, "Sample every MS milliseconds; the robot has a minimum (default 1000)")
        ->type_name("MS")
        ->check(CLI::Range(1, std::numeric_limits<int>::max()).description(""));
    command.add_option("--for", forSeconds, "End after this time (default: Ctrl-C ends it)")
        ->type_name("SECONDS")
        ->check(seconds());
    addRobotOptions(command, robot);
}

void DisplayedKeysArguments::requireKeys() const
{
    if (keys.empty() && !all)
        throw CLI::ValidationError("KEY", "name at least one key or pattern, or use --all");
}

DisplayedKeysOptions DisplayedKeysArguments::options() const
{
    return {toQStrings(keys), all, periodMs, milliseconds(forSeconds)};
}

} // namespace Velk
