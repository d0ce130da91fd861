// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_ROBOT_OPTIONS_H
#define APPS_VELK_SRC_ROBOT_OPTIONS_H

#include "command.h"

#include <string>

namespace Velk {

class RobotTask;

/// The options of a command that talks to a robot.
struct RobotOptions
{
    std::string url;
    double timeoutSeconds = 10.0;
};

/// Declares --robot and --timeout.
void addRobotOptions(CLI::App& command, RobotOptions& options);

/// Whether a robot is named; if not, a message has been printed.
bool requireRobot(CommandContext& context, const RobotOptions& options);

/// Runs the task that `makeTask` makes for the robot's link, and returns its status.
int runRobotTask(
    CommandContext& context, const RobotOptions& options,
    const std::function<std::unique_ptr<RobotTask>(std::unique_ptr<RobotLink> link, int timeoutMs)>& makeTask);

} // namespace Velk

#endif
