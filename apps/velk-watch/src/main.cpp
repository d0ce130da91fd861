// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "display_check.h"
#include "main_window.h"
#include "translations.h"
#include "watch_options.h"
#include "watch_settings.h"

#include <apps/arguments/private_arguments.h>
#include <connections/links/robot_links.h>

#include <QApplication>

#include <cstdio>

using namespace Velk;

namespace {

void setUp(QCoreApplication& application)
{
    QCoreApplication::setApplicationName(QStringLiteral("velk-watch"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELK_WATCH_VERSION));
    installTranslations(&application);
}

void print(FILE* stream, const QString& text)
{
    std::fputs(qPrintable(text), stream);
}

// Answers a request that needs no window. Returns true, and sets *status, when the program is to end.
bool answer(const WatchOptions& options, WatchExit* status)
{
    switch (options.request()) {
    case WatchOptions::Help:
        print(stdout, WatchOptions::helpText());
        *status = WatchExit::Success;
        return true;
    case WatchOptions::Version:
        print(stdout, QStringLiteral("velk-watch " VELK_WATCH_VERSION "\n"));
        *status = WatchExit::Success;
        return true;
    case WatchOptions::Error:
        print(stderr, QStringLiteral("velk-watch: %1\n%2\n")
                          .arg(options.errorText(), WatchOptions::tr("velk-watch --help lists the options.")));
        *status = WatchExit::UsageError;
        return true;
    case WatchOptions::Run:
        break;
    }
    QString error;
    if (!options.robot().isEmpty() && !RobotLinks::createLink(options.robot(), &error)) {
        print(stderr, QStringLiteral("velk-watch: %1\n").arg(error));
        *status = WatchExit::BadRobotUrl;
        return true;
    }
    return false;
}

} // namespace

int main(int argc, char* argv[])
{
    PrivateArguments arguments(argc, argv);
    WatchExit status = WatchExit::Success;
    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    if (!hasDisplay(environment)) {
        QCoreApplication application(arguments.count(), arguments.values());
        setUp(application);
        const WatchOptions options(QCoreApplication::arguments());
        if (answer(options, &status))
            return int(status);
        print(stderr, options.noDisplayText());
        return int(WatchExit::NoDisplay);
    }

    QApplication application(arguments.count(), arguments.values());
    setUp(application);
    QGuiApplication::setDesktopFileName(QStringLiteral("velk-watch"));
    const WatchOptions options(QCoreApplication::arguments());
    if (answer(options, &status))
        return int(status);

    WatchSettings settings(options.settingsFile());
    MainWindow window(&settings);
    window.show();
    if (!options.watch().isEmpty())
        window.setWatchedNames(options.watch());
    const QString robot = options.robot().isEmpty() ? environment.value(QStringLiteral("VELK_ROBOT")) : options.robot();
    if (!robot.isEmpty())
        window.openRobot(robot);
    return QApplication::exec();
}
