#ifndef APPS_VELK_SRC_COMMAND_H
#define APPS_VELK_SRC_COMMAND_H

#include <connections/link/robot_link.h>

#include <CLI/CLI.hpp>

#include <functional>
#include <memory>
#include <utility>

namespace Velk {

class Console;

/// The link that a URL names, or null with *error set.
using CreateLink = std::function<std::unique_ptr<RobotLink>(const QString& url, QString* error)>;

/// What the commands are declared on and run with. Each command is a function that declares its name and options on the
/// parser, and what to do when it is the one that was typed; commands.cpp lists them.
struct CommandContext
{
    CLI::App& parser;
    Console& console;
    CreateLink createLink;
    std::function<int()> run; ///< of the command that was typed; gives the exit status

    /// Runs `action` when the command is the one that was typed, after all options were read.
    void onTyped(CLI::App& command, std::function<int()> action)
    {
        command.callback([this, action] { run = action; });
    }
};

/// Declares every command.
void addCommands(CommandContext& context);

} // namespace Velk

#endif
