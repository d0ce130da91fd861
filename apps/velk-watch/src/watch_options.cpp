// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#include "watch_options.h"

#include <connections/links/robot_links.h>

#include <QCommandLineParser>
#include <QRegularExpression>

namespace Velk {

namespace {

// The argument, quoted so that a POSIX shell reads it as one word.
QString shellWord(const QString& argument)
{
    static const QRegularExpression plain(QStringLiteral("^[A-Za-z0-9_./:=@%+,-]+$"));
    if (plain.match(argument).hasMatch())
        return argument;
    QString quoted = argument;
    quoted.replace(QLatin1Char('\''), QLatin1String("'\\''"));
    return QLatin1Char('\'') + quoted + QLatin1Char('\'');
}

} // namespace

WatchOptions::WatchOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    const QCommandLineOption help(QStringList{QStringLiteral("h"), QStringLiteral("help")});
    const QCommandLineOption version(QStringList{QStringLiteral("v"), QStringLiteral("version")});
    const QCommandLineOption robot({QStringLiteral("r"), QStringLiteral("robot")}, QString(), QStringLiteral("URL"));
    const QCommandLineOption watch({QStringLiteral("w"), QStringLiteral("watch")}, QString(), QStringLiteral("KEY"));
    const QCommandLineOption settings(QStringLiteral("settings"), QString(), QStringLiteral("FILE"));
    for (const QCommandLineOption& option : {help, version, robot, watch, settings})
        parser.addOption(option);

    if (!parser.parse(arguments)) {
        m_request = Error;
        m_errorText = parser.errorText();
        return;
    }
    m_robot = parser.value(robot);
    m_settingsFile = parser.value(settings);
    // All arguments after --watch are keys.
    m_watch = parser.values(watch) + parser.positionalArguments();
    m_watch.removeDuplicates();
    m_watch.removeAll(QString());
    if (parser.isSet(help)) {
        m_request = Help;
    } else if (parser.isSet(version)) {
        m_request = Version;
    } else if (!parser.isSet(watch) && !m_watch.isEmpty()) {
        m_request = Error;
        m_errorText = tr("\"%1\" is no option. Name the keys to watch after --watch.").arg(m_watch.first());
    }
}

QString WatchOptions::helpText()
{
    QStringList robots;
    const QList<UrlScheme> schemes = RobotLinks::schemes();
    for (const UrlScheme& scheme : schemes)
        robots << QStringLiteral("  %1  %2").arg(scheme.synopsis, -36).arg(scheme.description);
    return tr("Usage: velk-watch [--robot URL] [--watch KEY...] [--settings FILE]\n"
              "Shows the memory of a robot: its keys, their values as they change, and recordings of them.\n"
              "\n"
              "  -r, --robot URL      the robot to open; otherwise the one in VELK_ROBOT, if set\n"
              "  -w, --watch KEY...   the keys to watch, in place of those of the last time\n"
              "      --settings FILE  remembers the window and the keys in FILE and not in the user's own settings\n"
              "  -h, --help           this text\n"
              "  -v, --version        the version\n"
              "\n"
              "Robots:\n"
              "%1\n"
              "\n"
              "Exit status:\n"
              "   0  the window was closed\n"
              "   2  the command line is not understood\n"
              "   3  the URL of the robot is not valid\n"
              "  11  there is no display for the window\n")
        .arg(robots.join(QLatin1Char('\n')));
}

QString WatchOptions::noDisplayText() const
{
    QStringList words{QStringLiteral("velk"), QStringLiteral("watch"), QStringLiteral("--robot"),
                      shellWord(m_robot.isEmpty() ? QStringLiteral("sim:") : m_robot)};
    for (const QString& name : m_watch)
        words << shellWord(name);
    if (m_watch.isEmpty())
        words << QStringLiteral("'*'");
    return tr("velk-watch: there is no display to show a window on (DISPLAY and WAYLAND_DISPLAY are not set).\n"
              "The command line shows the same values:\n"
              "  %1\n")
        .arg(words.join(QLatin1Char(' ')));
}

} // namespace Velk
