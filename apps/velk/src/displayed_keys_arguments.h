// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_DISPLAYED_KEYS_ARGUMENTS_H
#define APPS_VELK_SRC_DISPLAYED_KEYS_ARGUMENTS_H

#include "displayed_keys_task.h"
#include "robot_options.h"

namespace Velk {

/// The arguments that the commands on the displayed key set share.
struct DisplayedKeysArguments
{
    RobotOptions robot;
    std::vector<std::string> keys;
    bool all = false;
    int periodMs = 0;
    double forSeconds = 0.0;

    /// Declares KEY, --all, --period, --for and the robot's options.
    void addTo(CLI::App& command);
    /// Throws CLI::ValidationError, as a check of the parser does, when no key is named.
    void requireKeys() const;
    DisplayedKeysOptions options() const;
};

} // namespace Velk

#endif
