// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_WATCH_OPTIONS_H
#define APPS_VELK_WATCH_WATCH_OPTIONS_H

#include <QCoreApplication>
#include <QString>
#include <QStringList>

namespace Velk {

/// How velk-watch ends, for scripts. A number that velk uses too has the same meaning there.
enum class WatchExit : int
{
    Success = 0,
    UsageError = 2,
    BadRobotUrl = 3,
    NoDisplay = 11
};

/// The options of the command line.
class WatchOptions
{
    Q_DECLARE_TR_FUNCTIONS(Velk::WatchOptions)

public:
    enum Request
    {
        Run,
        Help,
        Version,
        Error ///< errorText() says what is wrong
    };

    /// The first one of `arguments` is the program's name.
    explicit WatchOptions(const QStringList& arguments);

    Request request() const { return m_request; }
    QString errorText() const { return m_errorText; }
    /// Empty without --robot.
    QString robot() const { return m_robot; }
    /// Empty without --watch.
    QStringList watch() const { return m_watch; }
    /// Empty without --settings.
    QString settingsFile() const { return m_settingsFile; }

    static QString helpText();
    /// The message on a machine without a display: the `velk watch` command for the same robot and keys.
    QString noDisplayText() const;

private:
    Request m_request = Run;
    QString m_errorText;
    QString m_robot;
    QStringList m_watch;
    QString m_settingsFile;
};

} // namespace Velk

#endif
