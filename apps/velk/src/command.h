// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_COMMAND_H
#define APPS_VELK_SRC_COMMAND_H

#include <connections/link/robot_link.h>

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>

namespace Velk {

class Console;

/// The link that a URL names, or null with *error set.
using CreateLink = std::function<std::unique_ptr<RobotLink>(const QString& url, QString* error)>;

/// The parser on which the commands are declared, and what they run with. Each command is a function that declares its
/// name, its options and its action; commands.cpp lists them.
struct CommandContext
{
    CLI::App& parser;
    Console& console;
    CreateLink createLink;
    std::function<int()> run; ///< the action of the command that was typed; returns the exit status

    /// Sets the action of a command. It runs after all options were read.
    void onTyped(CLI::App& command, std::function<int()> action)
    {
        command.callback([this, action] { run = action; });
    }
};

/// Declares every command.
void addCommands(CommandContext& context);

} // namespace Velk

#endif
