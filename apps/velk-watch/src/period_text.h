// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_PERIOD_TEXT_H
#define APPS_VELK_WATCH_PERIOD_TEXT_H

#include <QCoreApplication>
#include <QString>

namespace Velk {

class RobotSession;

/// The sampling period that the user asked for, and the period in force, in a sentence.
class PeriodText
{
    Q_DECLARE_TR_FUNCTIONS(Velk::PeriodText)

public:
    /// Of a session that watches keys, with the robot's limit where it matters.
    static QString of(const RobotSession& session);
    /// For given figures, in milliseconds.
    static QString of(int wanted, int granted, int min, int max);
};

} // namespace Velk

#endif
