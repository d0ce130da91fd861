// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_DISPLAY_CHECK_H
#define APPS_VELK_WATCH_DISPLAY_CHECK_H

#include <QProcessEnvironment>

namespace Velk {

/// Whether a window can be shown: the environment names a display, or a Qt platform that needs none. Call it before the
/// application object is created: without a display its constructor aborts the program.
bool hasDisplay(const QProcessEnvironment& environment);

} // namespace Velk

#endif
