// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_APPLICATION_ICON_H
#define APPS_VELK_WATCH_APPLICATION_ICON_H

#include <QIcon>
#include <QPixmap>

namespace Velk {

/// The application's icon: the installed one from the desktop's theme, or else drawnIcon() in several sizes: to
/// read a scalable file Qt needs a plug-in that may be missing.
QIcon applicationIcon();

/// The same icon, drawn in code, `size` pixels wide and high.
QPixmap drawnIcon(int size);

} // namespace Velk

#endif
