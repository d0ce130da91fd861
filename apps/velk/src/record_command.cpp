// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "console.h"
#include "displayed_keys_arguments.h"
#include "record_task.h"

namespace Velk {

namespace {

struct RecordArguments : DisplayedKeysArguments
{
    std::string output;
    bool force = false;
};

} // namespace

void addRecordCommand(CommandContext& context)
{
    const auto arguments = std::make_shared<RecordArguments>();
    CLI::App* const command = context.parser.add_subcommand("record", "Record every sample of keys to a file");
    arguments->addTo(*command);
    command->add_option("--output,-o", arguments->output, "The file; it appears when the recording is complete")
        ->type_name("FILE")
        ->required();
    command->add_flag("--force", arguments->force, "Replace FILE if it exists");
    context.onTyped(*command, [&context, arguments] {
        arguments->requireKeys();
        const QString destination = toQString(arguments->output);
        const auto existing = arguments->force ? RecordFileSaver::ReplaceExisting : RecordFileSaver::KeepExisting;
        // Fail before the recording and not after it.
        const RecordSaveResult check = RecordFileSaver::checkDestination(destination, existing);
        if (!check.isSaved()) {
            context.console.message(
                check.title + QStringLiteral(": ") + check.message +
                (check.outcome == RecordSaveResult::Exists ? QStringLiteral(" (--force)") : QString()));
            return int(RecordingNotSaved);
        }
        return runRobotTask<RecordTask>(context, arguments->robot, arguments->options(), destination, existing);
    });
}

} // namespace Velk
