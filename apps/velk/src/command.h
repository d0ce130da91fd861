#ifndef APPS_VELK_SRC_COMMAND_H
#define APPS_VELK_SRC_COMMAND_H

#include "robot_task.h"

#include <connections/link/robot_link.h>

#include <CLI/CLI.hpp>

#include <QStringList>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace Velk {

class Console;

/// The link that a URL names, or null with *error set.
using CreateLink = std::function<std::unique_ptr<RobotLink>(const QString& url, QString* error)>;

/// What the commands are declared on and run with. Each command is one function, in a file of its own, that declares
/// its name and options on the parser and says what to do when it is the one that was typed; commands.cpp lists them.
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

/// The options of a command that talks to a robot.
struct RobotOptions
{
    std::string url;
    double timeoutSeconds = 10.0;
};

/// Declares --robot and --timeout.
void addRobotOptions(CLI::App& command, RobotOptions& options);

/// A number of seconds, greater than zero, that a timer can wait for.
CLI::Validator seconds();
int milliseconds(double seconds);

/// What was typed, as Qt has it.
QString toQString(const std::string& text);
QStringList toQStrings(const std::vector<std::string>& texts);

/// Opens the robot, runs the task that `makeTask` makes for it until it is finished, and gives its status. Ctrl-C
/// interrupts the task.
int runTask(CommandContext& context, const RobotOptions& options,
            const std::function<std::unique_ptr<RobotTask>(RobotLink& link, int timeoutMs)>& makeTask);

} // namespace Velk

#endif
