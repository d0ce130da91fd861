// SPDX-FileCopyrightText: The memorykeymodel developers
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef APPS_VELK_WATCH_APPLICATION_ICON_H
#define APPS_VELK_WATCH_APPLICATION_ICON_H

#include <QIcon>
#include <QPixmap>

namespace Velk {

/// The application's icon: the installed one from the desktop's theme, or else one that is drawn here in the same
/// shape. To read the scalable file Qt needs a plug-in that may be missing.
QIcon applicationIcon();

/// The icon as it is drawn here, `size` pixels wide and high.
QPixmap drawnIcon(int size);

} // namespace Velk

#endif
