// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef TESTS_SUPPORT_FUZZ_TIME_H
#define TESTS_SUPPORT_FUZZ_TIME_H

#include <QDeadlineTimer>
#include <QtGlobal>

namespace Velk {

/// How long a randomised test runs: one second, or the seconds in the environment variable MEMORYKEYMODEL_FUZZ_SECONDS.
inline QDeadlineTimer fuzzTime()
{
    return QDeadlineTimer(1000 * qMax(1, qEnvironmentVariableIntValue("MEMORYKEYMODEL_FUZZ_SECONDS")));
}

} // namespace Velk

#endif
