// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "console.h"
#include "json_argument.h"
#include "robot_options.h"
#include "writer_task.h"

#include <connections/links/robot_links.h>

#include <memory>
#include <optional>
#include <string>

namespace Velk {

namespace {

struct WriteArguments
{
    RobotOptions robot;
    std::string name;
    std::string json;
};

void addWriteCommand(CommandContext& context, const std::string& name, const std::string& description, bool isEvent)
{
    const auto arguments = std::make_shared<WriteArguments>();
    CLI::App* const command = context.parser.add_subcommand(name, description);
    command->add_option("NAME", arguments->name, "The key")->type_name("")->required();
    command->add_option("JSON", arguments->json, "The value: 1.5, true, '\"text\"', '[1,2]' …")
        ->type_name("")
        ->required();
    addRobotOptions(*command, arguments->robot, "the robot and for its answer");
    command->footer(writeStatusHelp().toStdString());
    context.onTyped(*command, [&context, arguments, isEvent] {
        if (!requireRobot(context, arguments->robot))
            return int(UsageError);
        QString error;
        const std::optional<QVariant> value = jsonArgument(QByteArray::fromStdString(arguments->json), &error);
        if (!value) {
            context.console.message(error);
            return int(UsageError);
        }
        std::unique_ptr<RobotWriter> writer = RobotLinks::createWriter(toQString(arguments->robot.url), &error);
        if (!writer)
            return reportBadUrl(context, error);
        const QString key = toQString(arguments->name);
        WriterTask task(std::move(writer), context.console, milliseconds(arguments->robot.timeoutSeconds),
                        [&](RobotWriter& target, const RobotWriter::Done& done) {
                            if (isEvent)
                                target.raise(key, *value, std::nullopt, done);
                            else
                                target.put(key, *value, std::nullopt, done);
                        });
        return runTask(task);
    });
}

} // namespace

void addPutCommand(CommandContext& context)
{
    addWriteCommand(context, "put", "Write a value of a data key into a robot's memory", false);
}

void addRaiseCommand(CommandContext& context)
{
    addWriteCommand(context, "raise", "Write one occurrence of an event into a robot's memory", true);
}

} // namespace Velk
