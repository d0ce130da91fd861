// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk.h"

#include "argument_values.h"
#include "console.h"
#include "exit_status.h"
#include "unix_signals.h"

#include <sstream>

namespace Velk {

int runVelk(int argc, char** argv, const CreateLink& createLink)
{
    UnixSignals::ignoreWriteSignals();
    Console console;
    CLI::App parser("Shows and records the memory of a robot. `velk COMMAND --help` lists a command's options.",
                    "velk");
    parser.set_version_flag("--version", "velk " VELK_VERSION);
    parser.footer(exitStatusHelp().toStdString());
    parser.require_subcommand(1);
    CommandContext context{parser, console, createLink, {}};
    addCommands(context);

    try {
        parser.parse(argc, argv);
        return context.run();
    } catch (const CLI::ParseError& error) {
        std::ostringstream help;
        std::ostringstream message;
        if (parser.exit(error, help, message) == 0) {
            console.write(QByteArray::fromStdString(help.str()));
            return console.outputStatus();
        }
        // The parser reports a missing command before a word that it does not know.
        const std::vector<std::string> unknown = parser.remaining();
        if (parser.get_subcommands().empty() && !unknown.empty())
            console.message(QStringLiteral("velk has no command or option %1.\n`velk --help` lists them.")
                                .arg(toQString(unknown.front())));
        else
            console.message(toQString(message.str()).trimmed());
        return UsageError;
    }
}

} // namespace Velk
