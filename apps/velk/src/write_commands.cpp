// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "argument_values.h"
#include "writer_task.h"

namespace Velk {

namespace {

struct Arguments
{
    RobotOptions robot;
    std::string name;
    std::string json;
};

void addWriteCommand(CommandContext& context, const std::string& name, const std::string& description, bool isEvent)
{
    const auto arguments = std::make_shared<Arguments>();
    CLI::App* const command = context.parser.add_subcommand(name, description);
    command->add_option("NAME", arguments->name, "The key")->type_name("")->required();
    command->add_option("JSON", arguments->json, "The value: 1.5, true, '\"text\"', '[1,2]' …")
        ->type_name("")
        ->required();
    addRobotOptions(*command, arguments->robot);
    context.onTyped(*command, [&context, arguments, isEvent] {
        const QString key = toQString(arguments->name);
        return runWriterTask(context, arguments->robot, arguments->json,
                             [&](RobotWriter& writer, const QVariant& value, RobotWriter::Done done) {
                                 if (isEvent)
                                     writer.raise(key, value, std::nullopt, std::move(done));
                                 else
                                     writer.put(key, value, std::move(done));
                             });
    });
}

} // namespace

void addPutCommand(CommandContext& context)
{
    addWriteCommand(context, "put", "Write one value of a data key to a robot on a server", false);
}

void addRaiseCommand(CommandContext& context)
{
    addWriteCommand(context, "raise", "Raise an event once on a robot on a server", true);
}

} // namespace Velk
