// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "command.h"
#include "console.h"

#include <connections/links/robot_links.h>

namespace Velk {

void addRobotsCommand(CommandContext& context)
{
    CLI::App* const command = context.parser.add_subcommand("robots", "List the kinds of robot that --robot can name");
    context.onTyped(*command, [&context] {
        QString text;
        for (const UrlScheme& scheme : RobotLinks::schemes())
            text += QStringLiteral("%1\n    %2\n").arg(scheme.synopsis, scheme.description);
        context.console.write(text.toUtf8());
        for (const QString& failure : RobotLinks::pluginFailures())
            context.console.message(failure);
        return context.console.outputStatus();
    });
}

} // namespace Velk
