// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "velk.h"

#include "argument_values.h"
#include "console.h"
#include "exit_status.h"
#include "unix_signals.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <vector>

namespace Velk {

namespace {

// The parser splits an argument that begins with "[" and ends with "]" into several values. So that it does not, each
// argument that ends with "]" gets a null character behind it, which no typed argument contains. withoutMarks() removes
// it from every value before a command reads it.
//
// The parser takes the arguments in reverse order.
std::vector<std::string> markedArguments(int argc, char** argv)
{
    std::vector<std::string> arguments;
    for (int i = argc - 1; i > 0; --i) {
        arguments.emplace_back(argv[i]);
        if (!arguments.back().empty() && arguments.back().back() == ']')
            arguments.back() += '\0';
    }
    return arguments;
}

std::string withoutMarks(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    return text;
}

void removeMarksFromValues(CLI::App& parser)
{
    for (CLI::App* const command : parser.get_subcommands([](CLI::App*) { return true; })) {
        for (CLI::Option* const option : command->get_options())
            option->transform(withoutMarks);
    }
}

} // namespace

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
    removeMarksFromValues(parser);

    try {
        parser.parse(markedArguments(argc, argv));
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
                                .arg(toQString(withoutMarks(unknown.front()))));
        else
            console.message(toQString(withoutMarks(message.str())).trimmed());
        return UsageError;
    }
}

} // namespace Velk
