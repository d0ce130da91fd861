// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: Apache-2.0

#ifndef APPS_VELK_SRC_VELK_H
#define APPS_VELK_SRC_VELK_H

#include "command.h"

namespace Velk {

/// The whole of velk: reads the command line, runs the command and returns the exit status. Needs a QCoreApplication.
int runVelk(int argc, char** argv, const CreateLink& createLink);

} // namespace Velk

#endif
