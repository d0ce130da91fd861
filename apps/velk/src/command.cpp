#include "command.h"

#include "console.h"
#include "exit_status.h"
#include "unix_signals.h"

#include <QEventLoop>

#include <cmath>
#include <limits>

namespace Velk {

void addRobotOptions(CLI::App& command, RobotOptions& options)
{
    command.add_option("--robot", options.url, "The robot, as `velk robots` lists the kinds")
        ->envname("VELK_ROBOT")
        ->type_name("URL");
    command
        .add_option("--timeout", options.timeoutSeconds,
                    "How long to wait for the robot and for its list of keys (default 10)")
        ->type_name("SECONDS")
        ->check(seconds());
}

CLI::Validator seconds()
{
    return CLI::Validator(
        [](std::string& text) {
            constexpr double most = std::numeric_limits<int>::max() / 1000;
            double value = 0.0;
            if (CLI::detail::lexical_cast(text, value) && value >= 0.001 && value <= most)
                return std::string();
            return "\"" + text + "\" is not a number of seconds from 0.001 to 2147483";
        },
        std::string());
}

int milliseconds(double seconds)
{
    return int(std::lround(seconds * 1000.0));
}

QString toQString(const std::string& text)
{
    return QString::fromLocal8Bit(text.c_str());
}

QStringList toQStrings(const std::vector<std::string>& texts)
{
    QStringList result;
    for (const std::string& text : texts)
        result.append(toQString(text));
    return result;
}

int runTask(CommandContext& context, const RobotOptions& options,
            const std::function<std::unique_ptr<RobotTask>(RobotLink& link, int timeoutMs)>& makeTask)
{
    if (options.url.empty()) {
        context.console.message(QStringLiteral("No robot: name one with --robot URL or the variable VELK_ROBOT.\n"
                                               "`velk robots` lists the kinds."));
        return UsageError;
    }
    QString error;
    const std::unique_ptr<RobotLink> link = context.createLink(toQString(options.url), &error);
    if (!link) {
        context.console.message(error);
        return BadRobotUrl;
    }

    UnixSignals signalWatcher;
    const std::unique_ptr<RobotTask> task = makeTask(*link, milliseconds(options.timeoutSeconds));
    QEventLoop loop;
    int status = Success;
    bool isFinished = false;
    QObject::connect(&signalWatcher, &UnixSignals::received, task.get(), &RobotTask::interrupt);
    QObject::connect(task.get(), &RobotTask::finished, &loop, [&](int taskStatus) {
        status = taskStatus;
        isFinished = true;
        loop.quit();
    });
    task->start();
    if (!isFinished)
        loop.exec();
    link->close();
    return status;
}

} // namespace Velk
