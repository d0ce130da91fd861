// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_EXIT_STATUS_H
#define APPS_VELK_SRC_EXIT_STATUS_H

#include <QString>

namespace Velk {

/// How velk ends, for scripts. Where several apply, a recording that was not saved or is not complete comes first.
enum ExitStatus : int
{
    Success = 0,
    UsageError = 2,
    BadRobotUrl = 3,
    NotConnected = 4,
    ConnectionLost = 5,
    NoKeys = 6,
    RecordingIncomplete = 7,
    RecordingNotSaved = 8,
    OutputFailed = 9,
    NotWritten = 10,
    // 11: velk-watch without a display
    BrokenPipe = 141 ///< as the shell reports a program that SIGPIPE ended
};

/// The status of a command that a signal ended before it had done its work: as the shell reports it.
int interruptedBy(int signalNumber);

/// The meanings of the statuses, one a line, for the help text.
QString exitStatusHelp();
/// The same for a command that writes one value or occurrence: it ends with few of the statuses.
QString writeStatusHelp();

} // namespace Velk

#endif
