// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#include "exit_status.h"

namespace Velk {

int interruptedBy(int signalNumber)
{
    return 128 + signalNumber;
}

QString exitStatusHelp()
{
    return QStringLiteral("Exit status:\n"
                          "  0    done; for watch, record and serve also when Ctrl-C ended it and no --for was given\n"
                          "  2    the command line is wrong\n"
                          "  3    the robot's URL is wrong, or of an unknown kind\n"
                          "  4    no connection to the robot within --timeout\n"
                          "  5    the connection was lost; record has saved what it had\n"
                          "  6    there is no key to watch or to record\n"
                          "  7    rows of the recording were lost; the complete ones before them are saved\n"
                          "  8    the recording could not be made or saved; the message says where it is kept\n"
                          "  9    standard output could not be written\n"
                          "  10   something was not written, or velk does not know whether it was\n"
                          "  129  ended by SIGHUP before it was done; record has saved what it had\n"
                          "  130  ended by Ctrl-C (SIGINT) before it was done; record has saved what it had\n"
                          "  141  the reader of standard output has gone\n"
                          "  143  ended by SIGTERM before it was done; record has saved what it had");
}

QString writeStatusHelp()
{
    return QStringLiteral("Exit status:\n"
                          "  0    written\n"
                          "  2    the command line is wrong, the value is not JSON, or digits of it would be lost\n"
                          "  3    the robot's URL is wrong, or of a kind that velk cannot write to\n"
                          "  4    no connection to the robot, or no answer, within --timeout; without an answer velk\n"
                          "       does not know whether it was written\n"
                          "  10   not written, or perhaps not; the message has the reason\n"
                          "  129  ended by SIGHUP before the answer\n"
                          "  130  ended by Ctrl-C (SIGINT) before the answer\n"
                          "  143  ended by SIGTERM before the answer");
}

} // namespace Velk
